// SPDX-License-Identifier: MIT
#include "ui/PreviewLayers.h"

#include <QCheckBox>
#include <QIcon>
#include <QListWidget>
#include <QPixmap>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

#include "picture/PictureColours.h"
#include "ui/Named.h"
#include "ui/UiNumbers.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr int kSwatch = 12;

QColor SwatchColour(const QWidget& widget, std::int32_t colour) {
  const QColor paper = widget.palette().color(QPalette::Base);
  const std::int32_t legible = Legible(colour, paper.red() | paper.green() << 8 | paper.blue() << 16);
  return {legible & 0xFF, legible >> 8 & 0xFF, legible >> 16 & 0xFF};
}

}  // namespace

QPixmap ColourSwatch(const QWidget& widget, std::int32_t colour) {
  const qreal ratio = widget.devicePixelRatioF();
  QPixmap pixmap(QSize(kSwatch, kSwatch) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(SwatchColour(widget, colour));
  return pixmap;
}

PreviewLayers::PreviewLayers(QWidget* parent) : QWidget(parent) {
  all_ = Named(new QCheckBox(tr("All layers")), "previewAllLayers");
  list_ = Named(new QListWidget, "previewLayers");
  list_->setAccessibleName(tr("Layers of the input"));
  list_->setUniformItemSizes(true);
  list_->setIconSize(QSize(kSwatch, kSwatch));
  // The count stands at the end, and must be seen.
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setTextElideMode(Qt::ElideMiddle);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(all_);
  layout->addWidget(list_, 1);
  connect(list_, &QListWidget::itemChanged, this, &PreviewLayers::BoxChanged);
  connect(all_, &QCheckBox::clicked, this, &PreviewLayers::AllClicked);
}

void PreviewLayers::Clear() {
  const QSignalBlocker quiet(list_);
  list_->clear();
  all_->setCheckState(Qt::Checked);
}

void PreviewLayers::List(const std::vector<PictureLayer>& layers) {
  const QSignalBlocker quiet(list_);
  for (std::size_t i = 0; i < layers.size(); ++i) {
    QString name = layers[i].name.empty() ? tr("(no name)") : Shown(layers[i].name).simplified();
    if (layers[i].others) name = tr("other layers");
    const QString text = name + QStringLiteral("  ") + Grouped(layers[i].elements);
    QListWidgetItem* item = list_->item(static_cast<int>(i));
    if (item == nullptr) {
      item = new QListWidgetItem(list_);
      item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
      item->setCheckState(Qt::Checked);
    }
    const QRgb swatch = SwatchColour(*this, layers[i].colour).rgb();
    if (item->data(Qt::UserRole) != swatch) item->setIcon(QIcon(ColourSwatch(*this, layers[i].colour)));
    item->setData(Qt::UserRole, swatch);
    if (item->text() == text) continue;
    item->setText(text);
    item->setToolTip(text);
  }
}

std::vector<bool> PreviewLayers::Hidden() const {
  std::vector<bool> hidden;
  for (int row = 0; row < list_->count(); ++row) hidden.push_back(list_->item(row)->checkState() == Qt::Unchecked);
  return hidden;
}

void PreviewLayers::BoxChanged() {
  const std::vector<bool> hidden = Hidden();
  const auto count = static_cast<std::size_t>(std::count(hidden.begin(), hidden.end(), true));
  const QSignalBlocker quiet(all_);
  all_->setCheckState(count == 0 ? Qt::Checked : count == hidden.size() ? Qt::Unchecked : Qt::PartiallyChecked);
  emit HiddenChanged(hidden);
}

void PreviewLayers::AllClicked() {
  // From a part of them to all; a person does not ask for a part.
  const Qt::CheckState state = all_->checkState() == Qt::Unchecked ? Qt::Unchecked : Qt::Checked;
  {
    const QSignalBlocker quiet(list_);
    for (int row = 0; row < list_->count(); ++row) list_->item(row)->setCheckState(state);
  }
  BoxChanged();
}

}  // namespace tesselink
