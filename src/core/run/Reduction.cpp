#include "core/run/Reduction.h"

#include "core/run/Losses.h"

namespace tesselink {
namespace {

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
  if (IsCurve(entity.bType) && !holding_.curves) return false;
  return entity.IsPlain() ||
         ((entity.Parts.empty() || holding_.parts) && (!entity.IsArea || holding_.areas) &&
          (entity.Bulges.empty() || HoldsBulgesOf(entity)) && (entity.Measures.empty() || holding_.measures));
}

bool Reduction::HoldsBulgesOf(const tEntity& entity) const { return holding_.bulges && entity.IsLevel(); }

// That a circle is written as a chain, the account of a classic conversion tells already.
void Reduction::DrawCurve(tEntity& entity) {
  if (!tolerance_.IsClassic()) lost_.push_back(WarningKind::Curves);
  chain_.clear();
  if (!AppendCurve(chain_, entity, tolerance_)) lost_.push_back(WarningKind::CoarseCurves);
  entity.Closed = entity.bType == kCircle;
  entity.bType = kPolyline;
  StoreVertices(entity, chain_);
}

// A chain of several parts is drawn part by part, since its parts begin elsewhere afterwards.
void Reduction::DrawBulges(tEntity& entity) {
  lost_.push_back(WarningKind::Curves);
  bool enough = true;
  entity.Bulges.resize(static_cast<std::size_t>(entity.PointCount() + 1));
  chain_.clear();
  for (std::size_t part = 0; part < entity.PartCount(); ++part) {
    const tEntity::Index begin = entity.PartBegin(part), end = entity.PartEnd(part);
    if (part > 0) entity.Parts[part - 1] = std::ssize(chain_);
    if (begin < end) chain_.push_back(VertexAt(entity, begin));
    for (tEntity::Index i = begin; i + 1 < end; ++i) {
      const double bulge = entity.Bulges[static_cast<std::size_t>(i)];
      enough = AppendBulge(chain_, VertexAt(entity, i), VertexAt(entity, i + 1), bulge, tolerance_) && enough;
    }
  }
  if (!enough) lost_.push_back(WarningKind::CoarseCurves);
  std::vector<tEntity::Index> parts;
  parts.swap(entity.Parts);
  StoreVertices(entity, chain_);
  entity.Parts.swap(parts);
}

void Reduction::Reduce(tEntity& entity, const Sink& sink) {
  lost_.clear();
  if (IsCurve(entity.bType) && !holding_.curves) DrawCurve(entity);
  if (!entity.Bulges.empty() && !HoldsBulgesOf(entity)) DrawBulges(entity);
  if (!entity.Measures.empty() && !holding_.measures) {
    lost_.push_back(WarningKind::Measures);
    entity.Measures.clear();
  }
  if (entity.IsArea && !holding_.areas) {
    lost_.push_back(WarningKind::Areas);
    entity.IsArea = false;
    entity.Closed = true;
  }
  if (!HandOut(entity, sink)) return;
  for (const WarningKind kind : lost_) losses_.Add(kind);
}

// The text attributes are copied once, the vertices part by part.
bool Reduction::HandOut(tEntity& entity, const Sink& sink) {
  if (entity.Parts.empty() || holding_.parts) return sink(entity);
  lost_.push_back(WarningKind::PartsSplit);
  bool taken = false;
  for (std::size_t part = 0; part < entity.PartCount(); ++part) {
    part_.CopyAttributes(entity);
    chain_.clear();
    for (tEntity::Index i = entity.PartBegin(part); i < entity.PartEnd(part); ++i)
      chain_.push_back(VertexAt(entity, i));
    if (chain_.empty()) continue;
    StoreVertices(part_, chain_);
    taken = sink(part_) || taken;
  }
  return taken;
}

}  // namespace tesselink
