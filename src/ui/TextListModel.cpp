// SPDX-License-Identifier: MIT
#include "ui/TextListModel.h"
#include "ui/UiText.h"

namespace tesselink {

void TextListModel::Set(std::vector<std::string> texts) {
  beginResetModel();
  texts_ = std::move(texts);
  endResetModel();
}

int TextListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(texts_.size());
}

QVariant TextListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole)) return {};
  return Shown(texts_[static_cast<std::size_t>(index.row())]);
}

}  // namespace tesselink
