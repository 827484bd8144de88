// SPDX-License-Identifier: MIT
// The one place where elements become what a writer can hold.
#pragma once

#include <functional>
#include <vector>

#include "core/element/VertexChains.h"
#include "core/element/tEntity.h"
#include "core/run/Traits.h"
#include "core/run/WarningKind.h"

namespace tesselink {

class Losses;

/// What a writer's elements may hold beyond one chain of straight segments.
struct Holding {
  bool parts = false;       ///< several chains in one element
  bool areas = false;       ///< rings that bound an area
  bool bulges = false;      ///< segments of level chains that are arcs
  bool measures = false;    ///< m values
  TraitSet lacks = 0;       ///< what else elements have that they lose
  bool curves = false;      ///< circles and arcs as such
  bool nulls = false;       ///< elements that stand for records without vertices
  bool levelAreas = false;  ///< areas with all their rings, if these have one height
  std::uint32_t keeps = 0;  ///< what elements say by ReadingLoss and it holds all the same
};

/// Makes of an element those that a writer holds, and counts what they do not say any more: circles, arcs and bulges
/// become straight segments, each part an element of its own, an area its closed rings. What an element needs none of
/// costs nothing.
class Reduction {
 public:
  /// Says whether it took the element: what is lost of one that nobody takes counts for nothing.
  using Sink = std::function<bool(tEntity&)>;

  /// The losses outlive this.
  Reduction(const Holding& holding, Losses& losses, const CurveTolerance& tolerance)
      : holding_(holding), losses_(losses), tolerance_(tolerance) {}

  /// Whether the element is one that the writer holds as it is.
  bool Fits(const tEntity& entity) const {
    return (holding_.curves || !IsCurve(entity.bType)) && (entity.IsPlain() || HoldsAllOf(entity));
  }
  /// Hands the elements that stand for one that does not fit to a function, which may change them.
  void Reduce(tEntity& entity, const Sink& sink);

 private:
  bool HoldsAllOf(const tEntity& entity) const;
  bool HoldsAreaOf(const tEntity& entity) const { return holding_.areas || (holding_.levelAreas && entity.IsLevel()); }
  bool HoldsPartsOf(const tEntity& entity) const {
    return holding_.parts || (entity.IsArea && holding_.levelAreas && entity.IsLevel());
  }
  bool HoldsBulgesOf(const tEntity& entity) const;
  bool HandOut(tEntity& entity, const Sink& sink);

  Holding holding_;
  Losses& losses_;
  CurveTolerance tolerance_;
  std::vector<WarningKind> lost_;  // of the element at hand
  VertexChain chain_;
  tEntity part_;
};

}  // namespace tesselink
