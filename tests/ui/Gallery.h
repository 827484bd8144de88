// SPDX-License-Identifier: MIT
// Every window and dialog with something in it, for pictures and for tests that look at all of them.
#pragma once

#include <QComboBox>
#include <QJsonArray>
#include <QJsonObject>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>
#include <functional>

#include "app/SummaryText.h"
#include "core/run/FieldSelection.h"
#include "core/run/Nobody.h"
#include "core/run/Report.h"
#include "formats/Formats.h"
#include "formats/cdf/LayerMatching.h"
#include "formats/shape/DBFInFilter.h"
#include "support/MemorySettings.h"
#include "ui/FrmScan.h"
#include "ui/Help.h"
#include "ui/InputBox.h"
#include "ui/MainWindow.h"
#include "ui/PreviewLink.h"
#include "ui/PreviewWidget.h"
#include "ui/QueueModel.h"
#include "ui/QueueWindow.h"
#include "ui/UiWording.h"
#include "ui/fDBFSel.h"
#include "ui/fTRDig.h"
#include "ui/frmDBFScan.h"
#include "ui/frmESRIType.h"
#include "ui/frmLayers.h"
#include "ui/frmPoint.h"
#include "ui/frmProgress.h"

namespace tesselink {

/// Shows the windows one after the other to a visitor, who is to show them on the screen, and waits as long as they
/// need to be whole. The examples are to be the folder of the process.
class Gallery {
 public:
  using Visitor = std::function<void(const QString& name, QWidget& window, int milliseconds)>;

  explicit Gallery(Visitor visitor) : visit_(std::move(visitor)) {}

  void ShowAll() {
    ShowMainWindow();
    ShowProgress();
    ShowFieldQuestions();
    ShowSmallQuestions();
    ShowLayers();
    ShowOthers();
  }

 private:
  static constexpr int kDrawn = 1500, kAtOnce = 50;

  void Visit(const QString& name, QWidget& window, int milliseconds = kAtOnce) { visit_(name, window, milliseconds); }

  template <typename T>
  static T& Get(QWidget& window, const char* name) {
    auto* control = window.findChild<T*>(name);
    if (control == nullptr) qFatal("no %s", name);
    return *control;
  }

  void ShowMainWindow() {
    MemorySettings settings;
    const FilterOptions options{.programFolder = TESSELINK_DATA_FOLDER};
    MainWindow window(AllFormats(), settings, options);
    AddPreview(window, AllFormats(), settings, options);
    window.resize(1200, 640);
    Visit("main-empty", window, 400);
    window.TakeFiles({"quarter-section.asc"});
    Get<QComboBox>(window, "OutFormat").setCurrentText("Geographix CDF File (*.cdf)");
    Visit("main", window, kDrawn);
    Get<QToolButton>(window, "cmdMoreOptions").click();
    Visit("main-more", window, kDrawn);
    Get<QToolButton>(window, "cmdMoreOptions").click();
    Press(window, Qt::Key_Return);
    Visit("main-element", window, kDrawn);
    Get<QLineEdit>(window, "Infile").setText("wells.dbf");
    Visit("main-wrong", window, 600);
    window.TakeFiles({"all-entities.dxf"});
    Get<QComboBox>(window, "OutFormat").setCurrentText("ESRI Shapefile (*.shp)");
    Visit("main-lost", window, kDrawn);
    window.resize(window.minimumSizeHint());
    Visit("main-small", window, kDrawn);
    window.resize(1200, 640);
    for (const auto key : {Qt::Key_M, Qt::Key_Return, Qt::Key_Left, Qt::Key_Return}) Press(window, key);
    Get<PreviewWidget>(window, "preview").ShowOutput({"all-entities.dxf"}, "AutoCAD DXF File (*.dxf)");
    Visit("main-output", window, kDrawn);
  }

  // A key of the drawing.
  static void Press(QWidget& window, Qt::Key key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&Get<QWidget>(window, "previewCanvas"), &event);
  }

  void ShowProgress() {
    Extents extents;
    extents.Add(1845802.88, 461629.7, 0);
    extents.Add(1851962.61, 467752.85, 0);
    frmProgress running;
    Visit("progress-begins", running);
    running.ShowProgress({42, extents, 418233});
    Visit("progress", running);
    RunSummary summary;
    for (int i = 0; i < 20; ++i) summary.read.Add(kPolyline), summary.written.Add(kPolyline);
    for (int i = 0; i < 3; ++i) summary.read.Add(kArc), summary.skipped.Add(kArc);
    summary.report.Warn(WarningKind::Heights, "plat.asc: the format has no z; elements that lost theirs: 2");
    summary.outputs = {"plat.asc"};
    for (const auto& [outcome, name] : {std::pair{RunOutcome::Done, "progress-done"},
                                        {RunOutcome::Cancelled, "progress-cancelled"},
                                        {RunOutcome::Failed, "progress-failed"}}) {
      summary.outcome = outcome;
      if (outcome == RunOutcome::Failed) summary.error = "plat.dxf, line 7: a number is expected";
      frmProgress ended;
      ended.ShowProgress({100, extents, 23});
      if (outcome == RunOutcome::Done) ended.OfferStandard();
      ended.ShowResult(outcome, AccountOf(summary, kUiWording), {TESSELINK_EXAMPLES});
      Visit(name, ended);
    }
    FrmScan fileScan;
    fileScan.ShowProgress(60);
    Visit("scan-file", fileScan);
    frmDBFScan tableScan;
    tableScan.ShowProgress(30);
    Visit("scan-table", tableScan);
  }

  void ShowFieldQuestions() {
    DBFInFilter table;
    table.filename("wells.dbf");
    FieldSelection selection;
    selection.Create(table);
    fDBFSel fields(selection);
    Visit("fields", fields);
    Get<QComboBox>(fields, "cboLayer").setCurrentIndex(0);
    Visit("fields-values", fields);
    Get<QPushButton>(fields, "cmdCont").click();
    Visit("fields-text", fields);
    Get<QToolButton>(fields, "cmdMore").click();
    Visit("fields-more", fields);
  }

  void ShowSmallQuestions() {
    frmPoint points;
    Visit("points", points);
    frmESRIType kind(nullptr, 4);
    Visit("shape-type", kind);
    fTRDig grid("sections.dbf");
    Visit("grid-fields", grid);
    InputBox lost(
        TextQuestion{"Error Finding $CDF.MAP", "Could Not locate $CDF.MAP", "$CDF.MAP", "/maps: no such folder"});
    Visit("lost-list", lost);
  }

  void ShowLayers() {
    Nobody person;
    MemorySettings settings;
    Report report;
    const FilterContext context{person, settings, report, {.programFolder = TESSELINK_DATA_FOLDER}};
    LayerMatching matching(context);
    matching.Create(
        {"SECTION LINES", "QUARTER", "ROADS", "PIPE_12IN", "100 METRES ABOVE MEAN SEA LEVEL", "CREEKS", "WELLS OIL",
         "Lease Hansen", "FENCE", "POWER", "LAKES", "0", "Defpoints", "RAILROAD", "COUNTY", "xref$0$dim"},
        "AutoCAD DXF File Layer");
    frmLayers dialog(matching, nullptr, false);
    Visit("layers-empty", dialog);
    Get<QPushButton>(dialog, "SmartAss").click();
    Visit("layers", dialog);
  }

  void ShowOthers() {
    QueueWindow queue(AllFormats(), {});
    Visit("queue", queue, 300);
    ShowQueue();
    HelpWindow help(nullptr);
    Visit("help", help, 300);
    AboutBox about(nullptr);
    Visit("about", about);
    QMessageBox cancel(QMessageBox::Question, frmProgress::tr("Cancel"),
                       frmProgress::tr("Are you sure you want to cancel?"), QMessageBox::Yes | QMessageBox::No);
    Visit("message-cancel", cancel);
  }

  // Some files of each state.
  void ShowQueue() {
    QueueWindow queue(AllFormats(), "tesselink");
    queue.Preset("Landmark ASCII File (*.asc)", Dialect::Standard);
    queue.Add({"/tmp/plats"});
    auto* model = queue.findChild<QueueModel*>();
    if (model == nullptr) qFatal("no list");
    QJsonArray files;
    for (const char* name : {"lease-7.dxf", "plat.cdf", "plat.dxf", "roads.shp", "section-14.dxf", "wells.shp"}) {
      const QString file = QString("/tmp/plats/") + name;
      files.append(QJsonObject{{"input", file}, {"output", file.left(file.size() - 4) + ".asc"}});
    }
    QJsonObject twice = files[2].toObject();
    twice["against"] = "plat.cdf and plat.dxf would both become plat.asc";
    files[2] = twice;
    model->TakePlan({{"files", files}}, {"/tmp/plats/missing.dxf"});
    const QJsonArray lost{QJsonObject{{"kind", "heights"}, {"text", "the format has no z"}, {"count", 2}},
                          QJsonObject{{"kind", "curves"}, {"text", "5 became chains"}, {"count", 1}}};
    model->TakeResult({{"input", "/tmp/plats/plat.cdf"},
                       {"result", "converted"},
                       {"outputs", QJsonArray{"/tmp/converted/plat.asc"}},
                       {"summary", QJsonObject{{"warnings", lost}}}});
    model->TakeResult({{"input", "/tmp/plats/lease-7.dxf"},
                       {"result", "failed"},
                       {"reason", "/tmp/plats/lease-7.dxf: ends within a section"}});
    model->TakeBegun("/tmp/plats/roads.shp");
    Get<QTableView>(queue, "List").selectRow(2);
    Visit("queue-files", queue, kAtOnce);
  }

  Visitor visit_;
};

}  // namespace tesselink
