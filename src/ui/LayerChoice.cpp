// SPDX-License-Identifier: MIT
#include "ui/LayerChoice.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "app/OptionChecks.h"
#include "core/io/Utf8.h"
#include "ui/Named.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

// A name as a list holds it: what would divide the list, or is no letter of it, is any letter.
std::string Listable(const std::string& layer) {
  std::string name = layer;
  const bool known = IsUtf8(layer);
  std::replace_if(
      name.begin(), name.end(), [&](char c) { return c == ',' || (!known && static_cast<unsigned char>(c) > 127); },
      '?');
  return name;
}

}  // namespace

LayerChoice::LayerChoice(const std::vector<std::string>& layers, const std::string& chosen, QWidget* parent)
    : QDialog(parent), list_(Named(new QListWidget, "lstLayers")) {
  setObjectName("LayerChoice");
  setWindowTitle(tr("Layers of the Drawing"));
  if (!chosen.empty()) others_ = ListIn(chosen);
  list_->setAccessibleName(tr("Layers of the drawing"));
  for (const std::string& layer : layers) {
    if (layer.empty()) continue;
    auto* item = new QListWidgetItem(Shown(layer), list_);
    const auto known = std::find(others_.begin(), others_.end(), Listable(layer));
    item->setData(Qt::UserRole, QByteArray::fromStdString(Listable(layer)));
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(known == others_.end() ? Qt::Unchecked : Qt::Checked);
    if (known != others_.end()) others_.erase(known);
  }
  auto* empty = Named(new QLabel(tr("The preview shows no layers yet.")), "lblNoLayers");
  empty->setVisible(list_->count() == 0);
  auto* buttons = Named(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel), "buttons");
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(empty);
  layout->addWidget(list_);
  layout->addWidget(buttons);
  list_->setCurrentRow(0);
  list_->setFocus();
}

std::string LayerChoice::Chosen() const {
  std::string chosen;
  const auto add = [&chosen](const std::string& name) { chosen += (chosen.empty() ? "" : ",") + name; };
  for (const std::string& other : others_) add(other);
  for (int row = 0; row < list_->count(); ++row) {
    const QListWidgetItem& item = *list_->item(row);
    if (item.checkState() == Qt::Checked) add(item.data(Qt::UserRole).toByteArray().toStdString());
  }
  return chosen;
}

}  // namespace tesselink
