// SPDX-License-Identifier: MIT
// A person in front of the screen: answers the modal windows that come up while a test's own call blocks.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>
#include <algorithm>
#include <deque>
#include <functional>
#include <vector>

namespace tesselink {

/// The answers are given in the order in which they were announced. Every window that comes otherwise than announced is
/// closed, and stands in Complaint().
class Answers {
 public:
  Answers() {
    QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
    timer_.start(2);
  }

  /// Presses a button, by its caption, of the next modal window; that window's title or text contains `says`.
  void Press(const QString& says, const QString& button) {
    Do(says, [this, button](QWidget& window) {
      for (auto* candidate : window.findChildren<QAbstractButton*>()) {
        if (candidate->text().remove('&') == button) return candidate->click();
      }
      Complain("no button \"" + button + "\" in " + Words(window));
      Close(window);
    });
  }
  /// Does something with the next modal window, which is to end it.
  void Do(const QString& says, std::function<void(QWidget& window)> action) {
    expected_.push_back({says, std::move(action)});
  }

  /// Does something with every modal window that says this, however many come, at any time.
  void Whenever(const QString& says, std::function<void(QWidget& window)> action) {
    always_.insert(always_.begin(), {says, std::move(action)});  // the last one holds
  }

  /// What was asked and not announced, or announced and not asked; empty when all went as announced.
  QString Complaint() const {
    return expected_.empty() ? complaints_ : complaints_ + "nobody asked \"" + expected_.front().says + "\"\n";
  }

  /// The title and every text of a window.
  static QString Words(const QWidget& window) {
    QString words = window.windowTitle();
    for (const auto* label : window.findChildren<QLabel*>()) words += "\n" + label->text();
    return words;
  }

 private:
  struct Expected {
    QString says;
    std::function<void(QWidget&)> action;
  };

  void Look() {
    QWidget* window = QApplication::activeModalWidget();
    if (window == nullptr || Answered(window)) return CloseWhatStays(window);
    answered_.emplace_back(window);
    answeredAt_.start();
    const auto action = ActionFor(*window);
    // Not from within the timer, which would rest while the action opens a further window.
    QTimer::singleShot(0, window, [window, action] { action(*window); });
  }

  std::function<void(QWidget&)> ActionFor(const QWidget& window) {
    const QString words = Words(window);
    for (const Expected& standing : always_) {
      if (words.contains(standing.says)) return standing.action;
    }
    if (expected_.empty() || !words.contains(expected_.front().says)) {
      Complain("unexpected: " + words);
      return &Close;
    }
    const auto action = std::move(expected_.front().action);
    expected_.pop_front();
    return action;
  }
  // An answer that did not end its window would leave the test waiting.
  void CloseWhatStays(QWidget* window) {
    constexpr int kPatience = 5000;
    if (window == nullptr || answeredAt_.elapsed() < kPatience) return;
    Complain("stayed open: " + Words(*window));
    Close(*window);
  }
  bool Answered(const QWidget* window) const {
    return std::any_of(answered_.begin(), answered_.end(), [&](const auto& a) { return a == window; });
  }
  void Complain(const QString& what) { complaints_ += what + "\n"; }
  static void Close(QWidget& window) {
    if (auto* dialog = qobject_cast<QDialog*>(&window)) dialog->done(QDialog::Rejected);
  }

  QTimer timer_;
  std::deque<Expected> expected_;
  std::vector<Expected> always_;
  std::vector<QPointer<QWidget>> answered_;
  QElapsedTimer answeredAt_;
  QString complaints_;
};

/// Presses a button, by its caption, of the window that comes up next, on top of one that is answered already.
inline void PressOnTop(const QString& button) {
  QTimer::singleShot(0, [button] {
    for (auto* candidate : QApplication::activeModalWidget()->findChildren<QAbstractButton*>()) {
      if (candidate->text().remove('&') == button) return candidate->click();
    }
    qFatal("no button %s", qPrintable(button));
  });
}

/// A control by its name; the test fails when there is none.
template <typename T>
T& Control(const QWidget& window, const QString& name) {
  auto* control = window.findChild<T*>(name);
  if (control == nullptr) qFatal("no control %s", qPrintable(name));
  return *control;
}

}  // namespace tesselink
