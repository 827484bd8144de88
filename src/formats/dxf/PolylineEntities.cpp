// SPDX-License-Identifier: MIT
#include "formats/dxf/PolylineEntities.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "core/run/Report.h"
#include "formats/dxf/EntityGathering.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"
#include "formats/dxf/GroupWriter.h"

namespace tesselink {
namespace {

using Corners = EntityContext::Corners;

enum PolylineFlag : std::int32_t {
  kClosed = 1,
  kSplineFit = 4,
  k3d = 8,
  kMesh = 16,
  kClosedAcross = 32,
  kPolyface = 64,
};

enum VertexFlag : std::int32_t {
  kFramePoint = 16,
  kLocation = 64,
  kPolyfacePart = 128,
};

struct PolyVertex {
  Vertex at;
  double bulge = 0;
  std::int32_t flags = 0;
  Corners corners{};
};

// Of the line, at the group at hand.
void NoteWidth(EntityContext& context) {
  if (context.source.scanner.Number() > 0) context.lost |= kLostWidth;
}

PolyVertex GatherVertex(EntityContext& context) {
  const GroupScanner& scanner = context.source.scanner;
  PolyVertex vertex;
  while (NextGroup(context)) {
    const int code = scanner.Code();
    switch (code) {
      case 10:
        vertex.at.x = NumberHere(context);
        break;
      case 20:
        vertex.at.y = NumberHere(context);
        break;
      case 30:
        vertex.at.z = NumberHere(context);
        break;
      case 40:
      case 41:
        NoteWidth(context);
        break;
      case 42:
        vertex.bulge = NumberHere(context);
        break;
      case 70:
        vertex.flags = scanner.Integer().value_or(0);
        break;
      case 71:
      case 72:
      case 73:
      case 74:
        vertex.corners[static_cast<std::size_t>(code - 71)] = scanner.Integer().value_or(0);
        break;
      default:
        break;
    }
  }
  return vertex;
}

void AddVertex(EntityContext& context, const PolyVertex& vertex) {
  context.chain.push_back(vertex.at);
  if (vertex.bulge != 0) {
    context.bulges.resize(context.chain.size());
    context.bulges.back() = vertex.bulge;
  }
  if (vertex.flags != 0) {
    context.flags.resize(context.chain.size());
    context.flags.back() = vertex.flags;
  }
}

// Leaves out the points of a spline's frame, unless nothing else is there.
void DropFrame(EntityContext& context) {
  VertexChain& chain = context.chain;
  context.flags.resize(chain.size());
  context.bulges.resize(chain.size());
  const auto isFrame = [](std::int32_t flags) { return (flags & kFramePoint) != 0; };
  if (std::all_of(context.flags.begin(), context.flags.end(), isFrame)) return;
  std::size_t kept = 0;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    if (isFrame(context.flags[i])) continue;
    chain[kept] = chain[i];
    context.bulges[kept++] = context.bulges[i];
  }
  chain.resize(kept);
  context.bulges.resize(kept);
}

// Appends the vertex that closes the chain. The bulges of a chain of segments are as many as these, or none.
void CloseChain(EntityContext& context, bool closed) {
  VertexChain& chain = context.chain;
  std::vector<double>& bulges = context.bulges;
  if (closed && chain.size() > 1 && !(chain.front() == chain.back())) chain.push_back(Vertex(chain.front()));
  if (bulges.size() >= chain.size()) bulges.resize(chain.empty() ? 0 : chain.size() - 1);
  if (std::all_of(bulges.begin(), bulges.end(), [](double b) { return b == 0; })) bulges.clear();
}

// Replaces segments with a bulge by their arcs.
void DrawBulges(EntityContext& context) {
  VertexChain& chain = context.chain;
  std::vector<double>& bulges = context.bulges;
  if (bulges.empty()) return;
  bulges.resize(chain.size());
  VertexChain& drawn = context.scratch;
  drawn.assign(1, chain.front());
  bool enough = true;
  for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
    enough = AppendBulge(drawn, chain[i], chain[i + 1], bulges[i], context.source.tolerance) && enough;
  }
  NoteCurve(context, enough);
  chain.swap(drawn);
  bulges.clear();
}

// Seen from below, an arc runs the other way. A vertex that is no number takes the arcs at it along.
void StoreBulges(EntityContext& context, tEntity& element, const ObjectCoordinates& plane) {
  const VertexChain& chain = context.chain;
  std::vector<double>& bulges = context.bulges;
  for (std::size_t i = 0; i < bulges.size(); ++i) {
    const bool isArc = std::isfinite(bulges[i]) && IsFinite(chain[i]) && IsFinite(chain[i + 1]);
    const double bulge = !isArc ? 0 : plane.IsMirrored() ? -bulges[i] : bulges[i];
    if (IsFinite(chain[i])) element.Bulges.push_back(bulge);
  }
  if (std::all_of(element.Bulges.begin(), element.Bulges.end(), [](double b) { return b == 0; })) {
    element.Bulges.clear();
  }
}

// The chain of a flat polyline, in whose plane it still lies.
bool StoreFlat(EntityContext& context, tEntity& element, bool closed) {
  const ObjectCoordinates plane(context.groups.Extrusion());
  CloseChain(context, closed);
  if (!context.source.bulges || plane.IsTilted()) DrawBulges(context);
  ToWorld(context, plane);
  element.Closed = closed;
  StoreBulges(context, element, plane);
  return StoreChain(context, element, kPolyline);
}

// The rows of a mesh and its columns. The declared sizes count only as far as there are vertices.
bool MakeMesh(EntityContext& context, tEntity& element, std::int32_t flags) {
  const EntityGroups& groups = context.groups;
  VertexChain& chain = context.chain;
  const bool fitted = (flags & kSplineFit) != 0 && groups.Integer(73, 0) > 0 && groups.Integer(74, 0) > 0;
  const auto size = [](std::int32_t value) { return static_cast<std::size_t>(std::max(value, 0)); };
  const std::size_t columns = size(groups.Integer(fitted ? 74 : 72, 0));
  if (columns == 0 || chain.size() < columns) return Damaged(context, "has no row of vertices");
  const std::size_t rows = std::min(size(groups.Integer(fitted ? 73 : 71, 0)), chain.size() / columns);
  if (rows == 0) return Damaged(context, "has no row of vertices");
  if (rows * columns < chain.size()) {
    Warn(context, WarningKind::MeshSize,
         std::to_string(chain.size() - rows * columns) + " vertices beyond the " + std::to_string(rows) + " by " +
             std::to_string(columns) + " of its mesh were left out");
  }
  const VertexChain& vertices = context.scratch;
  context.scratch.swap(chain);
  chain.clear();
  const auto wire = [&](std::size_t first, std::size_t step, std::size_t count, bool closed) {
    for (std::size_t i = 0; i < count; ++i) chain.push_back(vertices[first + i * step]);
    if (closed) chain.push_back(vertices[first]);
    context.wires.End(chain.size(), closed);
  };
  const bool rowsClosed = (flags & kClosedAcross) != 0, columnsClosed = (flags & kClosed) != 0;
  if (columns > 1) {
    for (std::size_t row = 0; row < rows; ++row) wire(row * columns, 1, columns, rowsClosed);
  }
  if (rows > 1) {
    for (std::size_t column = 0; column < columns; ++column) wire(column, columns, rows, columnsClosed);
  }
  if (context.wires.IsEmpty()) wire(0, 1, 1, false);
  return StoreWire(context, element);
}

// A corner is the number of a vertex, counted from 1, negative before a hidden edge; hidden edges are drawn too.
bool AddFace(EntityContext& context, const Corners& corners, const VertexChain& locations) {
  VertexChain& chain = context.chain;
  const std::size_t begin = chain.size();
  for (const std::int32_t corner : corners) {
    if (corner == 0) break;
    const auto number = static_cast<std::size_t>(std::abs(std::int64_t{corner}));
    if (number > locations.size()) {
      chain.resize(begin);
      return false;
    }
    chain.push_back(locations[number - 1]);
  }
  const std::size_t count = chain.size() - begin;
  if (count == 0) return false;
  if (count > 2) chain.push_back(Vertex(chain[begin]));
  context.wires.End(chain.size(), count > 2);
  return true;
}

bool MakePolyface(EntityContext& context, tEntity& element) {
  context.scratch.swap(context.chain);
  context.chain.clear();
  std::size_t wrong = 0;
  for (const Corners& corners : context.faces) wrong += AddFace(context, corners, context.scratch) ? 0 : 1;
  if (wrong > 0) {
    Warn(context, WarningKind::PolyfaceFaces, std::to_string(wrong) + " faces do not name vertices and were left out");
  }
  return context.wires.IsEmpty() ? Damaged(context, "has no faces") : StoreWire(context, element);
}

}  // namespace

void GatherLwPolyline(EntityContext& context) {
  VertexChain& chain = context.chain;
  std::vector<double>& bulges = context.bulges;
  bulges.clear();
  GatherWith(context, [&](int code) {
    switch (code) {
      case 10:
        chain.push_back({NumberHere(context), 0, 0});
        return true;
      case 20:
        if (!chain.empty()) chain.back().y = NumberHere(context);
        return true;
      case 40:
      case 41:
      case 43:
        NoteWidth(context);
        return false;
      case 42:
        if (!chain.empty()) {
          bulges.resize(chain.size());
          bulges.back() = NumberHere(context);
        }
        return true;
      default:
        return false;
    }
  });
}

// What bounds the HATCH before it is drawn with that.
bool MakeLwPolyline(EntityContext& context, tEntity& element) {
  if (!context.hatch.empty() && context.groups.Own().Handle() == context.hatch) return false;
  const bool closed = (context.groups.Integer(70, 0) & kClosed) != 0;
  for (Vertex& v : context.chain) v.z = context.groups.Elevation();
  return StoreFlat(context, element, closed);
}

// The vertices follow as entities of their own, up to a SEQEND or any other entity. Whether a polyline says that they
// follow does not matter: many that have some do not say so.
void GatherPolyline(EntityContext& context) {
  GatherCommon(context);
  context.bulges.clear();
  context.flags.clear();
  context.faces.clear();
  const bool polyface = (context.groups.Integer(70, 0) & kPolyface) != 0;
  while (IsAt(context, "VERTEX")) {
    const PolyVertex vertex = GatherVertex(context);
    if (polyface && (vertex.flags & kPolyfacePart) != 0 && (vertex.flags & kLocation) == 0) {
      context.faces.push_back(vertex.corners);
    } else {
      AddVertex(context, vertex);
    }
  }
  if (IsAt(context, "SEQEND")) {
    while (NextGroup(context)) {
    }
  }
}

bool MakePolyline(EntityContext& context, tEntity& element) {
  const std::int32_t flags = context.groups.Integer(70, 0);
  if ((flags & kPolyface) != 0) return MakePolyface(context, element);
  if ((flags & kSplineFit) != 0) DropFrame(context);
  if ((flags & kMesh) != 0) return MakeMesh(context, element, flags);
  const bool closed = (flags & kClosed) != 0;
  if ((flags & k3d) != 0) {
    context.bulges.clear();
    CloseChain(context, closed);
    element.Closed = closed;
    return StoreChain(context, element, kPolyline);
  }
  const double elevation = context.groups.Point(0).z;
  if (context.groups.Number(40, 0) > 0 || context.groups.Number(41, 0) > 0) context.lost |= kLostWidth;
  for (Vertex& v : context.chain) v.z = v.z == 0 ? elevation : v.z;
  return StoreFlat(context, element, closed);
}

}  // namespace tesselink
