#include "core/run/Reduction.h"

#include "core/run/Losses.h"

namespace tesselink {
namespace {

Vertex VertexAt(const tEntity& entity, tEntity::Index i) { return {entity.x(i), entity.Y(i), entity.Height(i)}; }

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
    losses_.Add(WarningKind::Measures);
    entity.Measures.clear();
  }
  if (entity.IsArea && !holding_.areas) {
    losses_.Add(WarningKind::Areas);
    entity.IsArea = false;
    entity.Closed = true;
  }
  if (entity.Parts.empty() || holding_.parts) return sink(entity);
  losses_.Add(WarningKind::PartsSplit);
  // The text attributes are copied once, the vertices part by part.
  for (std::size_t part = 0; part < entity.PartCount(); ++part) {
    part_.CopyAttributes(entity);
    chain_.clear();
    for (tEntity::Index i = entity.PartBegin(part); i < entity.PartEnd(part); ++i)
      chain_.push_back(VertexAt(entity, i));
    if (chain_.empty()) continue;
    StoreVertices(part_, chain_);
    sink(part_);
  }
}

}  // namespace tesselink
