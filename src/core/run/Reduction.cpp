#include "core/run/Reduction.h"

#include "core/run/Losses.h"

namespace tesselink {
namespace {

Vertex VertexAt(const tEntity& entity, tEntity::Index i) { return {entity.x(i), entity.Y(i), entity.Height(i)}; }

// Stores from the last vertex down, so that each array grows once.
void StoreVertices(tEntity& entity, const VertexChain& chain) {
  entity.ClearVertices();
  for (auto i = std::ssize(chain); i-- > 0;) {
    const Vertex& v = chain[static_cast<std::size_t>(i)];
    entity.x(i, v.x);
    entity.Y(i, v.y);
    entity.Height(i, v.z);
  }
}

}  // namespace

bool Reduction::Fits(const tEntity& entity) const {
  return entity.IsPlain() ||
         ((entity.Parts.empty() || holding_.parts) && (!entity.IsArea || holding_.areas) &&
          (entity.Bulges.empty() || holding_.bulges) && (entity.Measures.empty() || holding_.measures));
}

// A chain of several parts is drawn part by part, since its parts begin elsewhere afterwards.
void Reduction::DrawBulges(tEntity& entity) {
  losses_.Add(WarningKind::Curves);
  entity.Bulges.resize(static_cast<std::size_t>(entity.PointCount() + 1));
  chain_.clear();
  for (std::size_t part = 0; part < entity.PartCount(); ++part) {
    const tEntity::Index begin = entity.PartBegin(part), end = entity.PartEnd(part);
    if (part > 0) entity.Parts[part - 1] = std::ssize(chain_);
    if (begin < end) chain_.push_back(VertexAt(entity, begin));
    for (tEntity::Index i = begin; i + 1 < end; ++i) {
      AppendBulge(chain_, VertexAt(entity, i), VertexAt(entity, i + 1), entity.Bulges[static_cast<std::size_t>(i)]);
    }
  }
  std::vector<tEntity::Index> parts;
  parts.swap(entity.Parts);
  StoreVertices(entity, chain_);
  entity.Parts.swap(parts);
}

void Reduction::Reduce(tEntity& entity, const Sink& sink) {
  if (!entity.Bulges.empty() && !holding_.bulges) DrawBulges(entity);
  if (!entity.Measures.empty() && !holding_.measures) {
    if (entity.HasMeasure()) losses_.Add(WarningKind::Measures);
    entity.Measures.clear();
  }
  if (entity.IsArea && !holding_.areas) {
    losses_.Add(WarningKind::Areas);
    entity.IsArea = false;
    entity.Closed = true;
  }
  if (entity.Parts.empty() || holding_.parts) return sink(entity);
  losses_.Add(WarningKind::PartsSplit);
  part_.CountOrigin(true);
  for (std::size_t part = 0; part < entity.PartCount(); ++part) {
    const tEntity::Index begin = entity.PartBegin(part), end = entity.PartEnd(part);
    if (begin >= end) continue;
    part_.CopyAttributes(entity);
    part_.ClearVertices();
    for (tEntity::Index i = end; i-- > begin;) {
      part_.x(i - begin, entity.x(i));
      part_.Y(i - begin, entity.Y(i));
      part_.Height(i - begin, entity.Height(i));
    }
    sink(part_);
  }
}

}  // namespace tesselink
