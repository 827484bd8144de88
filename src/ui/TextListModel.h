// SPDX-License-Identifier: MIT
// A list of texts that any number of views and drop-down lists share.
#pragma once

#include <QAbstractListModel>
#include <string>
#include <vector>

namespace tesselink {

/// The texts stay bytes; each is made a text of the screen when it is shown, so a million of them come up at once.
class TextListModel final : public QAbstractListModel {
  Q_OBJECT
 public:
  using QAbstractListModel::QAbstractListModel;

  void Set(std::vector<std::string> texts);
  const std::vector<std::string>& Texts() const { return texts_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  std::vector<std::string> texts_;
};

}  // namespace tesselink
