// SPDX-License-Identifier: MIT
#include "formats/gpkg/GPKGGeometry.h"

#include <bit>
#include <cstdint>
#include <limits>

namespace tesselink {
namespace {

constexpr std::uint8_t kIsLittle = std::endian::native == std::endian::little ? 1 : 0;
constexpr std::uint32_t kPoint2D = 1, kLineString = 2, kPolygon = 3, kMultiPoint = 4, kMultiLineString = 5,
                        kMultiPolygon = 6, kWithZ = 1000, kWithM = 2000;

class Builder {
 public:
  Builder(std::string& bytes, const tEntity& entity, const GPKGForm& form)
      : bytes_(bytes), entity_(entity), form_(form) {}

  template <typename Value>
  void Put(Value value) {
    bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
  }
  void Count(std::size_t count) { Put(static_cast<std::uint32_t>(count)); }
  void Begin(std::uint32_t type) {
    Put(kIsLittle);
    Put(type + (form_.heights ? kWithZ : 0) + (form_.measures ? kWithM : 0));
  }
  void Vertex(tEntity::Index at) {
    Put(entity_.x(at));
    Put(entity_.Y(at));
    if (form_.heights) Put(entity_.Height(at));
    if (form_.measures) Put(Measure(static_cast<std::size_t>(at)));
  }
  void Vertices(const FeatureChain& chain) {
    Count(static_cast<std::size_t>(chain.Count()));
    for (tEntity::Index i = 0; i < chain.Count(); ++i) Vertex(chain.At(i));
  }

 private:
  double Measure(std::size_t at) const {
    return at < entity_.Measures.size() ? entity_.Measures[at] : std::numeric_limits<double>::quiet_NaN();
  }

  std::string& bytes_;
  const tEntity& entity_;
  const GPKGForm& form_;
};

void PutHeader(Builder& builder, const Extents& box, const GPKGForm& form, bool hasBox) {
  constexpr std::uint8_t kVersion = 0, kBoxOfXY = 2;
  builder.Put('G');
  builder.Put('P');
  builder.Put(kVersion);
  builder.Put(static_cast<std::uint8_t>(kIsLittle | (hasBox ? kBoxOfXY : 0)));
  builder.Put(std::int32_t{form.system});
  if (!hasBox) return;
  for (const double bound : {box.minX, box.maxX, box.minY, box.maxY}) builder.Put(bound);
}

void PutPoints(Builder& builder, const FeatureChain& points, bool isMulti) {
  if (isMulti) {
    builder.Begin(kMultiPoint);
    builder.Count(static_cast<std::size_t>(points.Count()));
  }
  for (tEntity::Index i = points.begin; i < points.end; ++i) {
    builder.Begin(kPoint2D);
    builder.Vertex(i);
  }
}

void PutPolygons(Builder& builder, std::span<const FeatureChain> rings, std::size_t count) {
  builder.Begin(kMultiPolygon);
  builder.Count(count);
  for (std::size_t i = 0; i < rings.size();) {
    std::size_t end = i + 1;
    while (end < rings.size() && !rings[end].beginsPolygon) ++end;
    builder.Begin(kPolygon);
    builder.Count(end - i);
    for (; i < end; ++i) builder.Vertices(rings[i]);
  }
}

}  // namespace

Extents BoxOf(const FeatureGeometry& geometry, std::span<const FeatureChain> chains) {
  const tEntity& entity = geometry.Element();
  Extents box;
  for (const FeatureChain& chain : chains) {
    for (tEntity::Index i = chain.begin; i < chain.end; ++i) box.Add(entity.x(i), entity.Y(i), 0);
  }
  return box;
}

void AppendGeometry(std::string& bytes, const FeatureGeometry& geometry, std::span<const FeatureChain> chains,
                    const Extents& box, const GPKGForm& form) {
  Builder builder(bytes, geometry.Element(), form);
  switch (geometry.Kind()) {
    case FeatureKind::Points:
    case FeatureKind::Texts:
      PutHeader(builder, box, form, form.isMulti);
      PutPoints(builder, chains[0], form.isMulti);
      break;
    case FeatureKind::Lines:
      PutHeader(builder, box, form, true);
      builder.Begin(kMultiLineString);
      builder.Count(chains.size());
      for (const FeatureChain& chain : chains) {
        builder.Begin(kLineString);
        builder.Vertices(chain);
      }
      break;
    case FeatureKind::Areas:
      PutHeader(builder, box, form, true);
      PutPolygons(builder, chains, geometry.Polygons());
  }
}

}  // namespace tesselink
