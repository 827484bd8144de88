// SPDX-License-Identifier: MIT
// The questions of whole runs: each can end its run without harm, and what could not be found or remembered is told.
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include "app/SettingsFiles.h"
#include "formats/Formats.h"
#include "support/MemorySettings.h"
#include "support/Shapes.h"
#include "ui/Answers.h"
#include "ui/MainWindow.h"
#include "ui/QtInteraction.h"

namespace tesselink {
namespace {

constexpr const char* kOld = "what was there before";
constexpr const char* kOfUnix = "METAFILE,Q,F,1,0,0\nLINE, , , , ,BLACK\nXY,1,2\nXY,3,4\n";
constexpr const char* kLineThenPoint =
    "0\r\nSECTION\r\n2\r\nENTITIES\r\n0\r\nLINE\r\n8\r\nA\r\n10\r\n0\r\n20\r\n0\r\n11\r\n1\r\n21\r\n1\r\n"
    "0\r\nPOINT\r\n8\r\nA\r\n10\r\n5\r\n20\r\n5\r\n0\r\nENDSEC\r\n0\r\nEOF\r\n";

struct Desk {
  explicit Desk(Settings& settings) : window(AllFormats(), settings, {.programFolder = TESSELINK_DATA_FOLDER}) {
    window.show();
  }
  ~Desk() { QCOMPARE(person.Complaint(), QString()); }
  QString Put(const QString& name, const QByteArray& bytes) const {
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) < 0) qFatal("no room");
    return file.fileName();
  }
  QByteArray Bytes(const QString& name) const {
    QFile file(folder.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  QStringList Files() const {
    return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  }
  void Convert(const QString& input, const QString& output) {
    for (const auto& [box, path] : {std::pair{"Infile", input}, {"OutFile", folder.filePath(output)}}) {
      Control<QLineEdit>(window, box).clear();
      QTest::keyClicks(&Control<QLineEdit>(window, box), path);
    }
    Control<QPushButton>(window, "cmdApply").click();
  }

  QTemporaryDir folder;
  MainWindow window;
  Answers person;
};

struct Question {
  QString input, output;                           // the input is an example, or a file of the desk
  QString title;                                   // of the window that asks
  QStringList before = {};                         // windows that are continued before
  bool asks = false;                               // whether to end the run
  std::function<void(QWidget&)> choose = nullptr;  // before it is cancelled
  bool replaces = true;
};

}  // namespace

class QuestionsTest : public QObject {
  Q_OBJECT

 private slots:
  void EveryQuestionCanEndTheRun() {
    const QString layers = "Layer Name Matching";
    const auto chooseType = [](QWidget& dialog) { Control<QComboBox>(dialog, "cboCode0").setCurrentIndex(1); };
    const Question questions[] = {
        {"wells.shp", "out.dxf", "DBF Fields", {}, true},
        {"quarter-section.asc", "out.cdf", layers},
        {"quarter-section.asc", "out.cdf", layers, {}, true, chooseType},
        {"mixed.dxf", "out.cdf", "Point Entities Found"},
        {"quarter-section.asc", "out.shp", "ESRI Shape File Type", {layers}},
        {"quarter-section.shp", "out.grd", "Locate Township and Range Fields"},
        {"unix.asc", "out.dxf", "Problem with Input"},
        {"empty.shp", "out.shp", "ESRI Shape File Type", {}, false, nullptr, false},
    };
    for (const Question& question : questions) {
      MemorySettings settings;
      Desk desk(settings);
      desk.Put("unix.asc", kOfUnix);
      desk.Put("mixed.dxf", kLineThenPoint);
      const ShapeFile empty({});
      desk.Put("empty.shp", QByteArray::fromStdString(empty.shp));
      desk.Put("empty.shx", QByteArray::fromStdString(empty.shx));
      if (question.replaces) {
        desk.Put(question.output, kOld);
        desk.person.Press("exists already", "Yes");
      }
      const QStringList files = desk.Files();
      const QString example = QStringLiteral(TESSELINK_EXAMPLES "/") + question.input;
      if (question.input == "empty.shp") desk.person.Press("Could not find file", "OK");
      for (const QString& title : question.before) desk.person.Press(title, "Continue");
      desk.person.Do(question.title, [&](QWidget& dialog) {
        if (question.choose) question.choose(dialog);
        for (auto* button : dialog.findChildren<QPushButton*>()) {
          if (button->text().remove('&') == "Cancel") return button->click();
        }
      });
      if (question.asks) desk.person.Press("End the conversion?", "Yes");
      desk.person.Do("Progress...", [](QWidget& dialog) { Control<QPushButton>(dialog, "cmdDone").click(); });
      desk.Convert(QFile::exists(example) ? example : desk.folder.filePath(question.input), question.output);
      QVERIFY2(desk.Files() == files, qPrintable(question.title + ": " + desk.Files().join(' ')));
      if (question.replaces) QCOMPARE(desk.Bytes(question.output), QByteArray(kOld));
      QCOMPARE(desk.Bytes("unix.asc"), QByteArray(kOfUnix));
      QVERIFY2(settings.All("Tesselink", "XRef").empty() == question.before.isEmpty(), "only Continue remembers pairs");
      QVERIFY(Control<QPushButton>(desk.window, "cmdApply").isEnabled());
    }
  }

  void ALostListIsLookedFor() {
    const QTemporaryDir folder;
    const QString path = folder.filePath("$cdf.map");
    if (QFile file(path); !file.open(QIODevice::WriteOnly)) qFatal("no room");
    QWidget window;
    QtInteraction interaction(window);
    Answers person;
    const TextQuestion question{"Error Finding $CDF.MAP", "Could Not locate $CDF.MAP\r\n\r\nPlease type", "$CDF.MAP",
                                "/a/$CDF.MAP: does not exist"};
    person.Do("Error Finding $CDF.MAP", [&](QWidget& box) {
      QCOMPARE(Control<QLabel>(box, "lblPrompt").text(), "Could Not locate $CDF.MAP\n\nPlease type");
      QCOMPARE(Control<QLabel>(box, "lblReasons").text().remove(QChar(0x200b)), "/a/$CDF.MAP: does not exist");
      auto& answer = Control<QLineEdit>(box, "txtAnswer");
      QCOMPARE(answer.text(), "");
      answer.setText(folder.path() + "/");
      Control<QPushButton>(box, "cmdBrowse").click();
      QCOMPARE(answer.text(), path);
      QTest::keyClick(&answer, Qt::Key_Return);
    });
    person.Do("Browsing...", [&](QWidget& dialog) {
      auto& files = dynamic_cast<QFileDialog&>(dialog);
      QCOMPARE(files.directory().path(), folder.path());
      Control<QLineEdit>(files, "fileNameEdit").setText("$cdf.map");
      QMetaObject::invokeMethod(&files, "accept");
    });
    QCOMPARE(interaction.AskText(question), path.toStdString());
    person.Press("Error Finding $CDF.MAP", "Cancel");
    QCOMPARE(interaction.AskText(question), "");
    QCOMPARE(person.Complaint(), QString());
  }

  void SaysOnceThatNothingIsRemembered() {
    const QTemporaryDir folder;
    if (QFile file(folder.filePath("no-folder")); !file.open(QIODevice::WriteOnly)) qFatal("no room");
    SettingsFiles settings(folder.filePath("no-folder/settings").toStdString());
    Desk desk(settings);
    for (const bool first : {true, false}) {
      desk.person.Press("Layer Name Matching", "Continue");
      if (first) desk.person.Press("Your answers are not remembered for the next time.", "OK");
      desk.Convert(QStringLiteral(TESSELINK_EXAMPLES "/quarter-section.asc"), first ? "a.dxf" : "b.dxf");
      QVERIFY(!desk.Bytes(first ? "a.dxf" : "b.dxf").isEmpty());
    }
  }
};

}  // namespace tesselink

QTEST_MAIN(tesselink::QuestionsTest)
#include "QuestionsTest.moc"
