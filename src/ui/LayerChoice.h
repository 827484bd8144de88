// SPDX-License-Identifier: MIT
// The layers of the drawing, to be ticked.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

class QListWidget;

namespace tesselink {

class LayerChoice final : public QDialog {
  Q_OBJECT
 public:
  /// `chosen`: a list as it stands in the pane, of which other names and patterns are kept.
  LayerChoice(const std::vector<std::string>& layers, const std::string& chosen, QWidget* parent);

  /// The list with what was ticked.
  std::string Chosen() const;

 private:
  QListWidget* list_;
  std::vector<std::string> others_;
};

}  // namespace tesselink
