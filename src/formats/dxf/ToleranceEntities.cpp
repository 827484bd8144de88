// SPDX-License-Identifier: MIT
#include "formats/dxf/ToleranceEntities.h"

#include <array>
#include <cmath>
#include <string>
#include <string_view>

#include "core/element/Justification.h"
#include "core/element/VertexAlgebra.h"
#include "core/io/Text.h"
#include "formats/dxf/Drawing.h"
#include "formats/dxf/EntityGathering.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"
#include "formats/dxf/LeaderEntities.h"

namespace tesselink {
namespace {

// What the letters from "a" on are in the font of symbols, as an MTEXT has letters beyond its code page.
constexpr std::array<std::string_view, 26> kSymbols{
    "\\U+2220", "\\U+27C2", "\\U+23E5", "\\U+2313",  // angularity, perpendicularity, flatness, profile of a surface
    "\\U+25CB", "\\U+2225", "\\U+232D", "\\U+2197",  // circularity, parallelism, cylindricity, circular run-out
    "\\U+232F", "\\U+2316", "\\U+2312", "\\U+24C1",  // symmetry, position, profile of a line, least material
    "\\U+24C2", "\\U+00D8", "\\U+25A1", "\\U+24C5",  // maximum material, diameter, square, projected zone
    "\\U+2104", "\\U+25CE", "\\U+24C8", "\\U+2330",  // centre line, concentricity, regardless of size, total run-out
    "\\U+23E4", "\\U+2334", "\\U+2335", "\\U+21A7",  // straightness, counterbore, countersink, depth
    "\\U+2332", "\\U+2333"};                         // taper, slope

// "\Fgdt;" and its like at the front of the text, from which it is taken.
bool TakeSymbolFont(std::string_view& rest) {
  const std::size_t end = rest.find(';');
  if (end == std::string_view::npos || !EqualsIgnoringCase(rest.substr(0, 5), "\\Fgdt")) return false;
  rest.remove_prefix(end + 1);
  return true;
}

// The frame as the text of an MTEXT: symbols as letters, a bar between two fields, a line for each row. Fields without
// content have no frame.
std::string FrameText(std::string_view rest) {
  std::string text;
  bool isSymbol = false, isRowBegun = false, barFollows = false, rowFollows = false;
  while (!rest.empty()) {
    if (EqualsIgnoringCase(rest.substr(0, 3), "%%v")) {
      barFollows = isRowBegun;
      rest.remove_prefix(3);
    } else if (rest.starts_with("^J")) {
      rowFollows = rowFollows || isRowBegun;
      barFollows = isRowBegun = false;
      rest.remove_prefix(2);
    } else if (TakeSymbolFont(rest)) {
      isSymbol = true;
    } else if (const char c = rest[0]; c == '{' || c == '}') {
      isSymbol = isSymbol && c != '}';
      rest.remove_prefix(1);
    } else {
      if (c != ' ') {
        if (rowFollows && !text.empty()) text += "\\P";
        if (barFollows) text += " | ";
        rowFollows = barFollows = false;
        isRowBegun = true;
      }
      const bool hasSymbol = isSymbol && c >= 'a' && c <= 'z';
      text += hasSymbol ? kSymbols[static_cast<std::size_t>(c - 'a')] : rest.substr(0, 1);
      rest.remove_prefix(1);
    }
  }
  return text;
}

}  // namespace

void GatherTolerance(EntityContext& context) {
  DimensionStyle style = context.source.drawing.Dimensions().Of("Standard");
  StyleOverride own(context);
  GatherWith(context, [&](int code) {
    if (code != 3) return own.Take(code, style);
    style = context.source.drawing.Dimensions().Of(context.source.scanner.Keyword());
    return true;
  });
  context.lines.columns.Clear();
  context.lines.size = style.Scaled(style.textHeight);
}

// Each row of the frame is twice as high as its letters. The frame stands right of its place, about whose height its
// first row is.
bool MakeTolerance(EntityContext& context, tEntity& element) {
  const EntityGroups& groups = context.groups;
  if (!groups.Has(10)) return Damaged(context, "has no location");
  context.source.drawing.Text().DecodeMText(FrameText(groups.Text()), context.lines.text, '\n', '\n');
  if (Trimmed(context.lines.text).empty()) return Damaged(context, "has no text");
  const Vertex& along = groups.Point(1);
  const bool isTurned = groups.Has(11) && IsFinite(along);
  BeginLines(context, {.place = groups.Point(0),
                       .normal = groups.Extrusion(),
                       .angle = isTurned ? std::atan2(along.y, along.x) / kRadians : 0,
                       .size = context.lines.size,
                       .spacing = 1.2});
  context.lines.just = JustificationCode({TextPlacement::kLeft, TextPlacement::kCentre});
  return StoreTextLine(context, element);
}

}  // namespace tesselink
