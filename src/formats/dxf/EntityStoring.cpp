// SPDX-License-Identifier: MIT
#include "formats/dxf/EntityStoring.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "core/element/Rings.h"
#include "core/io/Text.h"
#include "core/run/Report.h"
#include "formats/dxf/Drawing.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/RingNesting.h"

namespace tesselink {
namespace {

constexpr std::int32_t kByLayer = 256;

// 0xRRGGBB as a colour with red in the low byte.
std::int32_t RedLow(std::int32_t colour) { return (colour >> 16 & 0xFF) | (colour & 0xFF00) | (colour & 0xFF) << 16; }

// A number as the reading keeps it.
double Stored(EntityContext& context, double value) {
  if (context.source.inFull) return value;
  const auto single = static_cast<double>(static_cast<float>(value));
  if (single != value) context.lost |= kLostDigits;
  return single;
}

void StoreLineType(EntityContext& context, tEntity& element, const DrawingLayer& layer) {
  const std::string& lineType = context.groups.LineType();
  const bool byLayer = lineType.empty() || EqualsIgnoringCase(lineType, "BYLAYER");
  if (!byLayer) context.source.drawing.Text().DecodeName(lineType, element.LineStyle);
  if (!context.source.byLayer) return;
  if (byLayer) element.LineStyle = layer.lineType;
  element.LineStyleFrom = byLayer                                   ? StyleSource::Layer
                          : EqualsIgnoringCase(lineType, "BYBLOCK") ? StyleSource::Block
                                                                    : StyleSource::Own;
}

}  // namespace

bool IsFinite(const Vertex& v) { return std::isfinite(v.x) && std::isfinite(v.y); }

void ToWorld(EntityContext& context, const ObjectCoordinates& plane) {
  if (plane.IsWorld()) return;
  for (Vertex& v : context.chain) v = plane.ToWorld(v);
}

// Stores from the highest index down, so that each array grows once. Vertices are stored by index: the first may lie
// at 0.
bool StoreChain(EntityContext& context, tEntity& element, std::int16_t kind, std::size_t begin, std::size_t end) {
  const auto first = context.chain.begin() + static_cast<std::ptrdiff_t>(begin);
  const auto last = std::remove_if(first, context.chain.begin() + static_cast<std::ptrdiff_t>(end),
                                   [](const Vertex& v) { return !IsFinite(v); });
  const auto kept = last - first;
  if (static_cast<std::size_t>(kept) < end - begin) {
    if (kept == 0) return Damaged(context, "has no vertex that could be read");
    Warn(context, WarningKind::WildVertices,
         std::to_string(end - begin - static_cast<std::size_t>(kept)) + " vertices are no numbers and were left out");
  }
  if (kept == 0) return Damaged(context, "has no vertices");
  constexpr double kGreatest = static_cast<double>(std::numeric_limits<float>::max());
  bool wild = false;
  for (std::ptrdiff_t i = kept; i-- > 0;) {
    const Vertex& v = first[i];
    const bool fits = std::fabs(v.z) <= kGreatest;
    element.x(i, v.x);
    element.Y(i, v.y);
    element.Height(i, fits ? Stored(context, v.z) : 0);
    wild = wild || !fits;
  }
  if (wild) Warn(context, WarningKind::WildZ, "z values that are no number or too large were read as 0");
  element.bType = kind;
  return true;
}

// A ring that crosses itself runs clockwise where most of its area does.
bool StoreArea(EntityContext& context, tEntity& element) {
  VertexChain& ring = context.chain;
  element.Closed = true;
  const double area = DoubledArea(ring);
  element.IsArea = context.source.whole && std::isfinite(area);
  if (element.IsArea && area > 0) std::reverse(ring.begin(), ring.end());
  return StoreChain(context, element, kPolyline);
}

void EndRing(EntityContext& context, std::size_t begin) {
  constexpr std::size_t kLeastRing = 4;
  VertexChain& chain = context.chain;
  if (chain.size() - begin < kLeastRing) {
    chain.resize(begin);
  } else {
    chain.back() = chain[begin];
    context.wires.End(chain.size(), true);
  }
}

bool StoreRings(EntityContext& context, tEntity& element, int deepest) {
  std::vector<Wires::Wire> rings;
  while (context.wires.HasNext()) rings.push_back(context.wires.Next());
  context.wires.Clear();
  if (!NestRings(context.chain, rings, deepest)) {
    Warn(context, WarningKind::Rings, "has so many rings that which of them are holes was not found out");
  }
  for (std::size_t i = 1; i < rings.size(); ++i) element.Parts.push_back(static_cast<tEntity::Index>(rings[i].begin));
  element.IsArea = element.Closed = true;
  return StoreChain(context, element, kPolyline);
}

bool StoreWire(EntityContext& context, tEntity& element) {
  while (context.wires.HasNext()) {
    const Wires::Wire& wire = context.wires.Next();
    element.Closed = wire.closed;
    if (StoreChain(context, element, kPolyline, wire.begin, wire.end)) return true;
  }
  return false;
}

bool StorePoint(EntityContext& context, tEntity& element, std::int16_t kind, const Vertex& at) {
  context.chain.assign(1, at);
  return StoreChain(context, element, kind);
}

bool StoreCurve(EntityContext& context, tEntity& element, const CurveNumbers& numbers) {
  if (!(numbers.radius <= static_cast<double>(std::numeric_limits<float>::max()))) {
    return Damaged(context, "has a radius that is no number");
  }
  element.Curve({Stored(context, numbers.radius), Stored(context, numbers.start), Stored(context, numbers.end)});
  return true;
}

std::int32_t RgbOf(EntityContext& context, const DrawingLayer& layer) {
  return layer.trueColour ? RedLow(*layer.trueColour) : context.colours.Of(layer.colour);
}

void StoreAttributes(EntityContext& context, tEntity& element) {
  const EntityGroups& groups = context.groups;
  constexpr int kVisibility = 60;
  if (groups.Thickness() != 0) element.Lost |= kLostThickness;
  if (groups.Own().HasOther()) element.Lost |= kLostData;
  const DrawingLayer& layer = context.source.drawing.LayerOf(groups.Layer());
  if ((groups.Weight() == EntityGroups::kWeightByLayer ? layer.weight : groups.Weight()) > 0) {
    element.Lost |= kLostWeight;
  }
  element.Lost |= context.lost | (groups.Integer(kVisibility, 0) == 1 ? kLostHiding : 0U) |
                  (layer.IsHidden() ? kLostLayerHiding : 0U);
  context.insert.layer = &layer;
  element.Layer = layer.name;
  if (context.source.whole) element.Handle = groups.Handle();
  StoreLineType(context, element, layer);
  const std::int64_t number = std::abs(std::int64_t{groups.Integer(62, kByLayer)});
  const bool byLayer = number >= kByLayer;
  element.Colour = byLayer ? layer.colour : static_cast<std::int32_t>(number);
  element.RGB = groups.TrueColour() ? RedLow(*groups.TrueColour())
                : byLayer           ? RgbOf(context, layer)
                                    : context.colours.Of(element.Colour);
  element.IsBlack = element.RGB == 0 && (groups.TrueColour() || (byLayer && layer.trueColour));
  if (!context.source.byLayer || groups.TrueColour()) return;
  element.ColourFrom = byLayer ? StyleSource::Layer : number == 0 ? StyleSource::Block : StyleSource::Own;
}

}  // namespace tesselink
