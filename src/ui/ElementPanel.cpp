// SPDX-License-Identifier: MIT
#include "ui/ElementPanel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QPixmap>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "core/element/ColourNames.h"
#include "ui/Named.h"
#include "ui/PreviewLayers.h"
#include "ui/UiNumbers.h"
#include "ui/UiText.h"

namespace tesselink {

ElementPanel::ElementPanel(QWidget* parent) : QWidget(parent) {
  state_ = Named(new QLabel, "previewElementState");
  state_->setTextFormat(Qt::PlainText);
  state_->setWordWrap(true);
  auto* close = Named(new QToolButton, "previewElementClose");
  close->setText(QStringLiteral("\u00d7"));
  close->setAccessibleName(tr("Close what is told of the element"));
  close->setToolTip(close->accessibleName());
  close->setFocusPolicy(Qt::StrongFocus);
  rows_ = Named(new QTreeWidget, "previewElement");
  rows_->setAccessibleName(tr("About the element"));
  rows_->setColumnCount(2);
  rows_->setRootIsDecorated(false);
  rows_->setUniformRowHeights(true);
  rows_->header()->hide();
  rows_->header()->setStretchLastSection(true);
  setMinimumWidth(fontMetrics().averageCharWidth() * 34);
  auto* head = new QHBoxLayout;
  head->addWidget(state_, 1);
  head->addWidget(close, 0, Qt::AlignTop);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(head);
  layout->addWidget(rows_, 1);
  connect(close, &QToolButton::clicked, this, &ElementPanel::Closed);
}

void ElementPanel::ShowLooking(int percent) {
  rows_->clear();
  state_->setText(tr("Looking for it in the file, %1%").arg(percent));
}

void ElementPanel::ShowReason(const QString& reason) {
  rows_->clear();
  state_->setText(reason);
}

void ElementPanel::Add(const QString& name, const QString& value) {
  if (value.isEmpty()) return;
  auto* row = new QTreeWidgetItem(rows_, {name, value.simplified()});
  for (const int column : {0, 1}) row->setToolTip(column, name + QStringLiteral(": ") + value);
}

void ElementPanel::ShowFacts(const ElementFacts& facts, const QString& unit, bool thinned) {
  rows_->clear();
  state_->setText(thinned ? tr("The drawing is thinned: other elements may lie here too.") : tr("The element"));
  const bool isCurve = IsCurve(facts.kind);
  const QString kind = facts.isArea            ? tr("area")
                       : facts.kind == kPoint  ? tr("point")
                       : facts.kind == kText   ? tr("text")
                       : facts.kind == kCircle ? tr("circle")
                       : facts.kind == kArc    ? tr("arc")
                       : facts.isClosed        ? tr("closed line")
                                               : tr("line");
  Add(tr("Kind"), kind);
  Add(tr("Layer"), facts.layer.empty() ? tr("(no name)") : Shown(facts.layer));
  Add(tr("Place in the file"), Shown(facts.where));
  if (facts.record > 0) Add(tr("Record"), Grouped(facts.record));
  Add(facts.kind == kPoint ? tr("Symbol") : tr("Text"), Shown(facts.text));
  if (facts.size != 0) Add(isCurve ? tr("Radius") : tr("Height"), Grouped(facts.size) + u' ' + unit);
  if (IsChain(facts.kind)) Add(tr("Vertices"), Grouped(facts.vertices));
  Add(tr("Line type"), Shown(facts.lineType));
  Add(tr("Entity code"), Shown(facts.code));
  if (facts.coloured) {
    const auto hex = HexOfColour(facts.colour);
    Add(tr("Colour"), QString::fromLatin1(hex.data(), static_cast<qsizetype>(hex.size())));
    rows_->topLevelItem(rows_->topLevelItemCount() - 1)->setIcon(1, QIcon(ColourSwatch(*this, facts.colour)));
  }
  for (const auto& [name, value] : facts.attributes) Add(Shown(name), value.empty() ? tr("(empty)") : Shown(value));
  FitColumns();
}

// Values have at least the half.
void ElementPanel::FitColumns() {
  rows_->resizeColumnToContents(0);
  rows_->setColumnWidth(0, std::min(rows_->columnWidth(0), std::max(rows_->viewport()->width(), minimumWidth()) / 2));
}

}  // namespace tesselink
