// SPDX-License-Identifier: MIT
#include "ui/DialectLine.h"

#include <QStringList>

#include "ui/UiText.h"
#include "ui/UiWording.h"

namespace tesselink {
namespace {

constexpr int kMostTold = 3;

QString Text(const DialectSentence& sentence) {
  return Shown(kUiWording.Filled("Dialect", sentence.Pattern(), {kUiWording.Number(sentence.count), sentence.names}));
}

}  // namespace

DialectLine::DialectLine(QWidget* parent) : QLabel(parent) {
  setObjectName("lblDialectText");
  setAccessibleName(tr("What the dialect does"));
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  setAlignment(Qt::AlignLeft | Qt::AlignTop);
  setTextInteractionFlags(Qt::TextSelectableByMouse);
  setMinimumHeight(2 * fontMetrics().lineSpacing());
}

void DialectLine::Tell(Dialect dialect, const std::vector<DialectSentence>& sentences) {
  QStringList texts;
  for (const DialectSentence& sentence : sentences) {
    if (const QString text = Text(sentence); !texts.contains(text)) texts.append(text);
  }
  const bool classic = dialect == Dialect::Classic;
  QString told = texts.mid(0, kMostTold).join("; ");
  if (texts.isEmpty()) {
    told =
        classic ? tr("the conventions that existing files rest on") : tr("files as other programs read and write them");
  } else if (texts.size() > kMostTold) {
    told = tr("%1; and %2 more").arg(told, QString::number(texts.size() - kMostTold));
  }
  setText((classic ? tr("Classic: %1.") : tr("Standard: %1.")).arg(told));
  setToolTip(texts.size() > kMostTold ? "\u2022 " + texts.join("\n\u2022 ") : QString());
}

}  // namespace tesselink
