// SPDX-License-Identifier: MIT
// Pictures of every window and dialog: window-screenshots FOLDER light|dark [ONLY]. packaging/screenshots.sh takes them
// all, in both styles and at both resolutions.
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStyleFactory>
#include <QToolButton>
#include <cstdio>

#include "app/SummaryText.h"
#include "ui/UiText.h"
#include "core/run/FieldSelection.h"
#include "core/run/Report.h"
#include "formats/Formats.h"
#include "formats/cdf/LayerMatching.h"
#include "formats/shape/DBFInFilter.h"
#include "fuzz/Harness.h"
#include "support/MemorySettings.h"
#include "ui/FrmScan.h"
#include "ui/MainWindow.h"
#include "ui/PreviewWidget.h"
#include "ui/fDBFSel.h"
#include "ui/fTRDig.h"
#include "ui/frmDBFScan.h"
#include "ui/frmESRIType.h"
#include "ui/frmLayers.h"
#include "ui/frmPoint.h"
#include "ui/frmProgress.h"

namespace {

using namespace tesselink;

QPalette Dark() {
  const QColor window(45, 45, 48), base(30, 30, 32), text(230, 230, 230), accent(61, 142, 201);
  QPalette palette(window);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase, window);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, text.darker(180));
  }
  palette.setColor(QPalette::PlaceholderText, text.darker(150));
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, accent.lighter(130));
  return palette;
}

class Album {
 public:
  Album(QString folder, QString only) : folder_(std::move(folder)), only_(std::move(only)) {}

  /// Grabs a window once it has been laid out and painted.
  void Take(const QString& name, QWidget& window, int milliseconds = 50) {
    if (!only_.isEmpty() && name != only_) return;
    window.show();
    QElapsedTimer waiting;
    waiting.start();
    while (waiting.elapsed() < milliseconds) QApplication::processEvents();
    const QString path = folder_ + "/" + name + ".png";
    if (!window.grab().save(path)) {
      std::fprintf(stderr, "%s could not be written\n", qPrintable(path));
      failed_ = true;
    }
    window.hide();
  }
  bool Failed() const { return failed_; }

 private:
  QString folder_, only_;
  bool failed_ = false;
};

void TakeMainWindow(Album& album) {
  MemorySettings settings;
  const FilterOptions options{.programFolder = TESSELINK_DATA_FOLDER};
  MainWindow window(AllFormats(), settings, options);
  auto* preview = new PreviewWidget(AllFormats(), settings, options);
  window.SetPreview(preview);
  QObject::connect(&window, &MainWindow::inputChanged, preview, &PreviewWidget::ShowInputs);
  album.Take("main-empty", window, 400);
  window.TakeFiles({"quarter-section.asc"});
  window.findChild<QComboBox*>("OutFormat")->setCurrentText("Geographix CDF File (*.cdf)");
  window.findChild<QLineEdit*>("OutFile")->setText("section-14.cdf");
  album.Take("main", window, 1500);
  window.TakeFiles({"wells.shp", "sections.shp", "quarter-section.shp"});
  album.Take("main-several", window, 1500);
}

void TakeProgress(Album& album) {
  Extents extents;
  tEntity entity;
  entity.x(0, 1845802.88);
  entity.Y(0, 461629.7);
  entity.x(1, 1851962.61);
  entity.Y(1, 467752.85);
  extents.Add(entity);
  frmProgress running;
  album.Take("progress-begins", running);
  running.ShowProgress(42, extents, 418233);
  album.Take("progress", running);
  frmProgress done;
  done.ShowProgress(100, extents, 46);
  RunSummary summary;
  for (int i = 0; i < 20; ++i) summary.read.Add(kPolyline), summary.written.Add(kPolyline);
  for (int i = 0; i < 23; ++i) summary.read.Add(kText), summary.written.Add(kText);
  for (int i = 0; i < 3; ++i) summary.read.Add(kArc), summary.skipped.Add(kArc);
  summary.report.Warn(WarningKind::Heights, "plat.asc: the format has no z; elements that lost theirs: 2");
  summary.outputs = {"plat.asc"};
  QStringList lines;
  for (const std::string& line : SummaryLines(summary, "plat.asc")) lines.append(Shown(line));
  done.ShowSummary(lines.join('\n'), TESSELINK_EXAMPLES);
  album.Take("progress-summary", done);
  FrmScan fileScan;
  fileScan.ShowProgress(60);
  album.Take("scan-file", fileScan);
  frmDBFScan tableScan;
  tableScan.ShowProgress(30);
  album.Take("scan-table", tableScan);
}

void TakeQuestions(Album& album) {
  DBFInFilter table;
  table.filename("wells.dbf");
  FieldSelection selection;
  selection.Create(table);
  fDBFSel fields(selection);
  album.Take("fields", fields);
  auto* layers = fields.findChild<QComboBox*>("cboLayer");
  layers->setCurrentIndex(0);
  emit layers->activated(0);
  album.Take("fields-values", fields);
  fields.findChild<QPushButton*>("cmdCont")->click();
  album.Take("fields-text", fields);
  fields.findChild<QToolButton*>("cmdMore")->click();
  album.Take("fields-more", fields);
  frmPoint points;
  album.Take("points", points);
  frmESRIType kind;
  album.Take("shape-type", kind);
  fTRDig grid("sections.dbf");
  album.Take("grid-fields", grid);
}

void TakeLayers(Album& album) {
  SilentPerson person;
  MemorySettings settings;
  Report report;
  const FilterContext context{person, settings, report, {.programFolder = TESSELINK_DATA_FOLDER}};
  LayerMatching matching(context);
  matching.Create(
      {"SECTION LINES", "QUARTER", "ROADS", "PIPE_12IN", "100 METRES ABOVE MEAN SEA LEVEL", "CREEKS", "WELLS OIL",
       "Lease Hansen", "FENCE", "POWER", "LAKES", "0", "Defpoints", "RAILROAD", "COUNTY", "xref$0$dim"},
      "AutoCAD DXF File Layer");
  frmLayers dialog(matching);
  album.Take("layers-empty", dialog);
  dialog.findChild<QPushButton*>("SmartAss")->click();
  album.Take("layers", dialog);
}

void TakeMessages(Album& album) {
  QMessageBox cancel(QMessageBox::Question, "Cancel", "Are you sure you want to cancel?",
                     QMessageBox::Yes | QMessageBox::No);
  album.Take("message-cancel", cancel);
  QMessageBox error(QMessageBox::Critical, "Error",
                    "wells.asc, line 12: \"TEXT\" has 3 fields where at least 5 are needed");
  album.Take("message-error", error);
}

}  // namespace

int main(int count, char** values) {
  QApplication application(count, values);
  const QStringList words = QApplication::arguments();
  if (words.size() < 3 || (words[2] != "light" && words[2] != "dark")) {
    std::fputs("usage: window-screenshots FOLDER light|dark [ONLY]\n", stderr);
    return 2;
  }
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  if (words[2] == "dark") QApplication::setPalette(Dark());
  Album album(QDir(words[1]).absolutePath(), words.value(3));
  // So that no picture shows where somebody keeps the examples.
  QDir::setCurrent(TESSELINK_EXAMPLES);
  TakeMainWindow(album);
  TakeProgress(album);
  TakeQuestions(album);
  TakeLayers(album);
  TakeMessages(album);
  return album.Failed() ? 1 : 0;
}
