// SPDX-License-Identifier: MIT
// The matching of layers by hand: what each way of choosing and of closing hands back, and that every row is in reach.
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <fstream>
#include <memory>

#include "core/io/Errors.h"
#include "formats/cdf/LayerMatching.h"
#include "support/Lookups.h"
#include "support/Support.h"
#include "ui/Answers.h"
#include "ui/frmLayers.h"

namespace tesselink {
namespace {

using Texts = std::vector<std::string>;

Texts Layers(std::size_t count) {
  Texts layers;
  for (std::size_t i = 0; i < count; ++i) layers.push_back("LAYER " + std::to_string(i));
  return layers;
}

}  // namespace

class LayersDialogTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    settings = {};
    const std::string map = folder_.filePath("$CDF.MAP").toStdString();
    std::ofstream(map, std::ios::binary) << EntityTypes({{"0000001", "Road, paved"},
                                                         {"0000002", "Creek"},
                                                         {"0000003", "Well, oil"},
                                                         {"0000004", "Well, gas"},
                                                         {"0000005",
                                                          "Stra\xDF"
                                                          "e <b>"}});
    context.options.own.Set("cdf-map", map);
    matching = std::make_unique<LayerMatching>(context);
  }

  void cleanup() { dialog.reset(); }

  void RowsShowLayersAndRememberedTypes() {
    settings.Set("Tesselink", "XRef", "ROADS", "0000001");
    settings.Set("Tesselink", "XRef", "<b>A&B", "0000005");
    Open({"WELLS", "ROADS", "<b>A&B",
          "STRA\xDF"
          "E"},
         "AutoCAD DXF File Layer");
    QCOMPARE(dialog->windowTitle(), "Layer Name Matching");
    QCOMPARE(Control<QLabel>(*dialog, "lblDXFName").text(), "AutoCAD DXF File Layer");
    QCOMPARE(Control<QLabel>(*dialog, "lblCDFName").text(), "CDF Entity Type");
    for (const int row : {0, 1, 2, 3}) {
      const auto* label = &Control<QLabel>(*dialog, "LblLyrName" + QString::number(row));
      QCOMPARE(label->text(), QStringList({"WELLS", "ROADS", "<b>A&B", "STRAßE"})[row]);
      QCOMPARE(label->textFormat(), Qt::PlainText);
      QCOMPARE(List(row)->currentText(), QStringList({"", "Road, paved", "Straße <b>", ""})[row]);
      QCOMPARE(List(row)->count(), 5);
      QVERIFY2(List(row)->model() == List(0)->model(), "the rows share one list");
      QVERIFY(List(row)->accessibleName().endsWith(label->text()));
    }
    QCOMPARE(List(0)->itemText(3), "Well, gas");
    QCOMPARE(Control<QLabel>(*dialog, "lblCount").text(), "2 of 4 layers have an entity type");
    QVERIFY(dialog->findChild<QComboBox*>("cboCode4") == nullptr);
  }

  void EveryWayOutHandsBack() {
    for (const QString way : {"button", "close box", "Alt+O", "cancel"}) {
      init();
      Open({"A", "B", "C", "D", "E"});
      QTimer::singleShot(0, dialog.get(), [&] {
        QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
        QVERIFY(dialog->isModal());
        List(0)->setCurrentIndex(4);
        QTest::keyClicks(List(1), "Creek");
        QTest::keyClicks(List(2), "creek");
        List(3)->setCurrentIndex(2);
        List(3)->setEditText("");
        QCOMPARE(Control<QLabel>(*dialog, "lblCount").text(), "2 of 5 layers have an entity type");
        PressOnTop("No");
        QTest::keyClick(dialog.get(), Qt::Key_Escape);
        QVERIFY2(dialog->isVisible(), "Escape loses nothing");
        dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
        if (way == "cancel") {
          PressOnTop("Yes");
          Press("cmdCancel");
        }
        if (way == "button") Press("cmdDone");
        if (way == "close box") dialog->close();
        if (way == "Alt+O") QTest::keyClick(List(1), Qt::Key_O, Qt::AltModifier);
      });
      if (way == "cancel") {
        QVERIFY_THROWS_EXCEPTION(OperationCanceled, dialog->Match());
        QVERIFY(settings.All("Tesselink", "XRef").empty());
        continue;
      }
      QCOMPARE(dialog->Match(), Texts({"0000005", "0000002", "", "", ""}));
      QVERIFY(!dialog->isVisible());
      const auto remembered = settings.All("Tesselink", "XRef");
      QCOMPARE(remembered.size(), 5U);
      QCOMPARE(remembered.at("A"), "0000005");
      QCOMPARE(remembered.at("C"), "");
      cleanup();
    }
  }

  void TypesAreAssigned() {
    Open({"ROADS", "?", "GAS", "X", "Y", "Z"});
    List(1)->setEditText("typed");
    int busy = 0;
    connect(List(0)->lineEdit(), &QLineEdit::textChanged,
            [&] { busy += QApplication::overrideCursor() != nullptr ? 1 : 0; });
    dialog->show();
    Press("SmartAss");
    QCOMPARE(List(0)->currentText(), "Road, paved");
    QCOMPARE(List(0)->currentIndex(), 0);
    QCOMPARE(List(1)->currentText(), "typed");
    QCOMPARE(List(2)->currentText(), "Well, gas");
    QVERIFY2(busy > 0 && QApplication::overrideCursor() == nullptr, "the pointer is busy, and not for longer");
    List(0)->setEditText("");
    List(2)->setEditText("");
    Press("AssCodes");
    const QStringList expected{"Road, paved", "typed", "Well, oil", "Well, gas", "Straße <b>", ""};
    for (int row = 0; row < expected.size(); ++row) QCOMPARE(List(row)->currentText(), expected[row]);
    QCOMPARE(matching->Codes(), Texts({"0000001", "", "0000003", "0000004", "0000005", ""}));
  }

  void EveryRowIsInReach() {
    Open(Layers(51));
    QCOMPARE(person.messages.size(), 1U);
    person.messages.clear();
    Show();
    QVERIFY(dialog->findChild<QComboBox*>("cboCode50") == nullptr);
    const int pitch = Place(1).top() - Place(0).top();
    QVERIFY(InView(0) && !InView(49));

    const int top = Place(0).top();
    Press("SpinUp");
    QCOMPARE(Place(0).top(), top);
    Press("SpinDown");
    QCOMPARE(Place(0).top(), top - pitch);
    for (int i = 0; i < 60; ++i) Press("SpinDown");
    QVERIFY(InView(49) && !InView(0));
    for (int i = 0; i < 60; ++i) Press("SpinUp");
    QCOMPARE(Place(0).top(), top);

    List(2)->setCurrentIndex(1);
    QWheelEvent wheel({5, 5}, List(2)->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&wheel);
    qApp->notify(List(2), &wheel);
    QVERIFY2(Place(0).top() < top, "the wheel scrolls");
    QVERIFY2(List(2)->currentIndex() == 1, "and changes no row");

    List(0)->setFocus();
    for (int row = 1; row < 50; ++row) {
      QTest::keyClick(QApplication::focusWidget(), row % 2 == 0 ? Qt::Key_Tab : Qt::Key_Return);
      QVERIFY2(List(row)->hasFocus() && InView(row), qPrintable(QString::number(row)));
    }
    for (const char* button : {"AssCodes", "SmartAss", "cmdDone"}) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      QVERIFY2(Control<QPushButton>(*dialog, button).hasFocus(), button);
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY2(!dialog->isVisible(), "Enter presses the button that has the keyboard");
  }

  void TypingFindsTypes() {
    Open({"A", "B"});
    Show();
    QVERIFY2(List(0)->completer() != nullptr && List(1)->completer() == nullptr, "only what is used costs");
    QTest::keyClicks(List(0), "GAS");
    QAbstractItemView* found = List(0)->completer()->popup();
    QTRY_VERIFY(found->isVisible());
    QCOMPARE(found->model()->rowCount(), 1);
    QTest::keyClick(found, Qt::Key_Down);
    QTest::keyClick(found, Qt::Key_Return);
    QCOMPARE(List(0)->currentText(), "Well, gas");
    QVERIFY(dialog->isVisible());
    QCOMPARE(matching->Codes(), Texts({"0000004", ""}));
    QTest::keyClick(List(0), Qt::Key_Up);
    QCOMPARE(matching->Codes(), Texts({"0000003", ""}));

    List(0)->setEditText("");
    QTest::keyClicks(List(0), "WELL");
    QTRY_VERIFY(found->isVisible());
    const auto* mark = &Control<QLabel>(*dialog, "LblMark0");
    QVERIFY(mark->isVisible());
    QCOMPARE(Control<QLabel>(*dialog, "lblNote").text(),
             "\"WELL\" is no entity type, so this layer gets none. Return takes \"Well, oil\".");
    QTest::keyClick(found, Qt::Key_Return);
    QCOMPARE(List(0)->currentText(), "Well, oil");
    QVERIFY(!found->isVisible() && !mark->isVisible() && List(0)->hasFocus());
    QCOMPARE(Control<QLabel>(*dialog, "lblNote").text(), "");
    for (const char* text : {"eek", "nothing like it"}) {  // Return without the list of what was found
      List(0)->setEditText(text);
      QTest::keyClick(List(0), Qt::Key_Return);
    }
    QCOMPARE(List(0)->currentText(), "nothing like it");
    QVERIFY2(mark->isVisible() && List(1)->hasFocus(), "goes on, and stays marked");
  }

  void RowsAreFoundAgain() {
    Open({"ROADS", "WELLS OLD", "Wells new", "X"});
    Show();
    const auto seen = [&] {
      QString rows;
      for (const int row : {0, 1, 2, 3}) rows += List(row)->isVisible() ? QString::number(row) : "";
      return rows;
    };
    List(1)->setCurrentIndex(2);
    List(2)->setEditText("no such type");
    auto* filter = &Control<QLineEdit>(*dialog, "txtFilter");
    filter->setFocus();
    QTest::keyClicks(filter, "wells");
    QCOMPARE(seen(), "12");
    QCOMPARE(Control<QLabel>(*dialog, "lblShown").text(), "2 shown");
    QCOMPARE(Place(2).top() - Place(1).top(), List(1)->height() + List(1)->height() / 6);
    QTest::keyClick(filter, Qt::Key_Return);
    QVERIFY(List(1)->hasFocus());
    auto* without = &Control<QAbstractButton>(*dialog, "chkOnlyWithout");
    without->click();
    QCOMPARE(seen(), "2");
    filter->clear();
    QCOMPARE(seen(), "023");
    List(0)->setCurrentIndex(0);
    QCOMPARE(seen(), "023");
    without->click();
    QCOMPARE(seen(), "0123");
    QCOMPARE(matching->Codes(), Texts({"0000001", "0000003", "", ""}));
  }

  void ColumnsStandUnderTheirHeadings() {
    for (const std::size_t count : {2U, 40U}) {
      Open(Layers(count),
           QString("A heading that is longer than the column is wide, by far").repeated(3).toStdString());
      Show();
      for (const int width : {dialog->width(), dialog->width() + 333}) {
        dialog->resize(width, dialog->height());
        QCoreApplication::processEvents();
        for (const auto& [heading, cell] : {std::pair{"lblDXFName", "LblLyrName0"}, {"lblCDFName", "cboCode0"}}) {
          const auto* above = &Control<QWidget>(*dialog, heading);
          const auto* below = &Control<QWidget>(*dialog, cell);
          QCOMPARE(above->mapTo(dialog.get(), QPoint()).x(), below->mapTo(dialog.get(), QPoint()).x());
          QCOMPARE(above->width(), below->width());
        }
      }
      cleanup();
    }
  }

 private:
  void Open(const Texts& layers, const std::string& heading = {}) {
    matching->Create(layers, heading, "Tesselink");
    dialog = std::make_unique<frmLayers>(*matching);
  }
  QComboBox* List(int row) const { return &Control<QComboBox>(*dialog, "cboCode" + QString::number(row)); }
  void Press(const QString& button) const {
    QTest::mouseClick(&Control<QAbstractButton>(*dialog, button), Qt::LeftButton);
  }
  void Show() const {
    dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
  }
  // Where a row's list lies in the frame's window.
  QRect Place(int row) const {
    QWidget* window = Control<QScrollArea>(*dialog, "frame").viewport();
    return {List(row)->mapTo(window, QPoint()), List(row)->size()};
  }
  bool InView(int row) const { return Control<QScrollArea>(*dialog, "frame").viewport()->rect().contains(Place(row)); }

  QTemporaryDir folder_;
  std::unique_ptr<LayerMatching> matching;
  std::unique_ptr<frmLayers> dialog;
  ScriptedInteraction person;
  MemorySettings settings;
  Report report;
  FilterContext context{person, settings, report};
};

}  // namespace tesselink

QTEST_MAIN(tesselink::LayersDialogTest)
#include "LayersDialogTest.moc"
