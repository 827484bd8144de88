// SPDX-License-Identifier: MIT
#include "formats/FeatureGeometry.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace tesselink {
namespace {

constexpr tEntity::Index kLeastChain = 2, kLeastRing = 4;

bool AreFinite(std::span<const double> values) {
  return std::all_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
}

}  // namespace

FeatureKind FeatureKindOf(const tEntity& entity, const ElementForm& form) {
  if (entity.bType == kText) return FeatureKind::Texts;
  if (entity.bType == kPoint) return FeatureKind::Points;
  const bool ofAreas = form.shape == ElementForm::Shape::Areas;
  return entity.IsArea || (entity.IsNull() && ofAreas) ? FeatureKind::Areas : FeatureKind::Lines;
}

bool FeatureGeometry::Take(const tEntity& entity, FeatureKind kind) {
  entity_ = &entity;
  kind_ = kind;
  areHolesGuessed_ = false;
  chains_.clear();
  if (entity.IsNull() || entity.PointCount() < 0) return true;
  if (!AreFinite(entity.AllX()) || !AreFinite(entity.AllY()) || !AreFinite(entity.AllZ())) return false;
  switch (kind) {
    case FeatureKind::Points:
      chains_.push_back({.end = entity.PointCount() + 1});
      break;
    case FeatureKind::Texts:
      chains_.push_back({.end = 1});
      break;
    case FeatureKind::Lines:
      TakeChains();
      break;
    case FeatureKind::Areas:
      TakeRings();
  }
  return true;
}

std::size_t FeatureGeometry::Polygons() const {
  return static_cast<std::size_t>(
      std::count_if(chains_.begin(), chains_.end(), [](const FeatureChain& chain) { return chain.beginsPolygon; }));
}

// A part with as many vertices as it should have, and its first one behind them where it closes without.
FeatureChain FeatureGeometry::ChainOf(std::size_t part, bool closes, tEntity::Index least) const {
  FeatureChain chain{.begin = entity_->PartBegin(part), .end = entity_->PartEnd(part)};
  const tEntity::Index last = chain.end - 1;
  const bool meets = entity_->x(chain.begin) == entity_->x(last) && entity_->Y(chain.begin) == entity_->Y(last) &&
                     entity_->Height(chain.begin) == entity_->Height(last);
  chain.again = std::max<tEntity::Index>(closes && !meets ? 1 : 0, least - (chain.end - chain.begin));
  return chain;
}

void FeatureGeometry::TakeChains() {
  for (std::size_t part = 0; part < entity_->PartCount(); ++part) {
    if (entity_->PartBegin(part) < entity_->PartEnd(part)) {
      chains_.push_back(ChainOf(part, entity_->Closed, kLeastChain));
    }
  }
}

void FeatureGeometry::TakeRings() {
  CopyRings();
  FindOwners();
  std::sort(owned_.begin(), owned_.end(), [](const OwnedRing& a, const OwnedRing& b) {
    return std::tie(a.owner, a.isHole, a.ring) < std::tie(b.owner, b.isHole, b.ring);
  });
  for (const auto& [ring, owner, isHole] : owned_) {
    FeatureChain& chain = chains_.emplace_back(ChainOf(copied_[ring].part, true, kLeastRing));
    chain.isReversed = isHole ? rings_[ring].area > 0 : rings_[ring].area < 0;
    chain.beginsPolygon = !isHole;
  }
}

// Each ends on its first vertex.
void FeatureGeometry::CopyRings() {
  vertices_.clear();
  copied_.clear();
  for (std::size_t part = 0; part < entity_->PartCount(); ++part) {
    const std::size_t first = vertices_.size();
    for (tEntity::Index i = entity_->PartBegin(part); i < entity_->PartEnd(part); ++i) {
      vertices_.push_back(VertexAt(*entity_, i));
    }
    if (first == vertices_.size()) continue;
    vertices_.push_back(Vertex(vertices_[first]));
    copied_.push_back({part, vertices_.size()});
  }
  rings_.clear();
  std::size_t begin = 0;
  for (const CopiedRing& ring : copied_) {
    rings_.emplace_back(std::span(vertices_).subspan(begin, ring.end - begin));
    begin = ring.end;
  }
}

// Outer rings run clockwise in an element, holes the other way; where all together run the other way, so does each of
// them. A ring that no outer one holds is an outer one itself.
void FeatureGeometry::FindOwners() {
  double sum = 0;
  for (const Ring& ring : rings_) sum += ring.area;
  const double outer = sum > 0 ? 1 : -1;
  owned_.clear();
  for (std::size_t i = 0; i < rings_.size(); ++i) owned_.push_back({i, i, rings_[i].area * outer <= 0});
  std::int64_t looked = 0;
  for (OwnedRing& ring : owned_) {
    if (ring.isHole) ring.owner = OwnerOf(ring.ring, looked);
  }
  for (OwnedRing& ring : owned_) ring.isHole = ring.owner != ring.ring;
}

// The smallest outer ring that holds a hole, or the hole itself where none does; the outer one before it where there
// are too many to find that out.
std::size_t FeatureGeometry::OwnerOf(std::size_t hole, std::int64_t& looked) {
  std::size_t owner = hole;
  for (std::size_t i = 0; i < rings_.size() && looked <= kMostEdges; ++i) {
    ++looked;
    const Ring& ring = rings_[i];
    if (owned_[i].isHole || !ring.MayHold(rings_[hole])) continue;
    if (owner != hole && std::fabs(ring.area) >= std::fabs(rings_[owner].area)) continue;
    looked += 5 * std::ssize(ring.vertices);
    if (ring.Holds(rings_[hole])) owner = i;
  }
  if (looked <= kMostEdges) return owner;
  areHolesGuessed_ = true;
  owner = hole;
  while (owner > 0 && owned_[owner].isHole) --owner;
  return owned_[owner].isHole ? hole : owner;
}

}  // namespace tesselink
