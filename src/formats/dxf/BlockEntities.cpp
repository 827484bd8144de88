// SPDX-License-Identifier: MIT
#include "formats/dxf/BlockEntities.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/io/Utf8.h"
#include "core/run/Report.h"
#include "formats/dxf/Drawing.h"
#include "formats/dxf/EntityGathering.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"
#include "formats/dxf/TextEntities.h"

namespace tesselink {
namespace {

BlockPlace PlaceOf(const EntityGroups& groups) {
  const auto scale = [&](int code) {
    const double factor = groups.Number(code, 1);
    return std::isfinite(factor) && factor != 0 ? factor : 1;
  };
  const auto finite = [&](int code) {
    const double value = groups.Number(code, 0);
    return std::isfinite(value) ? value : 0;
  };
  return {.place = groups.Point(0),
          .scale = {scale(41), scale(42), scale(43)},
          .rotation = finite(50),
          .plane = ObjectCoordinates(groups.Extrusion()),
          .columns = std::max(groups.Integer(70, 1), 1),
          .rows = std::max(groups.Integer(71, 1), 1),
          .stepX = finite(44),
          .stepY = finite(45)};
}

// Looks for a block that is to be drawn. False where there is nothing to draw.
template <typename Find>
bool FindBlock(EntityContext& context, std::string_view given, const Find& find) {
  DrawingBlocks& blocks = context.source.drawing.Blocks();
  std::size_t number = find(blocks);
  if (number == DrawingBlocks::kNone || !blocks.Block(number).defined) {
    context.source.drawing.LookForBlocks();
    number = find(blocks);
  }
  const auto left = [&](WarningKind kind, const std::string& why) {
    std::string name;
    context.source.drawing.Text().DecodeName(given, name);
    Warn(context, kind, "block " + std::string(CutUtf8(name, kLongestShownName)) + why);
    return false;
  };
  if (number == DrawingBlocks::kNone || !blocks.Block(number).defined) {
    return left(WarningKind::MissingBlocks, " is not in the drawing; nothing is drawn for it");
  }
  if (blocks.Block(number).elsewhere) {
    return left(WarningKind::ExternalBlocks, " lies in a drawing of its own, which is not read");
  }
  if (blocks.Block(number).drawn == 0)
    return left(WarningKind::EmptyBlocks, " draws nothing, so nothing stands for it");
  context.insert.block = number;
  return true;
}

// Finds the block that the entity names.
bool FindBlock(EntityContext& context) {
  const std::string& name = context.groups.Name();
  return FindBlock(context, name, [&](DrawingBlocks& blocks) { return blocks.Find(name); });
}

// A block that was inserted as a point: what it draws is counted.
void TallyBlockNotDrawn(EntityContext& context) {
  DrawingBlocks& blocks = context.source.drawing.Blocks();
  const std::size_t number = blocks.Find(context.groups.Name());
  if (number == DrawingBlocks::kNone || blocks.Block(number).drawn == 0) return;
  BlockTally& tally = context.undrawn;
  if (tally.inserts++ == 0) tally.place = context.groups.Place();
  tally.entities = DrawingBlocks::Sum(tally.entities, blocks.DrawnBy(number, context.insert.at.Count()));
}

// What a block draws where an entity's own says that it draws it. Always false: nothing but that is delivered.
bool DrawOwnBlock(EntityContext& context, const BlockPlace& at) {
  if (!context.source.ownBlocks) {
    context.source.report.Undelivered(context.type);
    return false;
  }
  if (context.groups.Name().empty()) return Damaged(context, "names no block that draws it");
  context.insert.at = at;
  context.toDraw = FindBlock(context);
  return false;
}

}  // namespace

// As a point, a block that is inserted as an array has a vertex for each of its places.
bool MakeInsert(EntityContext& context, tEntity& element) {
  const EntityGroups& groups = context.groups;
  if (!groups.Has(10)) return Damaged(context, "has no insertion point");
  BlockPlace& at = context.insert.at;
  at = PlaceOf(groups);
  const BlockMode mode = context.source.blocks;
  context.inArray = mode != BlockMode::Points && at.Count() > 1;
  if (context.inArray) context.array = at;
  if (mode != BlockMode::Points) {
    if (!IsFinite(groups.Point(0))) return Damaged(context, "has an insertion point that is no number");
    context.toDraw = FindBlock(context);
    if (mode == BlockMode::Expand) return false;
  }
  constexpr std::int64_t kMostPlaces = 65536;
  std::int64_t places = at.Count();
  if (places > kMostPlaces) {
    Warn(context, WarningKind::Arrays,
         "an array of " + std::to_string(at.columns) + " by " + std::to_string(at.rows) +
             " was read as its first insertion");
    places = 1;
  }
  for (std::int64_t i = 0; i < places; ++i) context.chain.push_back(at.Location(i));
  context.source.drawing.Text().DecodeName(groups.Name(), element.Text);
  if (context.source.whole) element.Block = element.Text;
  const double rotation = groups.Number(50, 0);
  element.TextAng = std::isfinite(rotation) ? at.plane.AngleToWorld(rotation) : 0;
  if (!StoreChain(context, element, kPoint)) return false;
  if (mode == BlockMode::Points) TallyBlockNotDrawn(context);
  return true;
}

bool MakeDimension(EntityContext& context, tEntity&) {
  BlockPlace at;
  const Vertex& moved = context.groups.Point(2);
  if (IsFinite(moved)) at.place = ObjectCoordinates(context.groups.Extrusion()).ToWorld(moved);
  return DrawOwnBlock(context, at);
}

void DrawBlockOfRecord(EntityContext& context, std::uint64_t record, const BlockPlace& at) {
  context.insert.at = at;
  const auto find = [&](DrawingBlocks& blocks) { return blocks.FindRecord(record); };
  context.toDraw = FindBlock(context, "of record " + std::to_string(record), find);
}

void GatherTable(EntityContext& context) {
  bool cells = false;
  GatherWith(context, [&](int code) {
    cells = cells || (code == 100 && context.source.scanner.Keyword() == "AcDbTable");
    const bool isDirection = code == 11 || code == 21 || code == 31;
    return cells && !isDirection;
  });
}

bool MakeTable(EntityContext& context, tEntity&) {
  const EntityGroups& groups = context.groups;
  if (!groups.Has(10) || !IsFinite(groups.Point(0))) return Damaged(context, "has no location");
  BlockPlace at;
  at.place = groups.Point(0);
  const Vertex& along = groups.Point(1);
  if (groups.Has(11) && IsFinite(along)) at.rotation = std::atan2(along.y, along.x) * 180 / std::numbers::pi;
  return DrawOwnBlock(context, at);
}

void GatherAttributeDefinition(EntityContext& context) {
  constexpr int kPrompt = 3;
  GatherAttribute(context, kPrompt);
}

bool MakeAttributeDefinition(EntityContext& context, tEntity& element) {
  constexpr std::int32_t kConstant = 2;
  if (!context.source.inBlock) {
    if (context.source.whole) return MakeTag(context, element);
    context.source.report.Undelivered(context.type);
    return false;
  }
  return (context.groups.Integer(70, 0) & kConstant) != 0 && MakeAttrib(context, element);
}

}  // namespace tesselink
