// SPDX-License-Identifier: MIT
// What the main window says of paths before a run, what it proposes and asks about them, and what it remembers.
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QTextBrowser>

#include "ui/Desk.h"
#include "ui/NoteLine.h"
#include "ui/PathNotes.h"
#include "ui/PreviewWidget.h"
#include "ui/TextPaths.h"

namespace tesselink {

class ChoosingTest : public QObject {
  Q_OBJECT

  // With plain blanks.
  static QString InNote(const Desk& desk) {
    return QString(desk.Get<NoteLine>("noteIn").Shown().text).replace(QChar::Nbsp, ' ');
  }
  static QString OutNote(const Desk& desk) { return desk.Get<NoteLine>("noteOut").Shown().text; }

 private slots:
  void SaysWhyAnInputCannotBeRead() {
    Desk desk;
    QDir(desk.folder.path()).mkdir("sub");
    desk.Put("plat.dwg", std::string("AC1032\0\0\0\0", 10));
    desk.Put("plat.zip", "PK\x03\x04");
    desk.Put("empty.dxf");
    const std::pair<QString, QString> cases[] = {{"gone.dxf", "There is no file gone.dxf"},
                                                 {"no/where.dxf", "There is no folder " + desk.Path("no")},
                                                 {"sub", "This is a folder"},
                                                 {"plat.dwg", "This is a DWG drawing"},
                                                 {"plat.zip", "Unpack it"},
                                                 {"empty.dxf", "This file is empty"}};
    for (const auto& [name, reason] : cases) {
      desk.Type("Infile", desk.Path(name));
      QVERIFY2(InNote(desk).startsWith(reason) || InNote(desk).contains(reason), qPrintable(InNote(desk)));
      QVERIFY(desk.Get<NoteLine>("noteIn").Shown().isProblem);
    }
    desk.Type("Infile", desk.Path("gone.dxf"));
    desk.Type("OutFile", desk.Path("out.dxf"));
    desk.person.Press("You must specify a valid input file", "OK");
    desk.Click("cmdApply");
    // Files come while another window is in front.
    desk.Type("Infile", desk.Path("later.asc"));
    QVERIFY(InNote(desk).startsWith("There is no file"));
    QFile::copy(Example("quarter-section.asc"), desk.Path("later.asc"));
    QEvent back(QEvent::ActivationChange);
    desk.window.activateWindow();
    QTRY_VERIFY(desk.window.isActiveWindow());
    QApplication::sendEvent(&desk.window, &back);
    QVERIFY2(InNote(desk).startsWith("Landmark ASCII File"), qPrintable(InNote(desk)));
  }

  void TakesADrawingUnderAnotherName() {
    Desk desk;
    QFile::copy(Example("all-entities.dxf"), desk.Path("plat.txt"));
    desk.Type("Infile", desk.Path("plat.txt"));
    QCOMPARE(desk.InFormat(), QString(kDrawing));  // no format has that extension
    QFile::copy(Example("all-entities.dxf"), desk.Path("plat.shp"));
    desk.Type("Infile", desk.Path("plat.shp"));
    QCOMPARE(desk.InFormat(), QString(kShapefile));
    QVERIFY(InNote(desk).contains("AutoCAD DXF File"));
    desk.Get<QAbstractButton>("noteInAction").click();
    QCOMPARE(desk.InFormat(), QString(kDrawing));
    QVERIFY(!desk.Get<NoteLine>("noteIn").Shown().isProblem);
  }

  void SaysWhatAnInputHolds() {
    Desk desk;
    auto* preview = new PreviewWidget(AllFormats(), desk.settings, desk.options);
    desk.window.SetPreview(preview);
    connect(&desk.window, &MainWindow::inputChanged, preview, &PreviewWidget::ShowInputs);
    connect(preview, &PreviewWidget::Counted, &desk.window, &MainWindow::SetCounts);
    connect(preview, &PreviewWidget::Hindered, &desk.window, &MainWindow::SetHindrance);
    desk.Type("Infile", desk.Copy("quarter-section.asc"));
    QTRY_VERIFY2(InNote(desk).contains("43 elements on 11 layers"), qPrintable(InNote(desk)));
    desk.Put("wells.prj", "PROJCS[\"NAD_1927_Texas\",GEOGCS[\"GCS\"]]");
    desk.Type("Infile", desk.Copy("wells.shp"));
    QTRY_VERIFY2(InNote(desk).contains("wells.shx"), qPrintable(InNote(desk)));  // which is not there
    desk.Copy("wells.shx");
    desk.Type("Infile", desk.Path("wells.shp"));
    QTRY_VERIFY2(InNote(desk).contains("7 elements") && InNote(desk).endsWith("NAD 1927 Texas"),
                 qPrintable(InNote(desk)));
    desk.Put("bad.dxf", "  0\r\nSECTION\r\n  2\r\nENTITIES\r\nno code\r\n");
    desk.Type("Infile", desk.Path("bad.dxf"));
    QTRY_VERIFY2(InNote(desk).contains("line 5"), qPrintable(InNote(desk)));
    QVERIFY(!InNote(desk).contains(desk.folder.path()));
  }

  void SaysWhatBecomesOfAnOutput() {
    Desk desk;
    desk.Type("Infile", desk.Copy("wells.shp"));
    desk.Copy("wells.dbf");
    desk.Get<QComboBox>("OutFormat").setCurrentText(kDrawing);
    const std::pair<QString, QString> cases[] = {{"new.dxf", "New file in " + desk.folder.path()},
                                                 {"no/where.dxf", "There is no folder " + desk.Path("no")},
                                                 {"", "This is a folder"},
                                                 {"wells.shp", "This is the input itself"},
                                                 {"new.txt", "does not end in .dxf"}};
    for (const auto& [name, said] : cases) {
      desk.Get<QComboBox>("OutFormat").setCurrentText(kDrawing);
      desk.Type("OutFile", desk.Path(name));
      QVERIFY2(OutNote(desk).contains(said), qPrintable(OutNote(desk)));
    }
    desk.Put("old.shx");
    desk.Type("OutFile", desk.Path("old.shp"));
    QCOMPARE(OutNote(desk), "Replaces old.shx in " + desk.folder.path());
    desk.Put("old.cpg");
    desk.Get<QComboBox>("cboDialect").setCurrentText("Standard");
    QCOMPARE(OutNote(desk), "Replaces old.shx, old.cpg in " + desk.folder.path());

    desk.Type("OutFile", desk.folder.path());
    desk.person.Press("This is a folder", "OK");
    desk.Click("cmdApply");
  }

  void CleansWhatIsPasted() {
    const QTemporaryDir folder;
    const QString home = QDir::homePath();
    QFile quoted(folder.filePath("'a'"));
    QVERIFY(quoted.open(QIODevice::WriteOnly));
    const std::pair<QString, QString> cases[] = {{"  /a/b c.dxf \t", "/a/b c.dxf"},
                                                 {"'/a/b.dxf' ", "/a/b.dxf"},
                                                 {"\"/a/b\"c.dxf\"", "/a/b\"c.dxf"},
                                                 {"file:///a/b%20c.dxf", "/a/b c.dxf"},
                                                 {"\"file:///a/b.dxf\"", "/a/b.dxf"},
                                                 {"~/b.dxf", home + "/b.dxf"},
                                                 {"~b.dxf", "~b.dxf"},
                                                 {quoted.fileName(), quoted.fileName()},
                                                 {"", ""}};
    for (const auto& [pasted, path] : cases) QCOMPARE(CleanPath(pasted), path);

    Desk desk;
    desk.Copy("quarter-section.asc");
    desk.Type("Infile", " '" + desk.Path("quarter-section.asc") + "' ");
    QCOMPARE(desk.InFormat(), QString(kLandmark));
    desk.Type("OutFile", QUrl::fromLocalFile(desk.Path("a b.dxf")).toString(QUrl::FullyEncoded));
    desk.Click("cmdApply");
    QVERIFY(QFile::exists(desk.Path("a b.dxf")));
    QCOMPARE(desk.Infile(), desk.Path("quarter-section.asc"));
  }

  void ProposesAnOutputUntilThePersonNamesOne() {
    Desk desk;
    auto& formats = desk.Get<QComboBox>("OutFormat");
    desk.Type("Infile", desk.Copy("quarter-section.asc"));
    QCOMPARE(desk.OutFile(), desk.Path("quarter-section.shp"));
    desk.Put("quarter-section.dbf", "of somebody else");
    formats.setCurrentText(kDrawing);
    QCOMPARE(desk.OutFile(), desk.Path("quarter-section.dxf"));
    formats.setCurrentText(kShapefile);
    QCOMPARE(desk.OutFile(), desk.Path("quarter-section-converted.shp"));
    formats.setCurrentText(kLandmark);
    QCOMPARE(desk.OutFile(), desk.Path("quarter-section-converted.asc"));
    for (const QString& unreadable : {desk.Path("gone.asc"), desk.Put("plat.zip", "PK\x03\x04")}) {
      desk.Type("Infile", unreadable);
      QCOMPARE(desk.OutFile(), QString());
    }

    desk.Type("OutFile", desk.Path("mine"));
    desk.Type("Infile", desk.Path("quarter-section.asc"));
    QCOMPARE(desk.OutFile(), desk.Path("mine"));
    formats.setCurrentText(kDrawing);
    QCOMPARE(desk.OutFile(), desk.Path("mine.dxf"));
    formats.setCurrentText(kLandmark);
    QCOMPARE(desk.OutFile(), desk.Path("mine.asc"));
    desk.Type("OutFile", desk.Path("mine.txt"));
    formats.setCurrentText(kDrawing);
    QCOMPARE(desk.OutFile(), desk.Path("mine.txt"));
  }

  void AsksAboutANameOfAnotherFormat() {
    Desk desk;
    desk.Type("Infile", desk.Copy("quarter-section.asc"));
    const QString asked = "does not end in .dxf";
    const auto apply = [&](const char* button) {
      desk.Type("OutFile", desk.Path("plat.cdf"));
      desk.Get<QComboBox>("OutFormat").setCurrentText(kDrawing);
      desk.person.Press(asked, button);
      desk.Click("cmdApply");
    };
    apply("Cancel");
    QCOMPARE(QDir(desk.folder.path()).entryList({"plat.*"}), QStringList());
    apply("Name it plat.dxf");
    QCOMPARE(desk.OutFile(), desk.Path("plat.dxf"));
    QVERIFY(Bytes(desk.Path("plat.dxf")).startsWith("  0\r\nSECTION"));
    apply("Write Geographix CDF File");
    QVERIFY(Bytes(desk.Path("plat.cdf")).startsWith("B"));
    QFile::remove(desk.Path("plat.cdf"));
    apply("Keep plat.cdf");
    QVERIFY(Bytes(desk.Path("plat.cdf")).startsWith("  0\r\nSECTION"));
    desk.person.Press("exists already", "No");  // once said, the name is not asked about again
    desk.Click("cmdApply");
  }

  void RemembersFormatsFoldersAndInputs() {
    Desk desk;
    desk.Type("Infile", desk.Copy("quarter-section.asc"));
    desk.Type("OutFile", desk.Path("plat.gpkg"));
    desk.Click("cmdApply");
    desk.person.Press("valid input file", "OK");  // which is no input to come back to
    desk.Type("Infile", desk.Path("gone.dxf"));
    desk.Click("cmdApply");
    desk.window.close();

    MainWindow window(AllFormats(), desk.settings, desk.options);
    window.show();
    QCOMPARE(Control<QComboBox>(window, "InFormat").currentText(), QString(kDrawing));
    QCOMPARE(Control<QComboBox>(window, "OutFormat").currentText(), QString("GeoPackage (*.gpkg)"));
    desk.person.Do("Browsing...", [&desk](QWidget& dialog) {
      QCOMPARE(dynamic_cast<QFileDialog&>(dialog).directory().path(), desk.folder.path());
      dynamic_cast<QDialog&>(dialog).reject();
    });
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
    auto& menu = Control<QMenu>(window, "recentMenu");
    emit menu.aboutToShow();
    QCOMPARE(menu.actions().size(), 3);  // the input, a line, and a way to forget
    menu.actions()[0]->trigger();
    QCOMPARE(Control<QLineEdit>(window, "Infile").text(), desk.Path("quarter-section.asc"));
    QCOMPARE(Control<QComboBox>(window, "InFormat").currentText(), QString(kLandmark));
    QFile::remove(desk.Path("quarter-section.asc"));
    emit menu.aboutToShow();
    QVERIFY(!menu.actions()[0]->isEnabled());
  }

  void RemembersTheFieldsOfATable() {
    Desk desk;
    for (const char* file : {"wells.shp", "wells.shx", "wells.dbf"}) desk.Copy(file);
    desk.Type("Infile", desk.Path("wells.shp"));
    desk.Get<QComboBox>("OutFormat").setCurrentText(kDrawing);
    const auto answer = [&](const std::function<void(QWidget&)>& how) {
      QFile::remove(desk.Path("wells.dxf"));
      desk.person.Do("DBF Fields", how);
      desk.Click("cmdApply");
      return Bytes(desk.Path("wells.dxf"));
    };
    const QByteArray asked = answer([](QWidget& dialog) {
      QVERIFY(!Control<QPushButton>(dialog, "cmdLast").isVisible());
      Control<QComboBox>(dialog, "cboLayer").setCurrentText("LAYER");
      Control<QPushButton>(dialog, "cmdCont").click();
      Control<QComboBox>(dialog, "cbotxtfield").setCurrentText("LABEL");
      Control<QPushButton>(dialog, "cmdCont").click();
    });
    QVERIFY(asked.contains("TEXT"));
    const QByteArray remembered = answer([](QWidget& dialog) {
      QCOMPARE(Control<QPushButton>(dialog, "cmdLast").text(), QString("As la&st time: LAYER, LABEL"));
      Control<QPushButton>(dialog, "cmdLast").click();
    });
    QCOMPARE(remembered, asked);
  }

  void NeverMovesWhatIsDropped() {
    Desk desk;
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(desk.Put("plat.dxf", "  0\r\nSECTION\r\n"))});
    QDragEnterEvent enter(QPoint(1, 1), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::ShiftModifier);
    QApplication::sendEvent(&desk.window, &enter);
    QVERIFY(enter.isAccepted());
    QCOMPARE(enter.dropAction(), Qt::CopyAction);
    QVERIFY(desk.Get<QWidget>("dropHint").isVisible());
    QDropEvent drop(QPointF(1, 1), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::ShiftModifier);
    QApplication::sendEvent(&desk.window, &drop);
    QCOMPARE(drop.dropAction(), Qt::CopyAction);
    QVERIFY(!desk.Get<QWidget>("dropHint").isVisible());
    QCOMPARE(desk.Infile(), desk.Path("plat.dxf"));
  }

  void FitsASmallScreen() {
    Desk desk;
    desk.window.SetPreview(new PreviewWidget(AllFormats(), desk.settings, desk.options));
    desk.window.resize(200, 200);
    QVERIFY2(desk.window.minimumSizeHint().height() <= 560 && desk.window.minimumSizeHint().width() <= 1000,
             qPrintable(QString("%1 x %2").arg(desk.window.width()).arg(desk.window.height())));
    // By the keyboard alone, whatever has the focus is in view.
    auto& last = desk.Get<QComboBox>("cboDialect");
    last.setFocus();
    const auto& view = *desk.Get<QScrollArea>("Scroll").viewport();
    QTest::keyClick(&desk.Get<QWidget>("BrowseOut"), Qt::Key_Tab);
    QVERIFY(view.rect().contains(last.mapTo(&view, last.rect().center())));
    QVERIFY(desk.window.rect().contains(desk.Get<QWidget>("cmdApply").mapTo(&desk.window, QPoint(0, 0))));
  }

  void HelpsAndTellsWhatItIs() {
    Desk desk;
    desk.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&desk.window));
    QTest::keyClick(&desk.window, Qt::Key_F1);
    auto& help = desk.Get<QDialog>("helpWindow");
    QVERIFY(help.isVisible() && desk.Get<QTextBrowser>("helpPages").toPlainText().startsWith("The window"));
    help.close();
    desk.person.Do("About Tesselink", [](QWidget& box) {
      QVERIFY(Answers::Words(box).contains(TESSELINK_VERSION) && Answers::Words(box).contains(qVersion()));
      QVERIFY(Control<QPlainTextEdit>(box, "aboutLicence").toPlainText().startsWith("MIT License"));
      dynamic_cast<QDialog&>(box).reject();
    });
    desk.Get<QMenu>("helpMenu").actions()[1]->trigger();
  }
};

}  // namespace tesselink

QTEST_MAIN(tesselink::ChoosingTest)
#include "ChoosingTest.moc"
