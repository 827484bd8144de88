// SPDX-License-Identifier: MIT
// What the elements of a picture look like: layers, colours and line types, each look kept once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/element/LineType.h"
#include "core/element/tEntity.h"

namespace tesselink {

struct PictureLayer {
  std::string name;
  std::int64_t elements = 0;
  std::int32_t colour = 0;  ///< red in the low byte
  bool coloured = false;    ///< by an element or by its own name; false: from the palette
  bool others = false;      ///< stands for every layer behind the most that are told apart
};

/// The look of an element.
struct PictureStyle {
  std::uint8_t layer = 0;
  std::uint8_t lineType = 0;  ///< 0 is a solid line
  bool coloured = false;      ///< else the colour is that of its layer
  std::int32_t colour = 0;

  auto operator<=>(const PictureStyle&) const = default;
};

class PictureStyles {
 public:
  /// Layers, line types and looks that are told apart. An element with a look behind the most looks as its layer does.
  static constexpr std::size_t kMostLayers = 200, kMostLineTypes = 200, kMostStyles = 4096;

  /// The patterns that the drawing has for its line types.
  void Define(const std::vector<LineType>& lineTypes);
  /// The number of an element's look; the element counts for its layer.
  std::uint16_t Of(const tEntity& entity);

  const std::vector<PictureLayer>& Layers() const { return layers_; }
  const PictureStyle& operator[](std::size_t style) const { return styles_[style]; }
  std::size_t Count() const { return styles_.size(); }
  std::uint8_t LayerOf(std::size_t style) const { return styles_[style].layer; }
  std::int32_t ColourOf(std::size_t style) const {
    return styles_[style].coloured ? styles_[style].colour : layers_[styles_[style].layer].colour;
  }
  const LineType& LineTypeOf(std::size_t style) const { return lineTypes_[styles_[style].lineType]; }
  /// How often the colour of a layer has changed.
  std::int64_t Changes() const { return changes_; }

 private:
  std::uint8_t LayerNumber(const std::string& name);
  std::uint8_t LineTypeNumber(const std::string& name);
  std::uint16_t StyleNumber(const PictureStyle& style);

  std::vector<PictureLayer> layers_;
  std::unordered_map<std::string, std::uint8_t> layerNumbers_;
  std::vector<LineType> lineTypes_{1};
  std::unordered_map<std::string, std::uint8_t> lineTypeNumbers_;  // by names in capitals
  std::vector<PictureStyle> styles_;
  std::map<PictureStyle, std::uint16_t> styleNumbers_;
  // Of the element before: most look as it does.
  std::string lastLineType_;
  std::uint16_t last_ = 0;
  std::int64_t changes_ = 0;
};

}  // namespace tesselink
