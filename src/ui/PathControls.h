// SPDX-License-Identifier: MIT
// What both frames of the main window are built of.
#pragma once

#include <QString>
#include <QStringList>

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QWidget;

namespace tesselink {

/// A drop-down, a box for a path and a button that browses; `meaning` is what a screen reader says, `keys` what stands
/// for the button besides, as in "Ctrl+O".
QComboBox* FormatBox(const char* name, const QString& meaning);
QLineEdit* PathBox(const char* name, const QString& meaning);
QPushButton* BrowseButton(const char* name, const QString& caption, const QString& meaning, const QString& keys = {});
/// A control's label; its underlined letter leads there.
QLabel* LabelFor(QWidget* control, const char* name, const QString& text);
/// Lets the columns of both frames begin at the same places.
void AlignColumns(QGridLayout& grid);
/// The entries of a drop-down.
QStringList EntriesOf(const QComboBox& box);

}  // namespace tesselink
