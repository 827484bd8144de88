// SPDX-License-Identifier: MIT
// The matching of layer names to entity types.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "ui/TypeList.h"

class QCheckBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QScrollArea;

namespace tesselink {

class ElidedLabel;
class LayerMatching;

/// A thin face of a LayerMatching, which has its rows already. What a person chooses or types goes into it at once.
/// The close box is the same as the continue button. Cancel and Escape reject, and ask before when something was
/// chosen.
class frmLayers final : public QDialog {
  Q_OBJECT
 public:
  /// `codesMatter`: the output tells layers by the codes of their types; otherwise the dialog says that they are of no
  /// use to it.
  explicit frmLayers(LayerMatching& matching, QWidget* parent = nullptr, bool codesMatter = true);

  /// Shows the dialog modally and hands back the codes, one for each row. Throws OperationCanceled when the person ends
  /// the run; then nothing is remembered.
  std::vector<std::string> Match();
  void reject() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QLayout* Contents(bool codesMatter);
  QLayout* Filter();
  QWidget* Headings();
  QWidget* Rows();
  QWidget* Spin();
  QLayout* Buttons();
  TypeList* NewList(std::size_t row);
  void FitFrame();
  void PlaceHeadings();
  void Choose(std::size_t row, const QString& text);
  void ShowTypes();
  void ShowCount();
  void ShowNote(std::size_t row);
  void Mark(std::size_t row);
  void ShowRows();
  void Scroll(int rows);
  QFont MarkFont() const;
  std::vector<std::string> Types() const;

  LayerMatching& matching_;
  TypesShown types_;
  std::vector<std::string> typesAtFirst_;  // of the rows
  std::vector<TypeList*> lists_;
  std::vector<QLabel*> marks_;  // beside texts that are no type; null where there was none yet
  std::vector<ElidedLabel*> names_;
  QGridLayout* grid_ = nullptr;
  QWidget* headings_;
  QLineEdit* filter_;
  QCheckBox* onlyWithout_;
  QScrollArea* frame_;
  QLabel *count_, *shown_, *note_;
  int pitch_ = 1;  // from one row to the next, in pixels
};

}  // namespace tesselink
