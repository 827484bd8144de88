// SPDX-License-Identifier: MIT
#include "ui/PreviewStatus.h"

#include <QStringList>

#include "ui/OptionNaming.h"
#include "ui/UiNumbers.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr int kNotes = 2;  // the rest in the tool tip

}  // namespace

PreviewStatus::PreviewStatus(QWidget* parent) : QLabel(parent) {
  setObjectName(QStringLiteral("previewStatus"));
  setAccessibleName(tr("About the input"));
  setWordWrap(true);
  setTextFormat(Qt::PlainText);
  setTextInteractionFlags(Qt::TextSelectableByMouse);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  setMinimumHeight(fontMetrics().lineSpacing() * 2);
  setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

void PreviewStatus::Tell(const QString& title, const PreviewReading* reading) {
  if (reading == nullptr) {
    clear();
    setToolTip({});
    return;
  }
  const Picture& picture = reading->Drawn();
  QStringList parts{title};
  parts += picture.Elements() == 1 ? tr("1 element") : tr("%1 elements").arg(Grouped(picture.Elements()));
  if (const Extents& box = picture.Bounds(); !box.Empty()) {
    parts += tr("x %1 to %2").arg(Grouped(box.minX), Grouped(box.maxX));
    parts += tr("y %1 to %2").arg(Grouped(box.minY), Grouped(box.maxY));
  }
  QStringList notes;
  for (const std::string& note : reading->Notes()) notes += WithoutOptions(Shown(note));
  if (picture.LeavesOutOfView()) notes += tr("A few vertices lie far away from all others; zoom out to see them.");
  if (!reading->Ended()) parts += tr("reading, %1%").arg(static_cast<int>(reading->Progress()));
  const QString line = parts.join(QStringLiteral("  \u00b7  "));
  const QString more = notes.size() > kNotes ? tr(" (more: point here)") : QString();
  setText(line + (notes.isEmpty() ? QString() : u'\n' + notes.mid(0, kNotes).join(u'\n') + more));
  setToolTip((QStringList{line} + notes).join(u'\n'));
}

}  // namespace tesselink
