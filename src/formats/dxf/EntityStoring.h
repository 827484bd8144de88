// SPDX-License-Identifier: MIT
// Storing what was made of an entity in an element. The functions that may refuse say so with a warning, and by false.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/element/tEntity.h"
#include "formats/dxf/EntityContext.h"
#include "formats/dxf/ObjectCoordinates.h"

namespace tesselink {

/// The vertices of the chain from `begin` up to `end`, those that are no numbers left out.
bool StoreChain(EntityContext& context, tEntity& element, std::int16_t kind, std::size_t begin, std::size_t end);
/// The whole chain.
inline bool StoreChain(EntityContext& context, tEntity& element, std::int16_t kind) {
  return StoreChain(context, element, kind, 0, context.chain.size());
}
/// The whole chain, a ring that ends on its first vertex, as an area; in readings without areas as a closed chain.
bool StoreArea(EntityContext& context, tEntity& element);
/// Ends a wire that is a ring: the vertices of the chain from `begin` on, the last of which becomes the first one. What
/// surrounds nothing is taken out.
void EndRing(EntityContext& context, std::size_t begin);
/// All wires, which are rings, as one area; rings that lie deeper than `deepest` are left out.
bool StoreRings(EntityContext& context, tEntity& element, int deepest);
/// The next wire that has vertices; false when there is none.
bool StoreWire(EntityContext& context, tEntity& element);
/// A single vertex.
bool StorePoint(EntityContext& context, tEntity& element, std::int16_t kind, const Vertex& at);
/// What a circle or an arc has besides its centre.
bool StoreCurve(EntityContext& context, tEntity& element, const CurveNumbers& numbers);
/// Layer, line type and colour, which every entity has.
void StoreAttributes(EntityContext& context, tEntity& element);
/// The colour that the elements of a layer have by layer, red in the low byte.
std::int32_t RgbOf(EntityContext& context, const DrawingLayer& layer);

/// Whether x and y are numbers.
bool IsFinite(const Vertex& v);
/// Turns the chain from a plane's coordinates to those of the world.
void ToWorld(EntityContext& context, const ObjectCoordinates& plane);

}  // namespace tesselink
