// SPDX-License-Identifier: MIT
#include "formats/dxf/TextLines.h"

#include <algorithm>
#include <cmath>

#include "core/element/Justification.h"
#include "core/element/VertexAlgebra.h"
#include "formats/dxf/EntityStoring.h"

namespace tesselink {
namespace {

bool IsBlank(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
}

// Whether the font may be too wide for the width at which lines are broken: most have letters of more than half their
// height.
bool MayBeBroken(std::string_view text, double letters) {
  double letter = 0;
  for (const char c : text) {
    const bool begins = (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    letter = c == '\n' || c == '\r' ? 0 : letter + (begins ? 1 : 0);
    if (letter > letters) return true;
  }
  return false;
}

// Leaves out what is blank before the breaks of columns, so that none is filled by it.
void DropBlankEnds(std::string& text) {
  std::size_t kept = 0;
  for (const char c : text) {
    while (c == '\r' && kept > 0 && text[kept - 1] != '\r' && IsBlank({&text[kept - 1], 1})) --kept;
    text[kept++] = c;
  }
  text.resize(kept);
}

// How many columns the lines fill, and how far the last line of the longest one is from its first.
struct Filled {
  std::size_t columns = 1;
  double depth = 0;
};

Filled Fill(TextLines& lines, double apart) {
  Filled filled;
  while (lines.HasNext()) {
    filled.depth = std::max(filled.depth, static_cast<double>(lines.row) * apart);
    filled.columns = std::max(filled.columns, lines.column + 1);
    lines.Take();
  }
  lines.at = lines.row = lines.column = 0;
  return filled;
}

// Puts the columns side by side; the attachment point is that of all of them together.
void PlaceColumns(TextLines& lines, const TextBlock& block, const Vertex& along, const Filled& filled) {
  TextColumns& columns = lines.columns;
  if (columns.count == 0) columns.count = filled.columns;
  const double apart = columns.width + columns.gutter;
  lines.aside = apart * along;
  const double beyond = static_cast<double>(columns.count - 1) * apart;
  lines.first = lines.first - (0.5 * block.across * beyond) * along;
  lines.GoTo(0);
}

}  // namespace

void TextColumns::Clear() {
  width = gutter = 0;
  heights.clear();
  count = 0;
  isReversed = false;
}

// A column is full when the next line would end below it; the last one takes what is left.
std::string_view TextLines::Take() {
  const std::size_t begin = at, end = std::min(text.find_first_of("\n\r", at), text.size());
  const bool breaks = end < text.size() && text[end] == '\r';
  at = end + 1;
  place = place + step;
  ++row;
  if (columns.width > 0) {
    const double height = columns.Height(column), depth = static_cast<double>(row) * Length(step) + size;
    constexpr double kRounding = 1e-9;
    const bool isFull = height > 0 && depth > height * (1 + kRounding);
    if (breaks || (isFull && (columns.count == 0 || column + 1 < columns.count))) GoTo(column + 1);
  }
  return std::string_view(text).substr(begin, end - begin);
}

void TextLines::GoTo(std::size_t to) {
  column = to;
  row = 0;
  const std::size_t across = columns.isReversed && to < columns.count ? columns.count - 1 - to : to;
  place = first + static_cast<double>(across) * aside;
}

// Lines stand 5/3 of the height apart, times the factor of the text; the place is that of the first line, of the middle
// or of the last line. What is blank behind the last letter counts as lines, but none are made of it.
void BeginLines(EntityContext& context, const TextBlock& block) {
  TextLines& lines = context.lines;
  const double apart = block.size * 5 / 3 * (std::isfinite(block.spacing) && block.spacing > 0 ? block.spacing : 1);
  const double angle = block.angle / kDegrees;
  const Vertex along{std::cos(angle), std::sin(angle), 0}, up = Cross(ObjectCoordinates(block.normal).Normal(), along);
  const bool inColumns = lines.columns.width > 0;
  const double width = inColumns ? lines.columns.width : block.width;
  double depth = static_cast<double>(std::count(lines.text.begin(), lines.text.end(), '\n')) * apart;
  if (width > 0 && MayBeBroken(lines.text, 2 * width / block.size)) context.lost |= kLostBreaks;
  while (!lines.text.empty() && IsBlank({&lines.text.back(), 1})) lines.text.pop_back();
  lines.step = -apart * up;
  lines.angle = block.angle;
  lines.size = block.size;
  lines.just = JustificationCode({block.across, TextPlacement::kTop - 16 * block.row});
  lines.at = lines.row = lines.column = 0;
  Filled filled;
  if (inColumns) {
    DropBlankEnds(lines.text);
    filled = Fill(lines, apart);
    const double height = *std::max_element(lines.columns.heights.begin(), lines.columns.heights.end());
    depth = height > 0 ? height - block.size : filled.depth;
  }
  lines.place = lines.first = block.place + 0.5 * block.row * depth * up;
  if (inColumns) PlaceColumns(lines, block, along, filled);
}

bool StoreTextLine(EntityContext& context, tEntity& element) {
  TextLines& lines = context.lines;
  while (lines.HasNext()) {
    const Vertex place = lines.place;
    element.Text = lines.Take();
    if (IsBlank(element.Text) && lines.HasNext()) continue;
    element.TextAng = lines.angle;
    element.TextSize = lines.size;
    element.TextJust = lines.just;
    if (StorePoint(context, element, kText, place)) return true;
    lines.at = TextLines::kNone;  // the others lie nowhere either
  }
  return false;
}

}  // namespace tesselink
