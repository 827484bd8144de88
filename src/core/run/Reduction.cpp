// SPDX-License-Identifier: MIT
#include "core/run/Reduction.h"

#include "core/run/Losses.h"

namespace tesselink {

bool Reduction::HoldsAllOf(const tEntity& entity) const {
  return (entity.Parts.empty() || HoldsPartsOf(entity)) && (!entity.IsArea || HoldsAreaOf(entity)) &&
         (entity.Bulges.empty() || HoldsBulgesOf(entity)) && (entity.Measures.empty() || holding_.measures);
}

bool Reduction::HoldsBulgesOf(const tEntity& entity) const { return holding_.bulges && entity.IsLevel(); }

void Reduction::Reduce(tEntity& entity, const Sink& sink) {
  lost_.clear();
  if (IsCurve(entity.bType) && !holding_.curves) {
    lost_.push_back(WarningKind::Curves);
    if (!DrawCurve(entity, chain_, tolerance_)) lost_.push_back(WarningKind::CoarseCurves);
  }
  if (!entity.Bulges.empty() && !HoldsBulgesOf(entity)) {
    lost_.push_back(WarningKind::Curves);
    if (!DrawBulges(entity, chain_, tolerance_)) lost_.push_back(WarningKind::CoarseCurves);
  }
  if (!entity.Measures.empty() && !holding_.measures) {
    if (entity.HasMeasure()) lost_.push_back(WarningKind::Measures);
    entity.Measures.clear();
  }
  if (entity.IsArea && !HoldsAreaOf(entity)) {
    lost_.push_back(WarningKind::Areas);
    entity.IsArea = false;
    entity.Closed = entity.WasArea = true;
  }
  if (!HandOut(entity, sink)) return;
  for (const WarningKind kind : lost_) losses_.Add(kind);
}

// The text attributes are copied once, the vertices part by part.
bool Reduction::HandOut(tEntity& entity, const Sink& sink) {
  if (entity.Parts.empty() || HoldsPartsOf(entity)) return sink(entity);
  lost_.push_back(WarningKind::PartsSplit);
  bool taken = false;
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
    taken = sink(part_) || taken;
  }
  return taken;
}

}  // namespace tesselink
