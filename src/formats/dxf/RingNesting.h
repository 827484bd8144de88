// Which rings of an area are holes.
#pragma once

#include <span>
#include <vector>

#include "core/element/VertexChains.h"
#include "formats/dxf/EntityContext.h"

namespace tesselink {

/// Deeper than any ring lies.
inline constexpr int kAnyDepth = 1 << 30;

/// Twice the area of a ring that ends on its first vertex; above 0 where it runs counter-clockwise.
double DoubledArea(std::span<const Vertex> ring);

/// Of rings that lie one behind the other in a chain, each ending on its first vertex: those within an even number of
/// others bound an area from outside and run clockwise then, the others are its holes and run counter-clockwise. Rings
/// that lie deeper than `deepest` are taken out. False where there are too many to find that out: they are left then as
/// outer ones.
bool NestRings(VertexChain& chain, std::vector<Wires::Wire>& rings, int deepest);

}  // namespace tesselink
