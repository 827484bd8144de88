// SPDX-License-Identifier: MIT
// Which rings of an area are holes.
#pragma once

#include <vector>

#include "core/element/VertexChains.h"
#include "formats/dxf/EntityContext.h"

namespace tesselink {

/// Deeper than any ring lies.
inline constexpr int kAnyDepth = 1 << 30;

/// Of rings that lie one behind the other in a chain, each ending on its first vertex: those within an even number of
/// others bound an area from outside and run clockwise then, the others are its holes and run counter-clockwise. Rings
/// that lie deeper than `deepest` are taken out. False where there are too many to find that out: they are left then as
/// outer ones.
bool NestRings(VertexChain& chain, std::vector<Wires::Wire>& rings, int deepest);

}  // namespace tesselink
