// SPDX-License-Identifier: MIT
// The main window: its controls, what the browse buttons do, typed and dropped files, and a conversion from end to end.
#include "ui/MainWindow.h"

#include <QProgressBar>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QWheelEvent>

#include "support/Shapes.h"
#include "ui/CommonDlg.h"
#include "ui/Desk.h"
#include "ui/FileChoice.h"

namespace tesselink {

class MainWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void HasItsControls() {
    const Desk desk;
    QCOMPARE(desk.window.windowTitle(), QString("Tesselink File Conversion"));
    const QString words = Answers::Words(desk.window).remove('&');
    for (const char* text :
         {"Input Format:", "Input File", "Output Format:", "Output File", "Tesselink File Converter", "2001"}) {
      QVERIFY2(words.contains(text), text);
    }
    QStringList rows;
    for (const char* box : {"InFormat", "OutFormat"}) {
      for (int i = 0; i < desk.Get<QComboBox>(box).count(); ++i) rows.append(desk.Get<QComboBox>(box).itemText(i));
    }
    const char* const cdf = "Geographix CDF File (*.cdf)";
    QCOMPARE(rows, (QStringList{kShapefile, kDrawing, "WinPICS Map Overlay (*.mol)", kLandmark, cdf, kSeveral,
                                kShapefile, kDrawing, kLandmark, cdf, "T/R Digitizer Format (*.grd)"}));
  }

  void ConvertsAsTheCommandLineDoes() {
    Desk desk;
    desk.Type("Infile", desk.Copy("quarter-section.asc"));
    desk.Type("OutFile", desk.Path("plat.dxf"));
    desk.Click("cmdApply");
    QCOMPARE(Bytes(desk.Path("plat.dxf")), Bytes(Example("../tests/cli/golden/quarter-section-asc.dxf")));
    QCOMPARE(desk.Get<QProgressBar>("Gauge").value(), 100);

    desk.Get<QComboBox>("cboDialect").setCurrentText("Standard");
    desk.person.Press("exists already", "Yes");
    desk.Click("cmdApply");
    QVERIFY(Bytes(desk.Path("plat.dxf")).contains(" 66\r\n1\r\n"));  // which classic polylines lack
  }

  void ConvertsAgainInStandard() {
    Desk desk;
    for (const char* name : {"wells.dbf", "wells.shx"}) desk.Copy(name);
    desk.Type("Infile", desk.Copy("wells.shp"));
    desk.Type("OutFile", desk.Path("wells.dxf"));
    desk.person.Do("DBF Fields", [](QWidget& dialog) {
      Control<QComboBox>(dialog, "cboLayer").setCurrentIndex(1);
      Control<QPushButton>(dialog, "cmdCont").click();
      Control<QPushButton>(dialog, "cmdCont").click();
    });
    desk.Click("cmdApply");
    QVERIFY(Bytes(desk.Path("wells.dxf")).contains("AC1009"));
    QVERIFY(desk.Get<QPushButton>("cmdAgain").isVisible());
    desk.Click("cmdAgain");  // neither the fields nor the file of the run before are asked about
    QTRY_VERIFY(Bytes(desk.Path("wells.dxf")).contains("1000\r\n"));  // attributes
    QCOMPARE(desk.Get<QComboBox>("cboDialect").currentText(), QString("Standard"));
    QVERIFY(!desk.Get<QPushButton>("cmdAgain").isVisible());
  }

  // Another drawing may have been chosen meanwhile, which that run does not concern.
  void ConvertsAgainWithTheSameTypesOfLayers() {
    Desk desk;
    desk.Type("Infile", desk.Copy("quarter-section.asc"));
    desk.Get<QComboBox>("OutFormat").setCurrentText("ESRI Shapefile (*.shp)");
    desk.Type("OutFile", desk.Path("plat.shp"));
    desk.person.Press("Which type of entity", "Continue");
    int asked = 0;
    desk.person.Whenever("Layer Name Matching", [&asked](QWidget& dialog) {
      ++asked;
      dialog.close();
    });
    QSignalSpy made(&desk.window, &MainWindow::outputMade);
    desk.Click("cmdApply");
    QCOMPARE(made.size(), 1);
    QVERIFY(desk.Get<QPushButton>("cmdAgain").isVisible());
    desk.Type("Infile", desk.Copy("wells.shp"));
    const QByteArray before = Bytes(desk.Path("plat.dbf"));
    desk.Click("cmdAgain");
    QTRY_VERIFY(Bytes(desk.Path("plat.dbf")) != before);
    QCOMPARE(made.size(), 1);
    QCOMPARE(asked, 1);
    QCOMPARE(desk.Get<QComboBox>("cboDialect").currentText(), QString("Classic"));
  }

  void TheWheelChangesNoListInPassing() {
    Desk desk;
    desk.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&desk.window));
    for (const char* name : {"InFormat", "OutFormat", "cboDialect"}) {
      auto& list = desk.Get<QComboBox>(name);
      const auto turn = [&list] {
        const QPointF at(5, 5);
        QWheelEvent wheel(at, list.mapToGlobal(at), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&list, &wheel);
        return list.currentIndex();
      };
      list.setCurrentIndex(0);
      desk.Get<QPushButton>("cmdApply").setFocus();
      QCOMPARE(turn(), 0);
      list.setFocus();
      QCOMPARE(turn(), 1);
    }
  }

  void TellsTheFieldsOfSeveralFiles() {
    Desk desk;
    desk.Put("wells.dbf", Table({{"layer", 4}, {" Name ", 4}, {"LAYER", 4}}, {}));
    desk.Get<QLineEdit>("Infile").setText(desk.Put("wells.shp"));
    desk.Get<QComboBox>("InFormat").setCurrentText(kSeveral);
    QVERIFY(!desk.Get<QWidget>("Infile").isVisible() && desk.Get<QWidget>("forFiles").isVisible());
    QCOMPARE(desk.Get<QLabel>("lblFields").text(), QString("Fields: LAYER, NAME"));
    QCOMPARE(desk.Get<QLabel>("lblSelected").text(), QString("1 files selected"));

    desk.Put("bad.dbf", "no table");
    desk.Drop({desk.Put("bad.shp"), desk.Path("wells.shp")});
    QVERIFY(desk.Get<QLabel>("lblFields").text().contains("bad.dbf"));
    desk.person.Do("Select Shape File Directory...", Choose({"bad.shp", "wells.shp"}));
    desk.person.Press("Error 22: " + desk.Path("bad.dbf") + ": holds 8 bytes", "OK");
    desk.Click("forFiles");
  }

  void TakesOneOrSeveralChosenShapefiles() {
    Desk desk;
    for (const char* name : {"a.shp", "b.shp", "c.shp"}) desk.Put(name);
    desk.Get<QLineEdit>("Infile").setText(desk.Path(""));
    desk.Get<QComboBox>("InFormat").setCurrentText(kSeveral);
    const QString title = "Select Shape File Directory...";
    desk.person.Do(title, [](QWidget& window) { dynamic_cast<QDialog&>(window).reject(); });
    desk.Click("forFiles");
    QCOMPARE(desk.Get<QLabel>("lblSelected").text(), QString("0 files selected"));

    desk.person.Do(title, Choose({"a.shp", "b.shp", "c.shp"}));
    desk.Click("forFiles");
    QCOMPARE(desk.Get<QLabel>("lblSelected").text(), QString("3 files selected"));
    QCOMPARE(desk.InFormat(), QString(kSeveral));
    QCOMPARE(desk.Infile(), desk.Path(""));
    QCOMPARE(desk.window.InputPath(), desk.Path("a.shp"));

    desk.person.Do(title, Choose({"b.shp"}));
    desk.Click("forFiles");
    QCOMPARE(desk.InFormat(), QString(kShapefile));
    QCOMPARE(desk.Infile(), desk.Path("b.shp"));
    QVERIFY(desk.Get<QLineEdit>("Infile").isVisible());
  }

  void BrowsesForTheInput() {
    Desk desk;
    desk.Put("plat.dxf", "0\nEOF\n");
    desk.Get<QLineEdit>("Infile").setText(desk.Path("other.asc"));
    desk.Get<QComboBox>("InFormat").setCurrentText(kLandmark);
    QSignalSpy told(&desk.window, &MainWindow::inputChanged);
    desk.person.Do("Browsing...", [&desk](QWidget& window) {
      auto& dialog = dynamic_cast<QFileDialog&>(window);
      QCOMPARE(dialog.directory().path(), desk.folder.path());
      QCOMPARE(dialog.selectedNameFilter(), QString(kLandmark));
      QCOMPARE(dialog.nameFilters()[6], QString("All Files (*)"));
      QCOMPARE(dialog.nameFilters().last(), QString("All drawings (*.shp *.dxf *.mol *.asc *.cdf)"));
      Choose({"plat.dxf"})(window);
    });
    desk.Click("BrowseIn");
    QCOMPARE(desk.Infile(), desk.Path("plat.dxf"));
    QCOMPARE(desk.InFormat(), QString(kDrawing));
    QCOMPARE(told.last(), (QVariantList{QStringList{desk.Path("plat.dxf")}, kDrawing}));
    desk.person.Do("Browsing...", [](QWidget& window) { dynamic_cast<QDialog&>(window).reject(); });
    desk.Click("BrowseIn");
    QCOMPARE(desk.Infile(), desk.Path("plat.dxf"));
  }

  void BrowsesForTheOutput() {
    Desk desk;
    desk.Put("old.dxf", "old");
    desk.Get<QLineEdit>("Infile").setText(desk.Copy("quarter-section.asc"));
    desk.Get<QComboBox>("InFormat").setCurrentText(kLandmark);
    desk.Get<QComboBox>("OutFormat").setCurrentText(kDrawing);
    desk.person.Do("Browsing...", [&desk](QWidget& window) {
      auto& dialog = dynamic_cast<QFileDialog&>(window);
      QCOMPARE(dialog.acceptMode(), QFileDialog::AcceptSave);
      QCOMPARE(dialog.directory().path(), desk.folder.path());
      QCOMPARE(dialog.selectedNameFilter(), QString(kDrawing));
      QCOMPARE(Control<QLineEdit>(dialog, "fileNameEdit").text(), QString("quarter-section.dxf"));
      Choose({"new"})(window);
    });
    desk.Click("BrowseOut");
    QCOMPARE(desk.OutFile(), desk.Path("new.dxf"));

    // What the save dialog has asked is not asked again, but it is for the run that follows.
    desk.person.Do("Browsing...", Choose({"old.dxf"}));
    desk.person.Press("already exists", "Yes");
    desk.Click("BrowseOut");
    QCOMPARE(desk.OutFile(), desk.Path("old.dxf"));
    desk.Click("cmdApply");
    QVERIFY(Bytes(desk.Path("old.dxf")).size() > 3);
    desk.person.Press("exists already. Replace it?", "No");
    desk.Click("cmdApply");
  }

  void WritesWhatTheDropDownDoesNotBeginWith() {
    Desk desk;
    desk.Type("Infile", desk.Copy("quarter-section.asc"));
    auto& formats = desk.Get<QComboBox>("OutFormat");
    const int listed = formats.count();
    desk.person.Do("Browsing...", [](QWidget& window) {
      const QStringList filters = dynamic_cast<QFileDialog&>(window).nameFilters();
      QVERIFY(filters.indexOf("GeoPackage (*.gpkg)") > filters.indexOf("All Files (*)"));
      Choose({"plat.gpkg"})(window);
    });
    desk.Click("BrowseOut");
    desk.Click("cmdApply");
    QVERIFY(Bytes(desk.Path("plat.gpkg")).startsWith("SQLite format 3"));
    desk.Type("OutFile", desk.Path("other.gpkg"));
    QCOMPARE(formats.count(), listed + 1);
  }

  void AsksBeforeReplacingATypedOutput() {
    Desk desk;
    desk.Type("Infile", desk.Copy("quarter-section.asc"));
    desk.Put("plat.dbf", "a table of somebody else");
    desk.Type("OutFile", desk.Path("plat.shp"));
    desk.person.Press(desk.Path("plat.dbf"), "No");
    desk.Click("cmdApply");
    QVERIFY(!QFile::exists(desk.Path("plat.shp")));
    desk.Type("OutFile", desk.Path("plat.dxf"));
    desk.Put("plat.dxf", "old");
    desk.person.Press(desk.Path("plat.dxf"), "Yes");
    desk.Click("cmdApply");
    QVERIFY(Bytes(desk.Path("plat.dxf")).size() > 3);
    QCOMPARE(Bytes(desk.Path("plat.dbf")), QByteArray("a table of somebody else"));
  }

  void KeepsARepairedCopyFromTheRunsOwnFiles() {
    Desk desk;
    const QByteArray unix = Bytes(Example("quarter-section.asc")).replace("\r", "");
    desk.Type("Infile", desk.Put("unix.asc", unix.toStdString()));
    desk.Type("OutFile", desk.Path("plat.dxf"));
    const QString title = "Select a Name for the new Version";
    desk.person.Press("This file appears to come from a UNIX", "No");
    desk.person.Do(title, Choose({"plat.dxf"}));
    desk.person.Press("plat.dxf\n\nis a file of this conversion", "OK");
    desk.person.Do(title, Choose({"unix.asc"}));
    desk.person.Press("already exists", "Yes");
    desk.person.Press("unix.asc\n\nis a file of this conversion", "OK");
    desk.person.Do(title, Choose({"repaired.asc"}));
    desk.Click("cmdApply");
    QCOMPARE(Bytes(desk.Path("unix.asc")), unix);
    QCOMPARE(Bytes(desk.Path("repaired.asc")), Bytes(Example("quarter-section.asc")));
    QCOMPARE(Bytes(desk.Path("plat.dxf")), Bytes(Example("../tests/cli/golden/quarter-section-asc.dxf")));
  }

  void FollowsTheExtensionOfATypedPath() {
    Desk desk;
    desk.Type("Infile", "a.DXF");
    QCOMPARE(desk.InFormat(), QString(kDrawing));
    desk.Type("Infile", "a.unknown");
    QCOMPARE(desk.InFormat(), QString(kDrawing));
    desk.Type("OutFile", "b.asc");
    QCOMPARE(desk.OutFormat(), QString(kLandmark));
    desk.Type("OutFile", "b.dxf/c");
    QCOMPARE(desk.OutFormat(), QString(kDrawing));  // as far as it was typed
    desk.Get<QComboBox>("OutFormat").setCurrentText(kShapefile);
    QCOMPARE(desk.OutFile(), QString("b.dxf/c.shp"));  // which had none of its own
  }

  void TakesDroppedFiles() {
    const std::tuple<QStringList, QString, QString> cases[] = {{{"plat.dxf"}, kDrawing, "plat.dxf"},
                                                               {{"plat.txt"}, kShapefile, "plat.txt"},
                                                               {{"a.dbf", "a.shx", "a.shp"}, kShapefile, "a.shp"}};
    for (const auto& [dropped, format, input] : cases) {
      Desk desk;
      QStringList paths;
      for (const QString& name : dropped) paths.append(desk.Path(name));
      desk.Drop(paths);
      QCOMPARE(desk.InFormat(), format);
      QCOMPARE(desk.Infile(), desk.Path(input));
      desk.Drop({desk.Path("z.asc")});
      QCOMPARE(desk.InFormat(), QString(kLandmark));
    }
  }

  // Several shapefiles are one input where a person has said so; otherwise many files are conversions of their own.
  void TakesManyDroppedFiles() {
    Desk desk;
    const QStringList several{desk.Put("a.shp"), desk.Put("b.shp"), desk.Put("b.dbf")};
    const auto listed = [&desk] { return desk.Get<QTableView>("List").model()->rowCount(); };
    for (const QStringList& dropped : {several, QStringList{desk.Path("a.shp"), desk.Put("c.dxf")}, {desk.Path("")}}) {
      desk.Get<QComboBox>("InFormat").setCurrentText(kShapefile);
      desk.Drop(dropped);
      QVERIFY(desk.Get<QWidget>("QueueWindow").isVisible());
      QCOMPARE(desk.Infile(), QString());
      desk.Get<QWidget>("QueueWindow").close();
    }
    QCOMPARE(listed(), 4);
    desk.Get<QComboBox>("InFormat").setCurrentText(kSeveral);
    desk.Drop(several);
    QVERIFY(!desk.Get<QWidget>("QueueWindow").isVisible());
    QCOMPARE(desk.Get<QLabel>("lblSelected").text(), QString("2 files selected"));
  }

  void TellsHowFarAllFilesAre() {
    Desk desk;
    QStringList several;
    for (const char* name : {"a", "b"}) {
      for (const char* extension : {".shp", ".shx"}) {
        QFile::copy(Example(QString("wells") + extension), desk.Path(QString(name) + extension));
      }
      several.append(desk.Path(QString(name) + ".shp"));
    }
    desk.Get<QComboBox>("InFormat").setCurrentText(kSeveral);
    desk.Drop(several);
    desk.Type("OutFile", desk.Path("all.dxf"));
    for (int i = 0; i < 2; ++i) desk.person.Press("Could not find file", "OK");  // they have no tables
    desk.Click("cmdApply");
    QCOMPARE(desk.Get<QLabel>("lblFile").text(), QString("File 2 of 2: b.shp (100 % of the whole)"));
  }

  void ReadsAFileWhoseNameIsNotUtf8() {
    Desk desk;
    const std::string name = desk.Path("caf").toStdString() + "\xe9.asc";
    QVERIFY(QFile::copy(Example("quarter-section.asc"), desk.Path("in.asc")));
    QCOMPARE(std::rename(desk.Path("in.asc").toStdString().c_str(), name.c_str()), 0);
    QMimeData data;
    data.setData("text/uri-list", "file://" + QByteArray::fromStdString(name).toPercentEncoding("/") + "\r\n");
    desk.Drop(data);
    QCOMPARE(desk.Infile(), desk.Path(QStringLiteral("caf\u00e9.asc")));
    desk.Type("OutFile", desk.Path("plat.dxf"));
    desk.Click("cmdApply");
    QCOMPARE(Bytes(desk.Path("plat.dxf")), Bytes(Example("../tests/cli/golden/quarter-section-asc.dxf")));
  }

  void KeepsItsSizeAndTheDialect() {
    MemorySettings settings;
    QSize size;
    {
      MainWindow window(AllFormats(), settings);
      window.show();
      window.resize(window.size() + QSize(60, 40));
      size = window.size();
      Control<QComboBox>(window, "cboDialect").setCurrentText("Standard");
      window.close();
    }
    MainWindow window(AllFormats(), settings);
    window.show();
    QCOMPARE(window.size(), size);
    QCOMPARE(Control<QComboBox>(window, "cboDialect").currentText(), QString("Standard"));
    MemorySettings none;
    MainWindow first(AllFormats(), none, {.dialect = Dialect::Standard});
    QCOMPARE(Control<QComboBox>(first, "cboDialect").currentText(), QString("Standard"));
  }

  void BuildsFilterLists() {
    const QString list = FilterList({kShapefile, kDrawing});
    QCOMPARE(list, QString("ESRI Shapefile (*.shp)|*.shp|AutoCAD DXF File (*.dxf)|*.dxf|"));
    for (const QString& filters : {list, list.chopped(1)})
      QCOMPARE(NameFilters(filters), (QStringList{kShapefile, kDrawing}));
    QCOMPARE(NameFilters("ESRI Shapefiles (*.shp)|*.shp|All Files (*.*)...|*.*"),
             (QStringList{"ESRI Shapefiles (*.shp)", "All Files (*)"}));
    const QStringList paths{"/a/b.shp", "/a/c d.shp", "/e/f.shp"};
    QCOMPARE(SplitAtNuls(JoinedByNuls(paths)), paths);
    QCOMPARE(ChosenFiles(paths), (std::vector<std::string>{"/a/", "b.shp", "c d.shp", "/e/f.shp"}));
  }
};

}  // namespace tesselink

QTEST_MAIN(tesselink::MainWindowTest)
#include "MainWindowTest.moc"
#include "ui/UiText.h"
