// SPDX-License-Identifier: MIT
#include "core/element/Extents.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "core/element/VertexAlgebra.h"

namespace tesselink {
namespace {

using Pair = double __attribute__((vector_size(16)));

Pair PairAt(const double* values) {
  Pair pair;
  std::memcpy(&pair, values, sizeof pair);
  return pair;
}

// Two by two, and in two strands, of which neither waits for the other.
void Widen(std::span<const double> values, double& least, double& greatest) {
  constexpr std::size_t kAtOnce = 4;
  Pair least1{least, least}, least2 = least1, greatest1{greatest, greatest}, greatest2 = greatest1;
  const auto widen = [&](std::size_t at) {
    const Pair pair1 = PairAt(&values[at]), pair2 = PairAt(&values[at + 2]);
    least1 = pair1 < least1 ? pair1 : least1;
    greatest1 = pair1 > greatest1 ? pair1 : greatest1;
    least2 = pair2 < least2 ? pair2 : least2;
    greatest2 = pair2 > greatest2 ? pair2 : greatest2;
  };
  const std::size_t size = values.size(), whole = size - size % kAtOnce;
  for (std::size_t i = 0; i < whole; i += kAtOnce) widen(i);
  if (whole > 0 && whole < size) widen(size - kAtOnce);  // some of them once more
  least = std::min({least1[0], least1[1], least2[0], least2[1]});
  greatest = std::max({greatest1[0], greatest1[1], greatest2[0], greatest2[1]});
  for (std::size_t i = 0; whole == 0 && i < size; ++i) {
    least = values[i] < least ? values[i] : least;
    greatest = values[i] > greatest ? values[i] : greatest;
  }
}

}  // namespace

// Where z is given for fewer vertices, that of the others is 0.
void Extents::AddRun(const tEntity& entity, tEntity::Index begin, tEntity::Index end) {
  const auto first = static_cast<std::size_t>(begin), count = static_cast<std::size_t>(end - begin);
  Widen(entity.AllX().subspan(first, count), minX, maxX);
  Widen(entity.AllY().subspan(first, count), minY, maxY);
  const std::span<const double> z = entity.AllZ();
  const std::size_t given = std::min(z.size() - std::min(z.size(), first), count);
  Widen(z.subspan(std::min(z.size(), first), given), minZ, maxZ);
  if (given < count) Widen(std::array{0.0}, minZ, maxZ);
}

// An arc reaches furthest where its tangent runs along an axis: at most at four points between its ends.
void Extents::AddArcs(const tEntity& entity) {
  for (std::size_t part = 0; part < entity.PartCount(); ++part) {
    const tEntity::Index end = std::min(entity.PartEnd(part) - 1, std::ssize(entity.Bulges));
    for (tEntity::Index i = entity.PartBegin(part); i < end; ++i) {
      const BulgeArc arc(VertexAt(entity, i), VertexAt(entity, i + 1), entity.Bulges[static_cast<std::size_t>(i)]);
      const double begin = std::min(arc.Direction(), arc.Direction() + arc.Angle());
      const double along = kTurn / 4;
      const double last = begin + std::fabs(arc.Angle());
      for (int quarter = static_cast<int>(std::ceil(begin / along)); quarter * along < last; ++quarter) {
        const Vertex furthest = arc.At(quarter * along - arc.Direction());
        Add(furthest.x, furthest.y, furthest.z);
      }
    }
  }
}

}  // namespace tesselink
