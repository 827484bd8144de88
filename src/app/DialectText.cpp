// SPDX-License-Identifier: MIT
#include "app/DialectText.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "core/run/Translatable.h"

namespace tesselink {
namespace {

// Of what of a drawing a sentence tells.
enum class Of {
  Always,
  Table,
  PointFile,
  Unread,
  AtOrigin,
  Areas,
  Parts,
  Closed,
  Arcs,
  Curves,
  Heights,
  Texts,
  Symbols
};

struct Sentence {
  std::string_view inputs, outputs;  // keys, divided by blanks; empty: all
  Of of;
  Dialect dialect;
  const char *one, *many;
  std::string_view unless = {};  // an option that decides it
};

constexpr std::string_view kShapefiles = "shp multishp";
constexpr Dialect kC = Dialect::Classic, kS = Dialect::Standard;

constexpr Sentence kSentences[] = {
    // What is not read, and not read as it is.
    {"mol", "", Of::Always, kC, TRANSLATABLE("Dialect", "an overlay delivers nothing"),
     TRANSLATABLE("Dialect", "an overlay delivers nothing")},
    {"mol", "", Of::Always, kS, TRANSLATABLE("Dialect", "an overlay is refused"),
     TRANSLATABLE("Dialect", "an overlay is refused")},
    {kShapefiles, "", Of::Table, kC, TRANSLATABLE("Dialect", "shape 1 takes row 2's attributes"),
     TRANSLATABLE("Dialect", "shape 1 takes row 2's attributes")},
    {kShapefiles, "", Of::Table, kS, TRANSLATABLE("Dialect", "each shape has its own row's attributes"),
     TRANSLATABLE("Dialect", "each shape has its own row's attributes")},
    {"", "", Of::Unread, kC, TRANSLATABLE("Dialect", "%1 element is not read (%2)"),
     TRANSLATABLE("Dialect", "%1 elements are not read (%2)")},
    {"", "", Of::AtOrigin, kC, TRANSLATABLE("Dialect", "%1 element at 0, 0 is left out"),
     TRANSLATABLE("Dialect", "%1 elements at 0, 0 are left out")},
    {"cdf", "", Of::PointFile, kC, TRANSLATABLE("Dialect", "the points beside the drawing are not read"),
     TRANSLATABLE("Dialect", "the points beside the drawing are not read")},
    {"cdf", "", Of::PointFile, kS, TRANSLATABLE("Dialect", "the points beside the drawing are read"),
     TRANSLATABLE("Dialect", "the points beside the drawing are read")},
    {kShapefiles, "", Of::Areas, kC, TRANSLATABLE("Dialect", "%1 area becomes a line"),
     TRANSLATABLE("Dialect", "%1 areas become lines")},
    {kShapefiles, "", Of::Parts, kC, TRANSLATABLE("Dialect", "%1 shape of several parts is taken apart"),
     TRANSLATABLE("Dialect", "%1 shapes of several parts are taken apart")},
    {"dxf", "", Of::Symbols, kC, TRANSLATABLE("Dialect", "%1 block comes as a point"),
     TRANSLATABLE("Dialect", "%1 blocks come as points"), "blocks"},
    {"dxf", "", Of::Always, kS, TRANSLATABLE("Dialect", "blocks come as what they draw"),
     TRANSLATABLE("Dialect", "blocks come as what they draw"), "blocks"},
    // What is not written, and what other programs do not find.
    {"", "dxf", Of::Arcs, kC, TRANSLATABLE("Dialect", "%1 arc is not written"),
     TRANSLATABLE("Dialect", "%1 arcs are not written")},
    {"", "dxf", Of::Arcs, kS, TRANSLATABLE("Dialect", "%1 arc stays an arc"),
     TRANSLATABLE("Dialect", "%1 arcs stay arcs")},
    {"", "dxf", Of::Closed, kC, TRANSLATABLE("Dialect", "other programs miss %1 closed chain"),
     TRANSLATABLE("Dialect", "other programs miss %1 closed chains")},
    {"", "dxf", Of::Closed, kS, TRANSLATABLE("Dialect", "%1 closed chain stays closed"),
     TRANSLATABLE("Dialect", "%1 closed chains stay closed")},
    {"", "shp", Of::Always, kC, TRANSLATABLE("Dialect", "other programs do not read the output's attribute table"),
     TRANSLATABLE("Dialect", "other programs do not read the output's attribute table")},
    {"", "shp", Of::Always, kS, TRANSLATABLE("Dialect", "other programs read the output's attribute table"),
     TRANSLATABLE("Dialect", "other programs read the output's attribute table")},
    {kShapefiles, "shp dxf", Of::Table, kC, TRANSLATABLE("Dialect", "attributes beyond layer and text stay behind"),
     TRANSLATABLE("Dialect", "attributes beyond layer and text stay behind"), "attributes"},
    {kShapefiles, "shp dxf", Of::Table, kS, TRANSLATABLE("Dialect", "all attributes go along"),
     TRANSLATABLE("Dialect", "all attributes go along"), "attributes"},
    {"", "shp", Of::Heights, kC, TRANSLATABLE("Dialect", "%1 element loses its height"),
     TRANSLATABLE("Dialect", "%1 elements lose their heights")},
    {"", "shp", Of::Heights, kS, TRANSLATABLE("Dialect", "%1 element keeps its height"),
     TRANSLATABLE("Dialect", "%1 elements keep their heights")},
    {"", "asc", Of::Closed, kC, TRANSLATABLE("Dialect", "%1 closed chain becomes a line"),
     TRANSLATABLE("Dialect", "%1 closed chains become lines")},
    {"", "asc", Of::Closed, kS, TRANSLATABLE("Dialect", "%1 closed chain stays closed"),
     TRANSLATABLE("Dialect", "%1 closed chains stay closed")},
    {"", "asc", Of::Curves, kC, TRANSLATABLE("Dialect", "%1 circle or arc is drawn in steps of 10 degrees"),
     TRANSLATABLE("Dialect", "%1 circles and arcs are drawn in steps of 10 degrees"), "tolerance"},
    {"", "asc", Of::Curves, kS, TRANSLATABLE("Dialect", "%1 circle or arc is drawn finely"),
     TRANSLATABLE("Dialect", "%1 circles and arcs are drawn finely"), "tolerance"},
    {"", "asc", Of::Texts, kC, TRANSLATABLE("Dialect", "other programs misplace %1 text"),
     TRANSLATABLE("Dialect", "other programs misplace %1 texts")},
    {"", "asc", Of::Always, kC, TRANSLATABLE("Dialect", "other programs may miss the vertices of chains"),
     TRANSLATABLE("Dialect", "other programs may miss the vertices of chains")},
    {"", "cdf", Of::Always, kC, TRANSLATABLE("Dialect", "numbers too long for their columns are cut"),
     TRANSLATABLE("Dialect", "numbers too long for their columns are cut")},
    {"", "cdf", Of::Always, kS, TRANSLATABLE("Dialect", "numbers too long for their columns are rounded"),
     TRANSLATABLE("Dialect", "numbers too long for their columns are rounded")},
};

bool Among(std::string_view keys, std::string_view key) {
  for (std::size_t begin = 0; begin < keys.size();) {
    const std::size_t end = std::min(keys.find(' ', begin), keys.size());
    if (keys.substr(begin, end - begin) == key) return true;
    begin = end + 1;
  }
  return keys.empty();
}

std::int64_t CountOf(Of of, const DrawingFacts& drawing, std::string& names) {
  std::int64_t unread = 0;
  switch (of) {
    case Of::Always:
      return 1;
    case Of::Table:
      return drawing.table ? 1 : 0;
    case Of::PointFile:
      return drawing.pointFile ? 1 : 0;
    case Of::Unread:
      for (const auto& [type, count] : drawing.unread) {
        if (!IsReadInStandardAlone(type)) continue;
        unread += count;
        names += (names.empty() ? "" : ", ") + type;
      }
      return unread;
    case Of::AtOrigin:
      return drawing.atOrigin;
    case Of::Areas:
      return drawing.areas;
    case Of::Parts:
      return drawing.parts;
    case Of::Closed:
      return drawing.closed;
    case Of::Arcs:
      return drawing.kinds.Of("arc");
    case Of::Curves:
      return drawing.kinds.Of("arc") + drawing.kinds.Of("circle");
    case Of::Heights:
      return drawing.heights;
    case Of::Texts:
      return drawing.kinds.Of("text");
    case Of::Symbols:
      return drawing.symbols;
  }
  return 0;
}

}  // namespace

bool IsReadInStandardAlone(std::string_view type) {
  constexpr std::array<std::string_view, 15> kTypes{
      "HATCH",  "DIMENSION", "ARC_DIMENSION", "ACAD_TABLE",  "SHAPE",     "IMAGE",    "WIPEOUT",   "3DLINE",
      "PointZ", "PointM",    "MultiPointZ",   "MultiPointM", "PolylineM", "PolygonM", "MultiPatch"};
  return std::find(kTypes.begin(), kTypes.end(), type) != kTypes.end();
}

std::vector<DialectSentence> DialectSentences(const InputFormat& input, const OutputFormat& output, Dialect dialect,
                                              const OptionValues& values, const DrawingFacts& drawing) {
  std::vector<DialectSentence> told;
  for (const Sentence& sentence : kSentences) {
    if (sentence.dialect != dialect || !Among(sentence.inputs, input.key) || !Among(sentence.outputs, output.key))
      continue;
    if (!sentence.unless.empty() && values.Has(sentence.unless)) continue;
    std::string names;
    const std::int64_t count = CountOf(sentence.of, drawing, names);
    if (count > 0) told.push_back({sentence.one, sentence.many, count, names});
  }
  return told;
}

}  // namespace tesselink
