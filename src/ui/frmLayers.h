// SPDX-License-Identifier: MIT
// The matching of layer names to entity types.
#pragma once

#include <QDialog>
#include <QHash>
#include <string>
#include <vector>

class QComboBox;
class QLabel;
class QScrollArea;

namespace tesselink {

class LayerMatching;
class TextListModel;

/// A thin face of a LayerMatching, which has its rows already. What a person chooses or types goes into it at once.
/// Escape does nothing; the close box is the same as the continue button.
class frmLayers final : public QDialog {
  Q_OBJECT
 public:
  explicit frmLayers(LayerMatching& matching, QWidget* parent = nullptr);

  /// Shows the dialog modally and hands back the codes, one for each row, whichever way it was closed.
  std::vector<std::string> Match();
  void reject() override {}

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QLayout* Contents();
  QLayout* Headings();
  QWidget* Rows();
  QWidget* Spin();
  QLayout* Buttons();
  QComboBox* NewList(std::size_t row);
  void FitFrame();
  void Choose(std::size_t row, const QString& text);
  void ShowTypes();
  void ShowCount();
  void Scroll(int rows);

  LayerMatching& matching_;
  TextListModel* types_;
  QHash<QString, int> rowOfType_;  // where a description stands first, by its text on the screen
  std::vector<QComboBox*> lists_;
  QScrollArea* frame_;
  QLabel* count_;
  int pitch_ = 1;  // from one row to the next, in pixels
};

}  // namespace tesselink
