// SPDX-License-Identifier: MIT
// A run in the window: progress, cancelling at any moment, failures, and a window that is whole again afterwards.
#include "ui/frmProgress.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDesktopServices>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QUrl>

#include "support/MemorySettings.h"
#include "ui/Answers.h"
#include "ui/MainWindow.h"
#include "ui/Pace.h"
#include "ui/QtInteraction.h"
#include "ui/Scene.h"

namespace tesselink {
namespace {

constexpr const char* kSure = "Are you sure you want to cancel?";

// A window over formats of the scene, with both paths filled in.
struct Stage {
  explicit Stage(Scene wanted = {}) : scene(std::move(wanted)) {
    QFile file(folder.filePath("in.scn"));
    if (!file.open(QIODevice::WriteOnly)) qFatal("no room");
    Control<QLineEdit>(window, "Infile").setText(folder.filePath("in.scn"));
    Control<QLineEdit>(window, "OutFile").setText(folder.filePath("out.scn"));
    window.show();
  }
  ~Stage() { QCOMPARE(person.Complaint(), QString()); }
  void Run() {
    QFile::remove(folder.filePath("out.scn"));  // of the run before, which would be asked about
    Control<QPushButton>(window, "cmdApply").click();
  }
  frmProgress& Progress() const { return Control<frmProgress>(window, "frmProgress"); }
  QString Text(const char* label) const { return Control<QLabel>(Progress(), label).text(); }
  QString Summary() const { return Control<QTextBrowser>(Progress(), "Summary").toPlainText(); }
  QString Headline() const { return Text("Headline"); }
  bool DoneShown() const { return Control<QPushButton>(Progress(), "cmdDone").isVisible(); }
  // Presses a button of the progress window at the run's next yield.
  void PressSoon(const char* button) {
    QTimer::singleShot(0, &Progress(), [this, button] { Control<QPushButton>(Progress(), button).click(); });
  }
  // What the window shows of a run; nothing when all controls are at the person's disposal.
  QStringList Blocked() const {
    QStringList names;
    for (const auto* control : window.findChildren<QWidget*>()) {
      if (!control->isEnabled() && control->window() == &window) names.append(control->objectName());
    }
    if (window.cursor().shape() == Qt::WaitCursor) names.append("the pointer");
    return names;
  }

  QTemporaryDir folder;
  MemorySettings settings;
  Scene scene;
  FormatTable formats = SceneFormats(scene);
  MainWindow window{formats, settings};
  Answers person;
};

}  // namespace

class ProgressTest : public QObject {
  Q_OBJECT

 private slots:
  void ShowsWhereTheRunStands() {
    const frmProgress fresh;
    QCOMPARE(fresh.windowTitle(), QString("Progress..."));
    for (const auto& [name, caption] : std::map<const char*, const char*>{
             {"MinX", "99999999999"}, {"MinY", "999999999999"}, {"MaxX", "-99999999999"}, {"MaxY", "-999999999999"}}) {
      QCOMPARE(Control<QLabel>(fresh, name).text(), QString(caption));
    }
    QCOMPARE(Control<QPushButton>(fresh, "cmdCancel").text(), QString("&Cancel"));
    QVERIFY(!fresh.CancelRequest);

    Stage stage({.elements = 100'003});
    stage.Run();
    QCOMPARE(stage.Text("MinX"), QString("1000.25"));
    QCOMPARE(stage.Text("MaxX"), QString("100028000."));
    QCOMPARE(stage.Text("MinY"), QString("-250007.5"));
    QCOMPARE(stage.Text("MaxY"), QString("-2.5"));
    QCOMPARE(stage.Text("lblElements"), QString("100,003 elements read"));
    QCOMPARE(Control<QProgressBar>(stage.Progress(), "Gauge").value(), 100);
    QVERIFY(stage.DoneShown() && !stage.Progress().isModal());
    QCOMPARE(stage.Headline(), QString("Done"));
    QVERIFY(stage.Summary().contains("100,003 elements written"));
    QCOMPARE(stage.Summary().count("out.scn"), 1);
    QTest::keyClick(&stage.Progress(), Qt::Key_Escape);
    QVERIFY(!stage.Progress().isVisible());
  }

  void BlocksTheWindowWhileItRuns() {
    Stage stage({.elements = 60, .pause = 1});
    int runs = 0;
    QStringList blocked;
    QString input;
    stage.scene.before = [&](int number) {
      runs += number == 1;
      if (number != 20) return;
      blocked = stage.Blocked();
      QTimer::singleShot(0, &stage.window, [&] {
        stage.Run();
        QTest::keyClick(&stage.window, Qt::Key_A, Qt::AltModifier);
        stage.window.TakeFiles({"other.scn"});
        input = Control<QLineEdit>(stage.window, "Infile").text();
      });
    };
    QSignalSpy told(&stage.window, &MainWindow::runningChanged);
    Control<QPushButton>(stage.window, "cmdApply").setFocus();
    stage.Run();
    for (const char* name : {"InFormat", "Infile", "BrowseIn", "OutFormat", "OutFile", "BrowseOut", "cmdApply",
                             "cmdCancel", "forFiles", "lblSelected", "fIO", "format", "lblTitle", "the pointer"}) {
      QVERIFY2(blocked.contains(name), name);
    }
    QVERIFY(!blocked.contains("Line"));
    QCOMPARE(input, stage.folder.filePath("in.scn"));
    QCOMPARE(runs, 1);
    QCOMPARE(told, (QList<QVariantList>{{true}, {false}}));
    QCOMPARE(stage.Blocked(), QStringList());
    QVERIFY(stage.window.focusWidget() == &Control<QPushButton>(stage.window, "cmdApply"));

    QPointer<frmProgress> first = &stage.Progress();
    stage.scene.before = nullptr;
    stage.Run();
    QVERIFY(first.isNull());
    QVERIFY(stage.Summary().contains("60 elements written"));
    stage.window.close();
    QVERIFY(!stage.Progress().isVisible());
  }

  void GoesOnWhenTheCancelIsNotConfirmed() {
    Stage stage({.elements = 60, .pause = 1});
    stage.scene.before = [&](int number) {
      if (number == 10 || number == 30) stage.PressSoon("cmdCancel");
    };
    stage.person.Do(kSure, [](QWidget& window) {
      auto& box = dynamic_cast<QMessageBox&>(window);
      QCOMPARE(box.windowTitle(), QString("Cancel"));
      QCOMPARE(box.icon(), QMessageBox::Question);
      QCOMPARE(box.defaultButton(), box.button(QMessageBox::No));
      QTest::keyClick(&box, Qt::Key_Escape);
    });
    stage.person.Press(kSure, "No");
    stage.Run();
    QCOMPARE(stage.scene.written, 60);
    QVERIFY(!stage.Progress().CancelRequest);
  }

  void StopsAtAConfirmedCancel() {
    for (const int at : {1, 200, 385}) {
      Stage stage({.elements = 400, .pause = 1});
      bool done = false;
      stage.scene.before = [&](int number) {
        if (number != at) return;
        QThread::msleep(20);
        if (number == 1) {  // the window of the progress comes up with this element
          QTimer::singleShot(0, [&stage] { stage.PressSoon("cmdCancel"); });
        } else {
          stage.PressSoon("cmdCancel");
        }
      };
      stage.person.Press(kSure, "Yes");
      stage.person.Do("Progress...", [&](QWidget& window) {
        done = stage.DoneShown() && window.isModal() && !Control<QPushButton>(window, "cmdCancel").isVisible();
        QVERIFY(stage.Blocked().contains("cmdApply"));
        QCOMPARE(stage.Headline(), QString("Cancelled"));
        QVERIFY(stage.Summary().contains(QString("it holds %1 element").arg(stage.scene.written)));
        Control<QPushButton>(window, "cmdDone").click();
      });
      stage.Run();
      QVERIFY(done);
      QVERIFY(stage.scene.written >= at && stage.scene.written < at + 200);
      QVERIFY(!stage.Progress().isVisible());
      QCOMPARE(stage.Blocked(), QStringList());
    }
  }

  void EscapeAsksInTheMainWindowToo() {
    Stage stage({.elements = 400, .pause = 1});
    stage.scene.before = [&](int number) {
      if (number == 10) QTimer::singleShot(0, &stage.window, [&] { QTest::keyClick(&stage.window, Qt::Key_Escape); });
    };
    stage.person.Press(kSure, "Yes");
    stage.person.Do("Progress...", [](QWidget& window) { window.close(); });
    stage.Run();
    QVERIFY(stage.scene.written < 400);
    QTest::keyClick(&stage.window, Qt::Key_Escape);  // there is nothing left to cancel
  }

  void CloseBoxesAsk() {
    for (const bool ofMainWindow : {false, true}) {
      Stage stage({.elements = 400, .pause = 1});
      bool stayed = true;
      stage.scene.before = [&](int number) {
        if (number != 10 && number != 100) return;
        QTimer::singleShot(0, &stage.Progress(), [&] {
          QWidget& window = ofMainWindow ? static_cast<QWidget&>(stage.window) : stage.Progress();
          window.close();
          stayed = stayed && window.isVisible();
        });
      };
      stage.person.Press(kSure, "No");
      stage.person.Press(kSure, "Yes");
      stage.person.Do("Progress...", [](QWidget& window) { window.close(); });
      stage.Run();
      QVERIFY(stayed);
      // The main window closes when the run is done, since that is what was asked of it.
      QCOMPARE(stage.window.isVisible(), !ofMainWindow);
      QVERIFY(!stage.Progress().isVisible());
    }
  }

  void StopsAScan() {
    Stage stage({.scanSteps = 40});
    QString shown;
    QTimer::singleShot(500, &stage.window, [&] {
      auto& scan = Control<QDialog>(stage.window, "FrmScan");
      shown = Answers::Words(scan);
      scan.close();
      shown += scan.isVisible() ? "" : " and gone";
    });
    stage.person.Press(kSure, "Yes");
    stage.person.Press("Progress...", "Done");
    stage.Run();
    QCOMPARE(shown, QString("Scanning...\nScanning file for Layers..."));
    QCOMPARE(stage.scene.read, 0);
    QVERIFY(stage.Summary().startsWith("no output was written"));
    QVERIFY(Control<QWidget>(stage.Progress(), "Extents").isHidden());  // which hold nothing yet
  }

  void HintsAtAnInputWithoutEnd() {
    Stage stage({.endless = true});
    QString hint;
    QTimer::singleShot(100, &stage.window, [&] {
      hint = stage.Text("lblRemaining");
      stage.PressSoon("cmdCancel");
    });
    stage.person.Press(kSure, "Yes");
    stage.person.Press("Progress...", "Done");
    stage.Run();
    QVERIFY(hint.contains("repeats without end"));
  }

  void TellsFailures() {
    const std::tuple<int, int, QString, QString> cases[] = {
        {5, -1, "line 7: a number is expected", "it holds 4 elements"},
        {1, -1, "line 7: a number is expected", ""},
        {-1, 5, "no space left on the device", "no output was written"}};
    for (const auto& [readerFailsAt, writerFailsAt, message, account] : cases) {
      Stage stage({.readerFailsAt = readerFailsAt, .writerFailsAt = writerFailsAt});
      stage.person.Do(message, [](QWidget& window) {
        auto& box = dynamic_cast<QMessageBox&>(window);
        QCOMPARE(box.windowTitle(), QString("Error"));
        QCOMPARE(box.icon(), QMessageBox::Critical);
        box.accept();
      });
      stage.Run();
      QCOMPARE(stage.Progress().isVisible(), !account.isEmpty());
      QVERIFY(stage.Summary().contains(account));
      QCOMPARE(stage.Progress().isVisible() ? stage.Headline() : "Failed", QString("Failed"));
      QCOMPARE(stage.Blocked(), QStringList());
    }
  }

  void IsSilentAboutFurtherRecordsWhenTold() {
    Stage stage({.unhandledFrom = 5});
    stage.person.Press("Unhandled Data Type PointZ", "OK");
    stage.person.Do("Unhandled Data Type PointZ", [](QWidget& window) {
      dynamic_cast<QMessageBox&>(window).checkBox()->setChecked(true);
      dynamic_cast<QMessageBox&>(window).accept();
    });
    stage.Run();
    QVERIFY(stage.Summary().contains("6 of type PointZ"));
    // For that run only.
    stage.scene.unhandledFrom = 10;
    stage.person.Press("Unhandled Data Type PointZ", "OK");
    stage.Run();
  }

  void CopiesTheSummaryAndOpensWhatWasWritten() {
    QDesktopServices::setUrlHandler("file", this, "NoteUrl");
    const QByteArray path = qgetenv("PATH");
    for (const bool onDesktop : {true, false}) {
      Stage stage;
      if (onDesktop) {
        QFile launcher(stage.folder.filePath("xdg-open"));
        QVERIFY(launcher.open(QIODevice::WriteOnly) && launcher.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
      }
      qputenv("PATH", stage.folder.path().toUtf8());
      stage.Run();
      Control<QPushButton>(stage.Progress(), "cmdCopy").click();
      QCOMPARE(QApplication::clipboard()->text(), "Done\n" + stage.Summary());
      auto& page = Control<QTextBrowser>(stage.Progress(), "Summary");
      QCOMPARE(Control<QPushButton>(stage.Progress(), "cmdOpenFolder").isVisible(), onDesktop);
      QCOMPARE(page.toHtml().contains("href"), onDesktop);
      if (!onDesktop) continue;
      Control<QPushButton>(stage.Progress(), "cmdOpenFolder").click();
      QCOMPARE(opened_, QUrl::fromLocalFile(stage.folder.path() + '/'));
      page.setFocus();
      QTest::keyClick(&page, Qt::Key_Tab);
      QTest::keyClick(&page, Qt::Key_Return);
      QCOMPARE(opened_, QUrl::fromLocalFile(stage.folder.filePath("out.scn")));
    }
    qputenv("PATH", path);
    QDesktopServices::unsetUrlHandler("file");
  }

  // However long a person thinks, the time that remains is told from that of the run alone.
  void LeavesOutTheTimeOfQuestions() {
    constexpr int kThought = 700;  // twice that is more than the second after which a time is told
    Stage stage({.elements = 60, .unhandledFrom = 50});
    QString remaining = "none was shown";
    stage.scene.before = [&](int number) {
      if (number == 20) stage.PressSoon("cmdCancel");
      if (number > 1 && number < 40) QThread::msleep(5);
      if (number == 55) remaining = stage.Text("lblRemaining");
      if (number > 50) QThread::msleep(16);  // so that the window is drawn anew
    };
    const auto think = [](const char* button) {
      return [button](QWidget& window) {
        QTest::qWait(kThought);
        for (auto* candidate : window.findChildren<QAbstractButton*>()) {
          if (candidate->text().remove('&') == button) return candidate->click();
        }
      };
    };
    stage.person.Do(kSure, think("No"));
    stage.person.Do("Unhandled Data Type PointZ", [&](QWidget& window) {
      dynamic_cast<QMessageBox&>(window).checkBox()->setChecked(true);
      think("OK")(window);
    });
    stage.Run();
    QCOMPARE(remaining, QString());
  }

  void AsksInMessageBoxes() {
    const std::tuple<MessageButtons, QString, Answer> cases[] = {{MessageButtons::YesNoCancel, "Yes", Answer::Yes},
                                                                 {MessageButtons::YesNoCancel, "No", Answer::No},
                                                                 {MessageButtons::YesNoCancel, "", Answer::Cancel},
                                                                 {MessageButtons::YesNo, "", Answer::No}};
    for (const auto& [buttons, pressed, answer] : cases) {  // nothing pressed: a careless key
      QWidget window;
      QtInteraction interaction(window);
      Answers person;
      const QString text = "<b>one</b>\n\ntwo";
      if (pressed.isEmpty()) {
        person.Do(text, [](QWidget& box) { QTest::keyClick(&box, Qt::Key_Return); });
      } else {
        person.Press(text, pressed);
      }
      const Answer given = interaction.ShowMessage(
          {Topic::LineEnds, "<b>one</b>\r\n\r\ntwo", "Problem with Input", MessageIcon::Question, buttons});
      QVERIFY(given == answer);
      QCOMPARE(person.Complaint(), QString());
    }
  }

  // A clock that goes on by itself.
  void KeepsPace() {
    static Pace::Clock::time_point now;
    static int looks;
    const auto clock = [] {
      ++looks;
      return now;
    };
    const auto yeses = [&](int questions, Pace::Clock::duration each) {
      now = Pace::Clock::time_point(std::chrono::hours(1));
      looks = 0;
      Pace pace(std::chrono::milliseconds(15), clock);
      int count = 0;
      for (int i = 0; i < questions; ++i, now += each) {
        if (!pace.Due()) continue;
        ++count;
        pace.Restart();
      }
      return count;
    };
    // A tenth of a second of small elements: as often as the span allows, and the clock is hardly read.
    const int small = yeses(100'000, std::chrono::microseconds(1));
    QVERIFY2(small >= 6 && small <= 7, QByteArray::number(small).constData());
    QVERIFY2(looks < 100'000 / 15, QByteArray::number(looks).constData());
    // Elements that take longer than the span: every one.
    QCOMPARE(yeses(50, std::chrono::milliseconds(20)), 50);
  }

 public slots:
  void NoteUrl(const QUrl& url) { opened_ = url; }

 private:
  QUrl opened_;
};

}  // namespace tesselink

QTEST_MAIN(tesselink::ProgressTest)
#include "ProgressTest.moc"
