// SPDX-License-Identifier: MIT
#include "picture/PictureStyles.h"

#include <algorithm>

#include "core/io/Text.h"
#include "core/io/Utf8.h"
#include "picture/LinePattern.h"
#include "picture/PictureColours.h"

namespace tesselink {
namespace {

constexpr std::size_t kLongestName = 250;

}  // namespace

void PictureStyles::Define(const std::vector<LineType>& lineTypes) {
  for (const LineType& lineType : lineTypes) {
    if (lineTypes_.size() == kMostLineTypes) return;
    const auto [place, isNew] = lineTypeNumbers_.try_emplace(UpperCase(lineType.name), 0);
    if (!isNew || DashesOnScreen(lineType, 1).empty()) continue;
    place->second = static_cast<std::uint8_t>(lineTypes_.size());
    lineTypes_.push_back(lineType);
  }
}

std::uint16_t PictureStyles::Of(const tEntity& entity) {
  PictureStyle style{.coloured = entity.RGB != 0 || entity.IsBlack, .colour = entity.RGB & 0xFFFFFF};
  if (!styles_.empty()) style.layer = styles_[last_].layer;
  const bool same =
      style.layer < layers_.size() && !layers_[style.layer].others && layers_[style.layer].name == entity.Layer;
  if (!same) style.layer = LayerNumber(std::string(CutUtf8(entity.Layer, kLongestName)));
  PictureLayer& layer = layers_[style.layer];
  ++layer.elements;
  if (!layer.coloured && style.coloured) {
    layer.colour = style.colour;
    layer.coloured = true;
    ++changes_;
  }
  if (!styles_.empty() && entity.LineStyle == lastLineType_) {
    style.lineType = styles_[last_].lineType;
    if (style == styles_[last_]) return last_;
  } else {
    style.lineType = LineTypeNumber(entity.LineStyle);
    lastLineType_ = entity.LineStyle;
  }
  last_ = StyleNumber(style);
  return last_;
}

std::uint8_t PictureStyles::LayerNumber(const std::string& name) {
  const auto known = layerNumbers_.find(name);
  if (known != layerNumbers_.end()) return known->second;
  const auto number = static_cast<std::uint8_t>(std::min(layers_.size(), kMostLayers));
  if (number == kMostLayers) {
    if (layers_.size() == kMostLayers) layers_.push_back({"other layers", 0, PaletteColour(number), true, true});
    return number;
  }
  const auto named = ColourNamed(name);
  layers_.push_back({name, 0, named.value_or(PaletteColour(number)), named.has_value()});
  layerNumbers_.emplace(name, number);
  return number;
}

std::uint8_t PictureStyles::LineTypeNumber(const std::string& name) {
  if (name.empty()) return 0;
  const std::string key = UpperCase(name);
  if (const auto known = lineTypeNumbers_.find(key); known != lineTypeNumbers_.end()) return known->second;
  const auto standard = StandardLineType(key);
  if (!standard || lineTypes_.size() == kMostLineTypes) return 0;
  const auto number = static_cast<std::uint8_t>(lineTypes_.size());
  lineTypes_.push_back(*standard);
  lineTypeNumbers_.emplace(key, number);
  return number;
}

std::uint16_t PictureStyles::StyleNumber(const PictureStyle& style) {
  if (const auto known = styleNumbers_.find(style); known != styleNumbers_.end()) return known->second;
  const PictureStyle plain{.layer = style.layer};
  if (styles_.size() >= kMostStyles && style != plain) return StyleNumber(plain);
  const auto number = static_cast<std::uint16_t>(styles_.size());
  styles_.push_back(style);
  styleNumbers_.emplace(style, number);
  return number;
}

}  // namespace tesselink
