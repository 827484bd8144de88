// SPDX-License-Identifier: MIT
// The questions about an attribute table's fields: first that of the layer, with a look at its values, then that of the
// text. Behind a disclosure, what labels look like.
#pragma once

#include <QDialog>
#include <cstdint>
#include <string>

class QComboBox;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QToolButton;

namespace tesselink {

class FieldSelection;
struct FieldAnswers;
class TextListModel;

/// A thin face of a FieldSelection whose questions are not yet answered; exec() returns when they are, or rejects when
/// the person has confirmed that the run is to end, which Escape and the Cancel button ask. The close box is refused.
class fDBFSel final : public QDialog {
  Q_OBJECT
 public:
  explicit fDBFSel(FieldSelection& selection, QWidget* parent = nullptr);
  void reject() override {}
  /// Shows a button that gives these answers, which the person gave the last time.
  void OfferLast(const FieldAnswers& last);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QLayout* Contents();
  QWidget* Details();
  void ShowStep();
  void ShowMore();
  void GrowToFit();
  void ShowEntries();
  void ShowNote();
  void LoadEntries();
  void Choose(const QComboBox& list);
  bool TakeDetails();
  void Continue();
  void TakeLast(const FieldAnswers& last);
  void Cancel();
  std::string FieldOfEntries() const;

  FieldSelection& selection_;
  TextListModel* entries_;
  QLabel *stat_, *fieldLabel_, *note_, *problem_;
  QComboBox *layerFields_, *textFields_;
  QListView* entriesView_;
  QToolButton* more_;
  QPushButton* last_;
  QLineEdit* template_;
  QComboBox *height_, *angle_, *colour_;
  QWidget* details_;
  std::string loadedField_;
  bool loading_ = false, cancelled_ = false;
};

}  // namespace tesselink
