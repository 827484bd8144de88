// SPDX-License-Identifier: MIT
// Vertices of a shapefile's records: from the file into an element.
#include <algorithm>
#include <cmath>
#include <limits>

#include "core/run/Report.h"
#include "formats/shape/Bytes.h"
#include "formats/shape/ShapeRecords.h"

namespace tesselink {
namespace {

// What a part of a MultiPatch is; any other is a ring.
constexpr std::int32_t kTriangleStrip = 0;
constexpr std::int32_t kTriangleFan = 1;

}  // namespace

// A ring is its own outline, and a fan is one but for the edges inside it. A strip runs from side to side: down one
// side and back up the other is its outline.
void ShapeRecords::OutlineOfPatch(tEntity& entity, std::int32_t part) {
  const auto type =
      LittleEndian<std::int32_t>(Piece(partStarts_, current_.partTypesAt + std::int64_t{part} * 4, 4).data());
  if (type == kTriangleStrip || type == kTriangleFan) {
    Warn(WarningKind::Triangles, "a strip or fan of triangles is delivered as its outline, without the edges inside");
  }
  if (type != kTriangleStrip) return;
  const tEntity::Index last = entity.XCount();
  strip_.clear();
  for (tEntity::Index i = 0; i <= last; ++i) {
    strip_.push_back({entity.x(i), entity.Y(i), entity.Height(i)});
  }
  tEntity::Index to = 0;
  const auto put = [&](tEntity::Index from) {
    const Vertex& vertex = strip_[static_cast<std::size_t>(from)];
    entity.x(to, vertex.x);
    entity.Y(to, vertex.y);
    entity.Height(to++, vertex.z);
  };
  for (tEntity::Index i = 0; i <= last; i += 2) put(i);
  for (tEntity::Index i = last % 2 == 0 ? last - 1 : last; i > 0; i -= 2) put(i);
}

// False when no vertex is left.
bool ShapeRecords::StoreVertices(tEntity& entity, Range range) {
  const bool finite = range.count == 1 ? StorePlace(entity, range.first) : StoreXY(entity, range);
  if (current_.zAt != 0) StoreZ(entity, range);
  if (current_.mAt != 0) StoreMeasures(entity, range);
  return finite || DropWildVertices(entity);
}

// Likewise, of a single vertex.
bool ShapeRecords::StorePlace(tEntity& entity, std::int32_t index) {
  const auto xy = Piece(vertices_, current_.pointsAt + std::int64_t{index} * kXYSize, kXYSize);
  const auto x = LittleEndian<double>(xy.data()), y = LittleEndian<double>(&xy[8]);
  entity.x(0, x);
  entity.Y(0, y);
  return std::isfinite(x) && std::isfinite(y);
}

// False when not all is finite.
bool ShapeRecords::StoreXY(tEntity& entity, Range range) {
  constexpr std::int32_t kAtOnce = 2048;
  const auto [x, y] = entity.ToStore(range.count);
  double nothing = 0;  // stays 0 as long as all numbers are finite
  for (std::int32_t begin = 0; begin < range.count; begin += kAtOnce) {
    const std::int32_t count = std::min(kAtOnce, range.count - begin);
    const auto xy = Piece(vertices_, current_.pointsAt + std::int64_t{range.first + begin} * kXYSize,
                          static_cast<std::size_t>(count * kXYSize));
    const std::byte* point = xy.data();
    for (auto i = static_cast<std::size_t>(begin), end = i + static_cast<std::size_t>(count); i < end; ++i) {
      x[i] = LittleEndian<double>(point);
      y[i] = LittleEndian<double>(point + 8);
      nothing += (x[i] - x[i]) + (y[i] - y[i]);
      point += kXYSize;
    }
  }
  return nothing == 0;
}

void ShapeRecords::StoreZ(tEntity& entity, Range range) {
  constexpr std::int32_t kAtOnce = 4096;
  bool wild = false;
  for (std::int32_t end = range.count; end > 0;) {
    const std::int32_t begin = std::max(end - kAtOnce, 0);
    const auto values =
        Piece(values_, current_.zAt + std::int64_t{range.first + begin} * 8, static_cast<std::size_t>(end - begin) * 8);
    for (std::int32_t i = end - 1; i >= begin; --i) {
      const auto z = LittleEndian<double>(&values[static_cast<std::size_t>(i - begin) * 8]);
      const bool fits = std::fabs(z) <= static_cast<double>(std::numeric_limits<float>::max());
      entity.Height(i, fits ? z : 0);
      wild = wild || !fits;
    }
    end = begin;
  }
  if (wild) Warn(WarningKind::WildZ, "holds z values that are no number or too large; they were read as 0");
}

void ShapeRecords::StoreMeasures(tEntity& entity, Range range) {
  constexpr std::int32_t kAtOnce = 4096;
  entity.Measures.clear();
  for (std::int32_t begin = 0; begin < range.count; begin += kAtOnce) {
    const std::int32_t end = std::min(begin + kAtOnce, range.count);
    const auto values =
        Piece(values_, current_.mAt + std::int64_t{range.first + begin} * 8, static_cast<std::size_t>(end - begin) * 8);
    for (std::size_t i = 0; i < values.size(); i += 8) {
      const auto m = LittleEndian<double>(&values[i]);
      entity.Measures.push_back(std::isfinite(m) && m > kLeastMeasure ? m : std::numeric_limits<double>::quiet_NaN());
    }
  }
}

bool ShapeRecords::DropWildVertices(tEntity& entity) {
  const tEntity::Index count = entity.XCount() + 1;
  tEntity::Index kept = 0;
  for (tEntity::Index i = 0; i < count; ++i) {
    if (!std::isfinite(entity.x(i)) || !std::isfinite(entity.Y(i))) continue;
    entity.x(kept, entity.x(i));
    entity.Y(kept, entity.Y(i));
    if (current_.zAt != 0) entity.Height(kept, entity.Height(i));
    if (current_.mAt != 0)
      entity.Measures[static_cast<std::size_t>(kept)] = entity.Measures[static_cast<std::size_t>(i)];
    ++kept;
  }
  Warn(WarningKind::NotFinite, "vertices without a finite x and y were left out: " + std::to_string(count - kept));
  if (kept == 0) {
    entity.ClearVertices();
    return false;
  }
  for (tEntity::Index i = kept; i < count; ++i) entity.RemoveLastVertex();
  if (current_.mAt != 0) entity.Measures.resize(static_cast<std::size_t>(kept));
  return true;
}

}  // namespace tesselink
