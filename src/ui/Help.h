// SPDX-License-Identifier: MIT
// The manual of the window and what there is to say of the program.
#pragma once

#include <QDialog>

namespace tesselink {

/// The pages that come with the program, in a window beside the others.
class HelpWindow final : public QDialog {
  Q_OBJECT
 public:
  explicit HelpWindow(QWidget* parent);
};

/// Version, licence, and what the program is built on.
class AboutBox final : public QDialog {
  Q_OBJECT
 public:
  explicit AboutBox(QWidget* parent);
};

}  // namespace tesselink
