// SPDX-License-Identifier: MIT
// The questions of a run as dialogs: what can be chosen, what is refused, what comes back.
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTextDocumentFragment>
#include <QTimer>
#include <QToolButton>
#include <fstream>
#include <functional>

#include "core/io/Errors.h"
#include "core/run/FieldSelection.h"
#include "formats/shape/DBFInFilter.h"
#include "support/Shapes.h"
#include "ui/Answers.h"
#include "ui/Questions.h"
#include "ui/fDBFSel.h"
#include "ui/fTRDig.h"
#include "ui/frmDBFScan.h"
#include "ui/frmESRIType.h"
#include "ui/frmPoint.h"

namespace tesselink {
namespace {

void Press(const QWidget& dialog, const char* button) {
  QTest::mouseClick(&Control<QPushButton>(dialog, button), Qt::LeftButton);
}

QStringList Items(const QComboBox& list) {
  QStringList items;
  for (int i = 0; i < list.count(); ++i) items << list.itemText(i);
  return items;
}

// What a label shows, without markup and mnemonic.
QString TextOf(const QWidget& dialog, const char* label) {
  return QTextDocumentFragment::fromHtml(Control<QLabel>(dialog, label).text()).toPlainText().remove('&');
}

// The person acts as soon as the dialog has the keyboard.
void WhenSeen(QDialog& dialog, const std::function<void()>& person) {
  QTimer::singleShot(0, &dialog, [&dialog, person] {
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    person();
  });
}

int Run(QDialog& dialog, const std::function<void()>& person) {
  WhenSeen(dialog, person);
  return dialog.exec();
}

// As many records as wanted, without a file. A test acts while one of them is read.
class MadeUpTable final : public AttributeTable {
 public:
  MadeUpTable(std::vector<std::string> names, std::int64_t records) : names_(std::move(names)), records_(records) {}
  std::int64_t different = 3;
  int passes = 0;

  int NumFields() const override { return static_cast<int>(names_.size()) - 1; }
  std::int64_t NumRecs() const override {
    if (records_ < 0) throw Error("the table cannot tell");
    return records_;
  }
  std::string GetFieldName(int field) const override { return names_[static_cast<std::size_t>(field)]; }
  char FieldType(int) const override { return 'C'; }
  int FieldLength(int) const override { return 10; }
  int FieldDecimals(int) const override { return 0; }
  int GetFieldNum(std::string_view name) const override {
    for (int i = 0; i <= NumFields(); ++i) {
      if (names_[static_cast<std::size_t>(i)] == name) return i;
    }
    return -1;
  }
  std::string_view GetFieldData(int field, std::int64_t record) override {
    if (record == 0) ++passes;
    value_ = names_[static_cast<std::size_t>(field)] + std::to_string(record % different);
    return value_;
  }

 private:
  std::vector<std::string> names_;
  std::int64_t records_;
  std::string value_;
};

}  // namespace

class DialogsTest : public QObject {
  Q_OBJECT

 private slots:
  void FieldsInTwoSteps() {
    DBFInFilter table;
    table.filename(Put("wells.dbf",
                       Table({{"NAME", 4}, {"LAYER", 6}}, {{"A", "ROAD"}, {"B", "CREEK"}, {"C", "ROAD"}, {"D", ""}})));
    FieldSelection selection;
    selection.Create(table);
    fDBFSel dialog(selection);
    QCOMPARE(dialog.windowTitle(), "DBF Fields");
    auto* layers = &Control<QComboBox>(dialog, "cboLayer");
    auto* texts = &Control<QComboBox>(dialog, "cbotxtfield");
    auto* entries = &Control<QListView>(dialog, "lstEntries");
    const auto* note = &Control<QLabel>(dialog, "lblNote");
    const int result = Run(dialog, [&] {
      QVERIFY(note->isVisible() && note->text().contains("goes to the layer \"Unassociated\""));
      QCOMPARE(Items(*layers), QStringList({"NAME", "LAYER"}));
      QCOMPARE(layers->currentIndex(), -1);
      QVERIFY(!entries->isVisible() && !texts->isVisible());
      layers->setCurrentIndex(1);
      QVERIFY(entries->isVisible());
      QCOMPARE(entries->model()->rowCount(), 3);
      QCOMPARE(entries->model()->index(1, 0).data().toString(), "CREEK");
      layers->setCurrentIndex(0);
      QCOMPARE(entries->model()->rowCount(), 4);
      layers->setCurrentIndex(-1);
      QVERIFY(!entries->isVisible());
      layers->setCurrentIndex(1);
      QVERIFY(entries->isVisible());

      QVERIFY2(!dialog.close(), "the close box is refused");
      PressOnTop("No");
      QTest::keyClick(&dialog, Qt::Key_Escape);
      QVERIFY(dialog.isVisible());
      QVERIFY(!note->isVisible());

      Press(dialog, "cmdCont");
      QVERIFY(!layers->isVisible() && !entries->isVisible() && texts->isVisible());
      QCOMPARE(TextOf(dialog, "Stat"),
               "If there is a text field in the DBF file, select it now, otherwise select continue.");
      QCOMPARE(TextOf(dialog, "lblField"), "Text Field Name:");
      QCOMPARE(Items(*texts), QStringList({"NAME", "LAYER", "(None)"}));
      QCOMPARE(texts->currentText(), "");
      QVERIFY(!dialog.close());
      texts->setCurrentIndex(0);
      QVERIFY(entries->isVisible());
      QCOMPARE(entries->model()->rowCount(), 4);
      QCOMPARE(entries->model()->index(3, 0).data().toString(), "D");
      texts->setCurrentIndex(2);
      QVERIFY(!entries->isVisible());
      Press(dialog, "cmdCont");
    });
    QCOMPARE(result, int(QDialog::Accepted));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(selection.CurrentStep(), FieldSelection::Step::Done);
    QCOMPARE(selection.LayerField(), "LAYER");
    QVERIFY2(!selection.TextWanted(), "(None) is no text field");
    MadeUpTable next({"NAME", "LAYER"}, 2);
    selection.Create(next);
    QVERIFY2(selection.CurrentStep() == FieldSelection::Step::Done, "asked once");
    QVERIFY(selection.Entries() == (std::vector<std::string>{"LAYER0", "LAYER1"}));
  }

  void MoreAboutLabels() {
    MadeUpTable table({"NAME", "2020"}, 2);
    FieldSelection selection;
    selection.Create(table);
    fDBFSel dialog(selection);
    auto* more = &Control<QToolButton>(dialog, "cmdMore");
    auto* text = &Control<QLineEdit>(dialog, "txtTemplate");
    auto* problem = &Control<QLabel>(dialog, "lblProblem");
    const int result = Run(dialog, [&] {
      QVERIFY(!more->isVisible() && !text->isVisible());
      Press(dialog, "cmdCont");
      QVERIFY(more->isVisible() && !text->isVisible());
      Control<QComboBox>(dialog, "cbotxtfield").setCurrentIndex(0);
      QTest::keyClick(more, Qt::Key_Space);
      QVERIFY(text->isVisible() && text->hasFocus());
      text->setText("{NAME} {DEPTH}");
      Press(dialog, "cmdCont");
      QVERIFY2(dialog.isVisible() && problem->isVisible(), "what the table does not have keeps the question");
      QVERIFY(problem->text().contains("no field \"DEPTH\"; the fields are NAME, 2020"));
      text->setText("{NAME}!");
      Control<QComboBox>(dialog, "cboHeight").setCurrentIndex(1);
      Control<QComboBox>(dialog, "cboAngle").setEditText("45");
      Control<QComboBox>(dialog, "cboColour").setCurrentIndex(2);
      Press(dialog, "cmdCont");
    });
    QCOMPARE(result, int(QDialog::Accepted));
    QCOMPARE(selection.TextField(), "{NAME}!");
    QCOMPARE(selection.Look().height, "{2020}");
    QCOMPARE(selection.Look().angle, "45");
    QVERIFY2(selection.Look().colour.empty(), "(None) is no colour field");
  }

  void FieldNamesOfAnyBytes() {
    const std::string latin =
                          "STRA\xDF"
                          "E",
                      utf8 =
                          "STRA\xC3\x9F"
                          "E";
    MadeUpTable table({latin, utf8, "<b>&x"}, 1);
    for (const std::string& name : {latin, utf8, std::string("<b>&x")}) {
      FieldSelection selection;
      selection.Create(table);
      fDBFSel dialog(selection);
      auto* layers = &Control<QComboBox>(dialog, "cboLayer");
      QCOMPARE(Items(*layers), QStringList({"STRAßE", "STRAßE", "<b>&x"}));
      layers->setCurrentIndex(table.GetFieldNum(name));
      QCOMPARE(selection.LayerField(), name);
    }
  }

  void ATableThatCannotBeRead() {
    MadeUpTable table({"A", "B"}, -1);
    FieldSelection selection;
    selection.Create(table);
    fDBFSel dialog(selection);
    dialog.show();
    Control<QComboBox>(dialog, "cboLayer").setCurrentIndex(0);
    QCOMPARE(TextOf(dialog, "lblProblem"), "the table cannot tell");
    QVERIFY(Control<QLabel>(dialog, "lblProblem").isVisible());
    QVERIFY(!Control<QListView>(dialog, "lstEntries").isVisible());
    Press(dialog, "cmdCont");
    QVERIFY2(!Control<QLabel>(dialog, "lblProblem").isVisible(), "the second question has no values");
    Press(dialog, "cmdCont");
    QVERIFY(!dialog.isVisible());
  }

  void ChoosingGoesOnWhileValuesAreLoaded() {
    for (const QString action : {"choose", "continue twice", "close", "cancel"}) {
      MadeUpTable table({"A", "B"}, 8'000'000);
      FieldSelection selection;
      selection.Create(table);
      fDBFSel dialog(selection);
      auto* layers = &Control<QComboBox>(dialog, "cboLayer");
      auto* entries = &Control<QListView>(dialog, "lstEntries");
      bool seen = false;
      QTimer watch;
      connect(&watch, &QTimer::timeout, [&] {
        auto* scan = dialog.findChild<frmDBFScan*>();
        if (seen || scan == nullptr || !scan->isVisible()) return;
        seen = true;
        QCOMPARE(scan->windowTitle(), "Loading...");
        QCOMPARE(TextOf(*scan, "lblLoading"), "Loading Database...");
        QVERIFY(Control<QProgressBar>(*scan, "Progress").value() < 100);
        QVERIFY2(!scan->close(), "it has no way to cancel");
        if (action == "choose") layers->setCurrentIndex(1);
        if (action == "close") QVERIFY(!dialog.close());
        if (action == "cancel") {
          PressOnTop("Yes");
          Press(dialog, "cmdCancel");
        }
        for (int i = 0; action == "continue twice" && i < 2; ++i) Press(dialog, "cmdCont");
      });
      watch.start(1);
      QTimer::singleShot(0, &dialog, [&] {
        layers->setCurrentIndex(0);
        // The values were loaded, or the loading was given up, when the choice returns.
        QVERIFY(dialog.findChild<frmDBFScan*>() == nullptr);
        const bool goneOn = action == "continue twice" || action == "cancel";
        QCOMPARE(entries->isVisible(), !goneOn);
        if (goneOn) return;
        QCOMPARE(entries->model()->index(2, 0).data().toString(), action == "choose" ? "B2" : "A2");
        Press(dialog, "cmdCont");
        Press(dialog, "cmdCont");
      });
      QCOMPARE(dialog.exec(), int(action == "cancel" ? QDialog::Rejected : QDialog::Accepted));
      QVERIFY2(seen, "a progress window shows what takes long");
      QCOMPARE(table.passes, action == "choose" ? 2 : 1);
      QCOMPARE(selection.LayerField(), action == "choose" ? "B" : "A");
      QCOMPARE(selection.CurrentStep(),
               action == "cancel" ? FieldSelection::Step::LayerField : FieldSelection::Step::Done);
    }
  }

  void Points() {
    frmPoint dialog;
    QCOMPARE(dialog.windowTitle(), "Point Entities Found in the Input File");
    QVERIFY(!dialog.Created());
    QVERIFY(dialog.SecondFile());
    const QString text = TextOf(dialog, "lblExplanation");
    QVERIFY(text.startsWith("Point entities were found in the input file. A Point entity may represent a well, "));
    QVERIFY(text.contains("it is therefore necessare to create") && text.endsWith("but with the extention of .pts."));
    const auto* contact = &Control<QLabel>(dialog, "lblContact");
    QVERIFY(TextOf(dialog, "lblContact").endsWith("https://github.com/tesselink/tesselink/issues."));
    QVERIFY(contact->openExternalLinks() && contact->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));

    WhenSeen(dialog, [&] {
      QVERIFY(dialog.isModal());
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    });
    QCOMPARE(dialog.Create(), int(QDialog::Accepted));
    QVERIFY(dialog.Created());
    QVERIFY(!dialog.SecondFile());
    QVERIFY(Control<QRadioButton>(dialog, "OptIgnore").isChecked());
    QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
    QCOMPARE(AskChoice({"points", {"second-file", "ignore"}}, nullptr), std::size_t{0});
    QCOMPARE(Run(dialog, [&] { dialog.close(); }), int(QDialog::Rejected));
    QCOMPARE(Run(dialog, [&] { QTest::keyClick(&dialog, Qt::Key_Escape); }), int(QDialog::Rejected));
  }

  void ShapeTypes() {
    for (const ShapeKind kind : {ShapeKind::PointsOrText, ShapeKind::Polyline}) {
      frmESRIType dialog;
      QCOMPARE(dialog.windowTitle(), "ESRI Shape File Type");
      dialog.Preset(kind);
      QCOMPARE(Run(dialog, [&] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); }),
               int(QDialog::Accepted));
      QCOMPARE(dialog.Kind(), kind);
    }
    for (std::size_t preset = 0; preset < 4; ++preset) {
      QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
      const ChoiceQuestion question{"shape-type", {"points", "polylines", "polygons", "multipoints"}, preset};
      QCOMPARE(AskChoice(question, nullptr), preset);
    }
    frmESRIType dialog;
    QCOMPARE(dialog.findChildren<QRadioButton*>().size(), qsizetype{2});
    dialog.show();
    QTest::mouseClick(&Control<QRadioButton>(dialog, "optPolyline"), Qt::LeftButton, {}, {8, 8});
    QCOMPARE(dialog.Kind(), ShapeKind::Polyline);
    QTest::mouseClick(&Control<QRadioButton>(dialog, "optPoint"), Qt::LeftButton, {}, {8, 8});
    QCOMPARE(dialog.Kind(), ShapeKind::PointsOrText);
    QCOMPARE(Run(dialog, [&] { dialog.close(); }), int(QDialog::Rejected));
  }

  void GridFieldsGuessed() {
    const std::pair<QStringList, QStringList> cases[] = {
        {{"ID", "SECTION", "RANGE", "TOWNSHIP"}, {"TOWNSHIP", "RANGE", "SECTION"}},
        {{"Sec", "Twp", "Rge"}, {"Twp", "Rge", "Sec"}},
        {{"T", "R", "S"}, {"T", "R", "S"}},
        {{"TWNSHPNO", "RANGENO", "SECTNO"}, {"TWNSHPNO", "RANGENO", "SECTNO"}},
        {{"TWPDIR", "TWP", "RNGDIR", "RNG", "SECID", "SEC"}, {"TWP", "RNG", "SEC"}},
        {{"TEXT", "RED", "SIZE"}, {"", "", ""}}};
    for (const auto& [names, guesses] : cases) {
      std::vector<TableField> fields;
      for (const QString& name : names) fields.push_back({name.toStdString(), 4});
      fTRDig dialog(Put("grid.dbf", Table(fields, {})));
      for (const int i : {0, 1, 2}) {
        const auto* list = &Control<QComboBox>(dialog, std::vector{"Twp", "Rge", "Sec"}[static_cast<std::size_t>(i)]);
        QCOMPARE(list->currentText(), guesses[i]);
        QCOMPARE(Items(*list), names);
      }
    }
  }

  void GridTableChosen() {
    const std::string first = Put("a.dbf", Table({{"TWP", 4}, {"RGE", 4}, {"NR", 4}}, {}));
    const std::string second = Put("b.dbf", Table({{"NR", 4}, {"SEC", 4}, {"T\xC4", 4}, {"R", 4}}, {}));
    fTRDig dialog(first);
    QCOMPARE(dialog.windowTitle(), "Locate Township and Range Fields");
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    const auto problem = [&] { return TextOf(dialog, "lblProblem"); };
    QCOMPARE(problem(), "Choose the field that holds the section.");
    auto* section = &Control<QComboBox>(dialog, "Sec");
    section->setCurrentText(" nr ");
    QCOMPARE(problem(), "");
    QCOMPARE(dialog.Fields().fields[2], "NR");
    section->setCurrentText("NUMBER");
    QCOMPARE(problem(), "The table has no field \"NUMBER\". Choose the field that holds the section.");
    Press(dialog, "cmdCont");
    QVERIFY(dialog.isVisible());
    QVERIFY(section->hasFocus());
    section->setCurrentText("NR");

    const auto browse = [&](const QString& path, bool choose) {
      QTimer::singleShot(0, &dialog, [=] {
        auto* files = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        QVERIFY(files != nullptr);
        QCOMPARE(files->objectName(), "Dialog");
        QCOMPARE(files->directory().canonicalPath(), QFileInfo(path).canonicalPath());
        Control<QLineEdit>(*files, "fileNameEdit").setText(path);
        choose ? static_cast<QDialog*>(files)->accept() : files->reject();
      });
      Press(dialog, "cmdTable");
    };
    browse(folder_.filePath("b.dbf"), false);
    QCOMPARE(dialog.Fields().table, first);
    browse(folder_.filePath("b.dbf"), true);
    QCOMPARE(Control<QLineEdit>(dialog, "txtTable").text(), folder_.filePath("b.dbf"));
    QCOMPARE(section->currentText(), "NR");
    QCOMPARE(Control<QComboBox>(dialog, "Rge").currentText(), "R");
    Control<QComboBox>(dialog, "Twp").setCurrentText("tä");
    dialog.hide();
    QCOMPARE(Run(dialog, [&] { Press(dialog, "cmdCont"); }), int(QDialog::Accepted));
    const TableFields found = dialog.Fields();
    QCOMPARE(found.table, second);
    QCOMPARE(found.fields, (std::vector<std::string>{"T\xC4", "R", "NR"}));
  }

 private:
  std::string Put(const char* name, const std::string& bytes) const {
    const std::string path = folder_.filePath(name).toStdString();
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }
  QTemporaryDir folder_;
};

}  // namespace tesselink

QTEST_MAIN(tesselink::DialogsTest)
#include "DialogsTest.moc"
