// SPDX-License-Identifier: MIT
// The pane "More", the line below the dialect, and the command line that does what the window does.
#include "ui/OptionsPane.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include "formats/Formats.h"
#include "support/MemorySettings.h"
#include "ui/Answers.h"
#include "ui/MainWindow.h"
#include "ui/OptionCaptions.h"
#include "ui/PreviewWidget.h"

namespace tesselink {
namespace {

QByteArray Bytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file: " + path.toUtf8());
}

QString Example(const QString& name) { return QStringLiteral(TESSELINK_EXAMPLES "/") + name; }

struct Desk {
  Desk() {
    // What a person has set for every command, and the window does not take.
    qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
    QDir(folder.path()).mkdir("tesselink");
    QFile standing(Path("tesselink/tesselink.conf"));
    if (!standing.open(QIODevice::WriteOnly) || standing.write("layers = NONE\n") < 0) qFatal("no room");
    auto* preview = new PreviewWidget(AllFormats(), settings, options);
    window.SetPreview(preview);
    QObject::connect(&window, &MainWindow::inputChanged, preview, &PreviewWidget::ShowInputs);
    QObject::connect(&window, &MainWindow::readingChanged, preview, &PreviewWidget::SetOptions);
    QObject::connect(preview, &PreviewWidget::Known, &window, &MainWindow::TakeDrawing);
    window.show();
    // Which entity types layers become is no matter here.
    person.Whenever("Layer Name Matching", [](QWidget& dialog) { dialog.close(); });
  }
  ~Desk() { QCOMPARE(person.Complaint(), QString()); }

  QString Path(const QString& name) const { return folder.path() + '/' + name; }
  template <typename T>
  T& Get(const char* name) const {
    return Control<T>(window, name);
  }
  void Type(const char* box, const QString& text) {
    auto& line = Get<QLineEdit>(box);
    line.setText(text);
    emit line.textEdited(text);
    emit line.editingFinished();
  }
  void TypeField(const char* box, const QString& text) {
    Get<QComboBox>(box).setEditText(text);
    emit Get<QComboBox>(box).lineEdit()->editingFinished();
  }
  void Choose(const char* box, const QString& entry) {
    auto& list = Get<QComboBox>(box);
    list.setCurrentText(entry);
    emit list.activated(list.currentIndex());
  }
  void Standard() { Get<QComboBox>("cboDialect").setCurrentText("Standard"); }
  void Apply() { Get<QPushButton>("cmdApply").click(); }
  QString Line() const { return Get<QLabel>("lblDialectText").text(); }

  // What the copied command writes where the window has written.
  QByteArray BytesOfCopiedCommand(const QString& output) {
    Get<QPushButton>("cmdCopyCommand").click();
    const QString command = QApplication::clipboard()->text();
    QFile::remove(output);
    QProcess shell;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PATH", QStringLiteral(TESSELINK_DATA_FOLDER ":") + environment.value("PATH"));
    shell.setProcessEnvironment(environment);
    shell.start("sh", {"-c", command});
    if (!shell.waitForFinished() || shell.exitCode() != 0) {
      return command.toUtf8() + '\n' + shell.readAllStandardError();
    }
    return Bytes(output);
  }

  QTemporaryDir folder;
  MemorySettings settings;
  FilterOptions options{.programFolder = TESSELINK_DATA_FOLDER, .moduleFolder = TESSELINK_DATA_FOLDER};
  MainWindow window{AllFormats(), settings, options};
  Answers person;
};

}  // namespace

class OptionsPaneTest : public QObject {
  Q_OBJECT

 private slots:
  void HasWordsForEveryOption() {
    for (const InputFormat& input : AllFormats().Inputs()) {
      for (const OutputFormat& output : AllFormats().Outputs()) {
        for (const ConversionOption& option : OptionsOf(input, output)) {
          QVERIFY2(HasOptionWords(option), option.row.name.c_str());
        }
      }
    }
  }

  void DoesWhatTheCopiedCommandDoes() {
    Desk desk;
    const QString output = desk.Path("it's $HOME.dxf");
    desk.Type("Infile", Example("wells.shp"));
    desk.Type("OutFile", output);
    desk.Standard();
    desk.TypeField("option.layer-field", "LAYER");
    desk.TypeField("option.text-field", "{LABEL} 'x' \"y\"");
    desk.TypeField("option.text-height", "7.5");
    desk.Choose("option.release", "2007 (AC1021)");
    desk.Apply();
    const QByteArray written = Bytes(output);
    QVERIFY(written.contains("AC1021") && written.contains("'x' \"y\""));
    QCOMPARE(desk.BytesOfCopiedCommand(output), written);

    // Without the fields the run asks, and the command says what was answered.
    desk.TypeField("option.layer-field", "");
    desk.TypeField("option.text-field", "");
    desk.Choose("option.release", "As usual");
    desk.person.Press("exists already", "Yes");
    desk.person.Do("DBF Fields", [](QWidget& dialog) {
      Control<QComboBox>(dialog, "cboLayer").setCurrentIndex(0);
      Control<QPushButton>(dialog, "cmdCont").click();
      Control<QPushButton>(dialog, "cmdCont").click();
    });
    desk.Apply();
    const QByteArray second = Bytes(output);
    QVERIFY(second.contains("AC1009"));
    QCOMPARE(desk.BytesOfCopiedCommand(output), second);
  }

  void TakesTheOptionsOfADrawing() {
    Desk desk;
    const QString output = desk.Path("plat.asc");
    desk.Type("Infile", Example("all-entities.dxf"));
    desk.Type("OutFile", output);
    desk.Choose("option.blocks", "As what they draw");
    desk.Type("option.tolerance", "0.5");
    desk.Type("option.map-scale", "24000");
    desk.Type("option.clip", "-1000, -1000, 2000, 2000");
    desk.Apply();
    const QByteArray written = Bytes(output);
    QVERIFY(written.contains("24000"));
    QCOMPARE(desk.BytesOfCopiedCommand(output), written);
  }

  void StopsAtAWrongValue() {
    Desk desk;
    desk.Type("Infile", Example("wells.shp"));
    desk.Type("OutFile", desk.Path("wells.dxf"));
    desk.TypeField("option.layer-field", "DEPHT");
    auto& problem = desk.Get<QLabel>("problem.layer-field");
    QVERIFY(problem.text().contains("no field \"DEPHT\""));
    desk.person.Press("Layer field: The table has no field", "OK");
    desk.Apply();
    QVERIFY(desk.Get<QToolButton>("cmdMoreOptions").isChecked() && problem.isVisible());
    QVERIFY(!QFile::exists(desk.Path("wells.dxf")));
    desk.TypeField("option.layer-field", "layer");
    QVERIFY(!problem.isVisible());
    desk.Type("option.clip", "1,2,3");
    desk.person.Press("Only within", "OK");
    desk.Get<QPushButton>("cmdCopyCommand").click();

    // What cannot be said in this dialect is grey, and stops nothing.
    desk.Type("option.clip", "");
    desk.Standard();
    desk.Type("option.encoding", "no such");
    QVERIFY(desk.Get<QLabel>("problem.encoding").text().contains("no encoding"));
    desk.Get<QComboBox>("cboDialect").setCurrentText("Classic");
    QVERIFY(!desk.Get<QLineEdit>("option.encoding").isEnabled());
    QVERIFY(desk.Get<QLabel>("problem.encoding").text().isEmpty());
  }

  void KeepsWhatWasGivenForEachPair() {
    MemorySettings settings;
    const InputFormat &landmark = AllFormats().Input("Landmark ASCII File (*.asc)"),
                      &shapefile = AllFormats().Input("ESRI Shapefile (*.shp)");
    const OutputFormat &drawing = AllFormats().Output("AutoCAD DXF File (*.dxf)"),
                       &cdf = AllFormats().Output("Geographix CDF File (*.cdf)");
    const auto give = [](OptionsPane& pane, const char* box, const QString& text) {
      Control<QLineEdit>(pane, box).setText(text);
      emit Control<QLineEdit>(pane, box).editingFinished();
    };
    {
      OptionsPane pane(settings);
      pane.SetPair(landmark, drawing);
      pane.SetDrawing({"a.asc"}, {});
      give(pane, "option.tolerance", "0.25");
      give(pane, "option.clip", "0,0,1,1");
      QCOMPARE(Control<QToolButton>(pane, "cmdMoreOptions").text(), QString("&More (2 set)"));
      pane.SetPair(landmark, cdf);
      QVERIFY(!pane.Values().Has("tolerance") && pane.Values().Has("clip"));
      pane.SetPair(shapefile, drawing);
      pane.SetPair(landmark, drawing);
      QCOMPARE(pane.Values().Text("tolerance"), std::string("0.25"));
      pane.SetDrawing({"b.asc"}, {});
      QVERIFY(!pane.Values().Has("clip"));
    }
    OptionsPane pane(settings);
    pane.SetPair(landmark, drawing);
    QCOMPARE(pane.Values().Text("tolerance"), std::string("0.25"));
    QVERIFY(!pane.Values().Has("clip"));
    pane.ClipChosen({-1, 2, 3.5, 4});
    QCOMPARE(pane.Values().Text("clip"), std::string("-1,2,3.5,4"));
  }

  void OffersTheLayersOfTheDrawing() {
    Desk desk;
    desk.Type("Infile", Example("all-entities.dxf"));
    auto& layers = desk.Get<QLineEdit>("option.layers");
    layers.setText("ROAD*");
    QTRY_VERIFY(desk.Line().contains("blocks"));
    const auto tick = [](QWidget& dialog) {
      auto& list = Control<QListWidget>(dialog, "lstLayers");
      QVERIFY(list.count() > 1);
      list.item(0)->setCheckState(Qt::Checked);
      dynamic_cast<QDialog&>(dialog).accept();
    };
    desk.person.Do("Layers of the Drawing", tick);
    desk.Get<QPushButton>("help.layers").click();
    QVERIFY(layers.text().startsWith("ROAD*,") && layers.text().size() > 6);
  }

  void TellsWhatTheDialectDoesWithTheDrawing() {
    Desk desk;
    QCOMPARE(desk.Line(), QString("Classic: other programs do not read the output's attribute table."));
    desk.Type("Infile", Example("quarter-section.asc"));
    desk.Type("OutFile", desk.Path("plat.dxf"));
    QTRY_VERIFY(desk.Line().contains("other programs miss"));
    desk.Standard();
    QTRY_VERIFY(desk.Line().contains("closed"));
    QVERIFY(desk.Line().startsWith("Standard: "));
  }
};

}  // namespace tesselink

QTEST_MAIN(tesselink::OptionsPaneTest)
#include "OptionsPaneTest.moc"
