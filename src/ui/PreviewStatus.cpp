// SPDX-License-Identifier: MIT
#include "ui/PreviewStatus.h"

#include <QStringList>

#include "app/SummaryText.h"
#include "core/run/Translatable.h"
#include "ui/OptionNaming.h"
#include "ui/UiNumbers.h"
#include "ui/UiText.h"
#include "ui/UiWording.h"

namespace tesselink {
namespace {

constexpr int kNotes = 2;  // the rest in the tool tip

// Ten digits tell at least centimetres in feet or metres; what a curve or a division adds behind them is noise.
QString Place(double coordinate) { return Grouped(QString::number(coordinate, 'g', 10).toDouble()); }

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
    parts += tr("x %1 to %2").arg(Place(box.minX), Place(box.maxX));
    parts += tr("y %1 to %2").arg(Place(box.minY), Place(box.maxY));
  }
  QStringList notes;
  QStringList lines;
  for (const ReadingNote& note : reading->Notes()) {
    lines += Line(note);
    notes += Whole(note);
  }
  if (picture.LeavesOutOfView()) {
    notes += tr("A few vertices lie far away from all others; zoom out to see them.");
    lines += notes.last();
  }
  if (!reading->Ended()) parts += tr("reading, %1%").arg(static_cast<int>(reading->Progress()));
  const QString line = parts.join(QStringLiteral("  \u00b7  "));
  const QString more = notes.size() > kNotes ? tr(" (more: point here)") : QString();
  setText((QStringList{line} + lines.mid(0, kNotes)).join(u'\n') + more);
  setToolTip((QStringList{line} + notes).join(u'\n'));
}

QString PreviewStatus::Line(const ReadingNote& note) {
  QString whole = Whole(note);
  return note.about == ReadingNote::About::Warning ? whole.section(u'\n', 0, 0) : whole.replace(u'\n', u' ');
}

QString PreviewStatus::Whole(const ReadingNote& note) {
  std::string text;
  switch (note.about) {
    case ReadingNote::About::Text:
      return WithoutOptions(InWindowLanguage(note.text));
    case ReadingNote::About::Unread:
      text = kUiWording.Told(TRANSLATABLE("Summary", "not shown: %1 of type %2"),
                             {kUiWording.Number(note.count), note.text});
      break;
    case ReadingNote::About::Warning:
      text = InWords(note.kind, WarningText({note.kind, note.text, note.count}, kUiWording), kUiWording);
  }
  return WithoutOptions(Shown(text));
}

}  // namespace tesselink
