// SPDX-License-Identifier: MIT
#include "core/element/Extents.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/element/VertexAlgebra.h"

namespace tesselink {
namespace {

// In two strands, of which neither waits for the other.
void Widen(std::span<const double> values, double& least, double& greatest) {
  double least1 = least, least2 = least, greatest1 = greatest, greatest2 = greatest;
  std::size_t i = 0;
  for (; i + 1 < values.size(); i += 2) {
    least1 = values[i] < least1 ? values[i] : least1;
    greatest1 = values[i] > greatest1 ? values[i] : greatest1;
    least2 = values[i + 1] < least2 ? values[i + 1] : least2;
    greatest2 = values[i + 1] > greatest2 ? values[i + 1] : greatest2;
  }
  if (i < values.size()) {
    least1 = values[i] < least1 ? values[i] : least1;
    greatest1 = values[i] > greatest1 ? values[i] : greatest1;
  }
  least = std::min(least1, least2);
  greatest = std::max(greatest1, greatest2);
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
