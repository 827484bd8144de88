// SPDX-License-Identifier: MIT
#include "ui/WheelGuard.h"

#include <QComboBox>
#include <QEvent>

namespace tesselink {
namespace {

class WheelGuard final : public QObject {
 public:
  explicit WheelGuard(QComboBox& list) : QObject(&list), list_(list) {}

 private:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Wheel || list_.hasFocus()) return QObject::eventFilter(watched, event);
    event->ignore();
    return true;
  }
  QComboBox& list_;
};

}  // namespace

void GuardFromWheel(QComboBox& list) {
  list.setFocusPolicy(Qt::StrongFocus);
  list.installEventFilter(new WheelGuard(list));
}

}  // namespace tesselink
