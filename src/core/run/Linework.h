// SPDX-License-Identifier: MIT
// What finds the areas that lines bound. The module "linework" implements it; see core/io/Module.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "core/element/VertexChains.h"

namespace tesselink {

/// An area that lines bound, with nothing of them inside but what bounds other areas.
struct LineworkFace {
  /// A chain on the outer ring.
  struct Side {
    std::size_t chain = 0;  ///< by its place among those that were added, from 0
    double length = 0;      ///< of the ring that runs on it
  };
  std::vector<VertexChain>
      rings;                ///< the outer one first, clockwise, holes the other way; all end on their first vertex
  std::vector<Side> sides;  ///< each chain once, in the order in which they were added
};

/// What bounds no area, and a place of it.
struct LooseLines {
  std::int64_t count = 0;
  Vertex place = {};
};

/// Chains of vertices, which are cut where they meet or cross. Heights go along. Throws Error, or bad_alloc, when it
/// fails.
class Linework {
 public:
  virtual ~Linework() = default;

  /// Takes a chain. All its coordinates are finite.
  virtual void Add(std::span<const Vertex> chain) = 0;
  /// Finds the areas, once. Vertices so near to each other or to a line meet, and in any case what misses by no more
  /// than rounding. False when that was cancelled, which is asked every now and then.
  virtual bool Build(double snap, const std::function<bool()>& cancelled) = 0;

  virtual std::size_t FaceCount() const = 0;
  virtual void Face(std::size_t index, LineworkFace& face) = 0;
  /// The area that a place lies in; of several that meet there the first.
  virtual std::optional<std::size_t> FaceAt(double x, double y) = 0;

  /// Ends that meet no other line; the westernmost.
  virtual const LooseLines& LooseEnds() const = 0;
  /// Lines that have the same area, or none, on both sides.
  virtual const LooseLines& Cuts() const = 0;
  /// Rings that bound no valid area.
  virtual const LooseLines& InvalidRings() const = 0;
};

}  // namespace tesselink
