// SPDX-License-Identifier: MIT
// What a drawing says of itself before its entities: header variables, the layer table and blocks.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/element/LayerState.h"
#include "core/element/LineType.h"
#include "formats/dxf/DimensionStyles.h"
#include "formats/dxf/DrawingBlocks.h"
#include "formats/dxf/DrawingText.h"
#include "formats/dxf/ExtendedData.h"

namespace tesselink {

class GroupScanner;
class Report;

struct DrawingLayer : LayerState {
  std::int32_t colour = 7;                 ///< 1 to 255
  std::optional<std::int32_t> trueColour;  ///< red in the high byte
  std::int32_t weight = 0;  ///< of its lines, in hundredths of a millimetre; 0 and below: none of its own
  std::string lineType;     ///< empty where the table names none
};

/// Header variables, layers and blocks. Layer names match without regard to the case of ASCII letters.
class Drawing {
 public:
  Drawing(Report& report, DrawingText text) : report_(report), text_(std::move(text)) {}

  /// Takes a group of the HEADER section.
  void TakeHeaderGroup(const GroupScanner& scanner);
  /// Takes a group of the TABLES section.
  void TakeTableGroup(const GroupScanner& scanner);
  /// Takes a group of the BLOCKS section.
  void TakeBlockGroup(const GroupScanner& scanner) { blocks_.TakeGroup(scanner); }

  /// The layer of a name as it stands in the drawing; one that the table does not hold is added with the colour 7.
  const DrawingLayer& LayerOf(std::string_view bytes);
  /// The names of the layer table, in its order.
  std::vector<std::string> LayerNames() const;
  /// Those layers of the table that are off, frozen or locked.
  std::vector<LayerState> LayerStates() const;

  /// What texts of a style lose by it: font, slant and width of letters, as bits of ReadingLoss.
  std::uint32_t LostByStyle(std::string_view name) const;

  /// The line types of the table that have a pattern.
  const std::vector<LineType>& LineTypes() const { return lineTypes_; }

  /// What layer 0 tells of attribute tables, as the drawing has the texts.
  const std::vector<std::string>& Schema() const { return schema_; }

  const DimensionStyles& Dimensions() const { return dimensions_; }

  const DrawingText& Text() const { return text_; }
  DrawingBlocks& Blocks() { return blocks_; }
  /// How to read blocks that stand behind the entities. It is done once, for the first block that was not found.
  void BlocksMayFollow(std::function<void()> read) { readBlocks_ = std::move(read); }
  void LookForBlocks() {
    if (const auto read = std::exchange(readBlocks_, nullptr)) read();
  }
  /// An angle of a text as degrees counter-clockwise from the x axis, by $ANGBASE and $ANGDIR.
  double TextAngle(double degrees) const { return clockwise_ ? angleBase_ - degrees : angleBase_ + degrees; }

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
  };
  using LayerIndex = std::unordered_map<std::string, const DrawingLayer*, Hash, std::equal_to<>>;

  void EndEntry();
  void TakeLineTypeGroup(const GroupScanner& scanner);
  void TakeStyleGroup(const GroupScanner& scanner);
  const DrawingLayer& Add(std::string_view bytes, DrawingLayer layer);

  Report& report_;
  DrawingText text_;
  DrawingBlocks blocks_;
  std::function<void()> readBlocks_;
  std::string variable_;
  double angleBase_ = 0;
  bool clockwise_ = false;

  enum class Table { Other, Layers, LineTypes, Styles, DimensionStyles };
  Table table_ = Table::Other;  // that the entry being read is of
  std::string layerBytes_;
  DrawingLayer read_;
  ExtendedData readData_;
  std::vector<std::string> schema_;
  LineType lineType_;
  std::vector<LineType> lineTypes_;
  DimensionStyles dimensions_;

  std::string styleName_;
  std::uint32_t styleLost_ = 0;
  std::unordered_map<std::string, std::uint32_t, Hash, std::equal_to<>> styles_;  // by folded name

  std::deque<DrawingLayer> layers_;
  LayerIndex byBytes_, byFoldedName_;
  const DrawingLayer* last_ = nullptr;
  std::string lastBytes_;
  std::string name_;
};

}  // namespace tesselink
