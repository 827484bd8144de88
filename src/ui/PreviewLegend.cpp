// SPDX-License-Identifier: MIT
#include "ui/PreviewLegend.h"

#include <QStringList>

#include "picture/LinePattern.h"
#include "ui/PictureRenderer.h"

namespace tesselink {
namespace {

// What of the lost kinds there is.
std::uint32_t Had(std::uint32_t lost, const Picture& picture) {
  const PictureCounts counts = picture.Counts();
  const bool lines = counts.elements > counts.points + counts.texts;
  bool lineTypes = false, colours = false;
  const PictureStyles& styles = picture.Styles();
  for (std::size_t i = 0; i < styles.Count(); ++i) {
    lineTypes = lineTypes || styles[i].lineType != 0;
    colours = colours || (styles[i].coloured && styles[i].colour != styles.Layers()[styles[i].layer].colour);
  }
  return lost &
         ((lines ? kLosesLines : 0U) | (counts.points > 0 ? kLosesPoints : 0U) | (counts.texts > 0 ? kLosesTexts : 0U) |
          (counts.areas > 0 ? kLosesAreas : 0U) | (lineTypes ? kLosesLineTypes : 0U) | (colours ? kLosesColours : 0U));
}

}  // namespace

PreviewLegend::PreviewLegend(QWidget* parent) : QLabel(parent) {
  setObjectName(QStringLiteral("previewLegend"));
  setWordWrap(true);
  setTextFormat(Qt::RichText);
  hide();
}

void PreviewLegend::Tell(std::uint32_t lost, const Picture* picture) {
  const std::uint32_t had = picture == nullptr ? 0 : Had(lost, *picture);
  QStringList kinds;
  const auto name = [&](LostKind kind, const QString& what) {
    if ((had & kind) != 0) kinds += what;
  };
  name(kLosesLines, tr("lines"));
  name(kLosesPoints, tr("points"));
  name(kLosesTexts, tr("texts"));
  name(kLosesAreas, tr("areas, which become lines"));
  name(kLosesLineTypes, tr("line types"));
  name(kLosesColours, tr("colours beside those of the layers"));
  setVisible(!kinds.isEmpty());
  const QString swatch = QStringLiteral("<span style=\"color:%1\">\u25A0</span> ").arg(LostColour().name());
  setText(swatch + tr("Not in the output: %1").arg(kinds.join(QStringLiteral(", "))).toHtmlEscaped());
}

}  // namespace tesselink
