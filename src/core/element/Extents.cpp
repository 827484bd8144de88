#include "core/element/Extents.h"

#include <algorithm>
#include <cmath>

#include "core/element/VertexAlgebra.h"

namespace tesselink {

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
