// SPDX-License-Identifier: MIT
// Elements of whatever the bytes say go to every writer, in both dialects and as a run hands them over, and what was
// written is read again. In the standard dialect every element, or each of those that stand for it there, comes back
// and begins where it began, to 15 digits, with the bulge that it began with; but not from CDF, which keeps points
// elsewhere and no blank texts, and has less room for numbers.
#include <fuzzer/FuzzedDataProvider.h>

#include <cmath>
#include <cstring>
#include <vector>

#include "core/io/Numbers.h"
#include "formats/Formats.h"
#include "fuzz/Harness.h"

namespace tesselink {
namespace {

double Coordinate(FuzzedDataProvider& bytes) {
  if (bytes.ConsumeBool()) return bytes.ConsumeIntegral<std::int16_t>();
  const auto bits = bytes.ConsumeIntegral<std::uint64_t>();
  double value = 0;
  std::memcpy(&value, &bits, sizeof value);
  constexpr double kMost = 1e300;  // close to the greatest number 15 digits may be a greater one
  return std::fabs(value) < kMost ? value : 0;
}

// Readers deliver texts without NULs and line breaks.
std::string Text(FuzzedDataProvider& bytes) {
  std::string text = bytes.ConsumeRandomLengthString(300);
  std::erase_if(text, [](char c) { return c == '\0' || c == '\r' || c == '\n'; });
  return text;
}

// On places near enough to each other that the arcs take few vertices; level, as they must be.
void AddBulges(FuzzedDataProvider& bytes, tEntity& entity) {
  for (tEntity::Index i = 0; i <= entity.PointCount(); ++i) {
    entity.x(i, bytes.ConsumeIntegral<std::int8_t>());
    entity.Y(i, bytes.ConsumeIntegral<std::int8_t>());
    entity.Height(i, entity.Height(0));
    entity.Bulges.push_back(bytes.ConsumeIntegral<std::int8_t>() / 16.0);
  }
}

// Several parts, rings and m values, as shapefiles have them.
void AddParts(tEntity& entity, FuzzedDataProvider& bytes) {
  const tEntity::Index count = entity.PointCount() + 1;
  for (tEntity::Index i = 1; i < count; ++i) {
    if (bytes.ConsumeBool()) entity.Parts.push_back(i);
  }
  entity.IsArea = count > 0 && bytes.ConsumeBool();
  if (!bytes.ConsumeBool()) return;
  for (tEntity::Index i = 0; i < count; ++i) entity.Measures.push_back(bytes.ConsumeIntegral<std::int16_t>());
}

tEntity Element(FuzzedDataProvider& bytes, Dialect dialect) {
  tEntity entity;
  entity.CountOrigin(dialect == Dialect::Standard);
  entity.bType = bytes.ConsumeIntegralInRange<std::int16_t>(kPoint, kCircle);
  // A group of points comes back as single ones, and a line of many vertices as many lines.
  const tEntity::Index most = entity.bType == kPolyline ? 8 : entity.bType == kLine ? 2 : 1;
  const auto vertices = bytes.ConsumeIntegralInRange<tEntity::Index>(0, most);
  for (tEntity::Index i = 0; i < vertices; ++i) {
    entity.x(i, Coordinate(bytes));
    entity.Y(i, Coordinate(bytes));
    entity.Z(i, static_cast<float>(bytes.ConsumeIntegral<std::int16_t>()));
  }
  if (entity.bType == kPolyline && vertices > 1 && bytes.ConsumeBool()) {
    AddBulges(bytes, entity);
  } else if (dialect == Dialect::Standard && entity.bType == kPolyline) {
    AddParts(entity, bytes);
  }
  entity.Layer = Text(bytes);
  entity.CDFCode = bytes.ConsumeBool() ? Text(bytes) : std::string();
  entity.Text = Text(bytes);
  entity.Closed = bytes.ConsumeBool();
  entity.Colour = bytes.ConsumeIntegral<std::int16_t>();
  entity.RGB = bytes.ConsumeIntegralInRange<std::int32_t>(0, 0xFFFFFF);
  entity.Rad = bytes.ConsumeFloatingPointInRange<float>(0, 1e6F);
  entity.AngStart = bytes.ConsumeFloatingPointInRange<float>(-720, 720);
  entity.AngEnd = bytes.ConsumeFloatingPointInRange<float>(-720, 720);
  entity.TextAng = bytes.ConsumeFloatingPointInRange<double>(-720, 720);
  entity.TextSize = Coordinate(bytes);
  entity.TextJust = bytes.ConsumeIntegral<std::int16_t>();
  return entity;
}

std::vector<tEntity> Elements(const std::uint8_t* data, std::size_t size, Dialect dialect) {
  FuzzedDataProvider bytes(data, size);
  std::vector<tEntity> elements;
  while (bytes.remaining_bytes() > 0 && elements.size() < 50) elements.push_back(Element(bytes, dialect));
  return elements;
}

// Where elements begin, and with what bulge; a curve, for which a chain may stand, begins anywhere.
using Beginnings = std::vector<std::string>;
std::string BeginningOf(const tEntity& element) {
  if (IsCurve(element.bType)) return "";
  std::string beginning = NumberText(element.x(0)) + " " + NumberText(element.Y(0));
  if (!element.Bulges.empty() && element.Bulges[0] != 0) beginning += " " + NumberText(element.Bulges[0]);
  return beginning;
}

Beginnings Written(const OutputFormat& format, const FilterContext& context, std::vector<tEntity> elements,
                   const std::string& path) {
  const auto writer = format.create(context);
  writer->filename(path);
  Beginnings written;
  Reduction reduction(writer->Holds(), writer->losses(), context.options.Curves());
  const auto write = [&](tEntity& element) {
    std::string beginning = BeginningOf(element);
    const bool taken = writer->WriteEntity(element) != WriteResult::Skipped;
    if (taken) written.push_back(std::move(beginning));
    return taken;
  };
  for (tEntity& element : elements) {
    if (element.PointCount() == -1) continue;
    reduction.Fits(element) ? void(write(element)) : reduction.Reduce(element, write);
  }
  writer->Release();
  return written;
}

Beginnings ReadAgain(const InputFormat& format, const FilterContext& context, const std::string& path) {
  const auto reader = format.create(context);
  reader->Layered = false;
  reader->filename(path);
  Pump pump(context.options.dialect);
  Beginnings found;
  while (!reader->Stalled() && pump.Next(*reader)) {
    if (pump.Delivered()) found.push_back(BeginningOf(pump.Element()));
  }
  return found;
}

void ExpectEqual(const Beginnings& written, const Beginnings& found, const std::string& path) {
  bool equal = written.size() == found.size();
  for (std::size_t i = 0; equal && i < found.size(); ++i) equal = written[i].empty() || written[i] == found[i];
  if (equal) return;
  std::fprintf(stderr, "%s: %zu elements written, %zu read\n", path.c_str(), written.size(), found.size());
  for (const Beginnings* of : {&written, &found}) {
    for (const std::string& beginning : *of) std::fprintf(stderr, "  %s\n", beginning.c_str());
  }
  std::abort();
}

void ThereAndBack(const OutputFormat& format, Dialect dialect, const std::vector<tEntity>& elements) {
  SilentPerson person;
  NoSettings settings;
  Report report;
  constexpr double kCoarse = 100;  // circles have few vertices
  const FilterContext context{person, settings, report, {.dialect = dialect, .tolerance = kCoarse}};
  const std::string path = FuzzFolder() + "/w" + format.Extension();
  Beginnings written;
  try {
    written = Written(format, context, elements, path);
  } catch (const Error&) {
    return;
  }
  for (const InputFormat& row : AllFormats().Inputs()) {
    if (row.severalFiles || row.Extension() != format.Extension()) continue;
    Beginnings found;
    try {
      found = ReadAgain(row, context, path);
    } catch (const Error& error) {
      if (dialect == Dialect::Classic) continue;
      std::fprintf(stderr, "%s\n", error.what());
      std::abort();
    }
    if (dialect == Dialect::Standard && row.className != "CDFInFilter") ExpectEqual(written, found, path);
  }
}

}  // namespace
}  // namespace tesselink

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tesselink;
  for (const Dialect dialect : {Dialect::Classic, Dialect::Standard}) {
    const std::vector<tEntity> elements = Elements(data, size, dialect);
    for (const OutputFormat& format : AllFormats().Outputs()) ThereAndBack(format, dialect, elements);
  }
  return 0;
}
