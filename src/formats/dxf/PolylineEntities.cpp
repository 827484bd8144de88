// The part of EntityReader that makes polylines, meshes and polyfaces.
#include <algorithm>
#include <cmath>

#include "core/run/Report.h"
#include "formats/dxf/Drawing.h"
#include "formats/dxf/EntityGathering.h"
#include "formats/dxf/EntityReader.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"
#include "formats/dxf/GroupScanner.h"

namespace tesselink {
namespace {

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

}  // namespace

bool EntityReader::MakeLwPolyline(tEntity& element) {
  const bool closed = (context_.groups.Integer(70, 0) & kClosed) != 0;
  for (Vertex& v : context_.chain) v.z = context_.groups.Elevation();
  DrawBulges(closed);
  ToWorld(context_, ObjectCoordinates(context_.groups.Extrusion()));
  element.Closed = closed;
  return StoreChain(context_, element, kPolyline);
}

// The vertices follow as entities of their own, up to a SEQEND or any other entity. Whether a polyline says that they
// follow does not matter: many that have some do not say so.
void EntityReader::GatherPolyline() {
  Gather();
  context_.bulges.clear();
  context_.flags.clear();
  context_.faces.clear();
  const bool polyface = (context_.groups.Integer(70, 0) & kPolyface) != 0;
  while (IsAt(context_, "VERTEX")) {
    const PolyVertex vertex = GatherVertex();
    if (polyface && (vertex.flags & kPolyfacePart) != 0 && (vertex.flags & kLocation) == 0) {
      context_.faces.push_back(vertex.corners);
    } else {
      AddVertex(vertex);
    }
  }
  if (IsAt(context_, "SEQEND")) {
    while (NextGroup(context_)) {
    }
  }
}

EntityReader::PolyVertex EntityReader::GatherVertex() {
  PolyVertex vertex;
  while (NextGroup(context_)) {
    const int code = context_.source.scanner.Code();
    switch (code) {
      case 10:
        vertex.at.x = NumberHere(context_);
        break;
      case 20:
        vertex.at.y = NumberHere(context_);
        break;
      case 30:
        vertex.at.z = NumberHere(context_);
        break;
      case 42:
        vertex.bulge = NumberHere(context_);
        break;
      case 70:
        vertex.flags = context_.source.scanner.Integer().value_or(0);
        break;
      case 71:
      case 72:
      case 73:
      case 74:
        vertex.corners[static_cast<std::size_t>(code - 71)] = context_.source.scanner.Integer().value_or(0);
        break;
      default:
        break;
    }
  }
  return vertex;
}

void EntityReader::AddVertex(const PolyVertex& vertex) {
  context_.chain.push_back(vertex.at);
  if (vertex.bulge != 0) {
    context_.bulges.resize(context_.chain.size());
    context_.bulges.back() = vertex.bulge;
  }
  if (vertex.flags != 0) {
    context_.flags.resize(context_.chain.size());
    context_.flags.back() = vertex.flags;
  }
}

// Leaves out the points of a spline's frame, unless nothing else is there.
void EntityReader::DropFrame() {
  context_.flags.resize(context_.chain.size());
  context_.bulges.resize(context_.chain.size());
  const auto isFrame = [](std::int32_t flags) { return (flags & kFramePoint) != 0; };
  if (std::all_of(context_.flags.begin(), context_.flags.end(), isFrame)) return;
  std::size_t kept = 0;
  for (std::size_t i = 0; i < context_.chain.size(); ++i) {
    if (isFrame(context_.flags[i])) continue;
    context_.chain[kept] = context_.chain[i];
    context_.bulges[kept++] = context_.bulges[i];
  }
  context_.chain.resize(kept);
  context_.bulges.resize(kept);
}

bool EntityReader::MakePolyline(tEntity& element) {
  const std::int32_t flags = context_.groups.Integer(70, 0);
  if ((flags & kPolyface) != 0) return MakePolyface(element);
  if ((flags & kSplineFit) != 0) DropFrame();
  if ((flags & kMesh) != 0) return MakeMesh(element, flags);
  const bool closed = (flags & kClosed) != 0;
  element.Closed = closed;
  if ((flags & k3d) != 0) {
    context_.bulges.clear();
    DrawBulges(closed);
    return StoreChain(context_, element, kPolyline);
  }
  const double elevation = context_.groups.Point(0).z;
  for (Vertex& v : context_.chain) v.z = v.z == 0 ? elevation : v.z;
  DrawBulges(closed);
  ToWorld(context_, ObjectCoordinates(context_.groups.Extrusion()));
  return StoreChain(context_, element, kPolyline);
}

// Replaces segments with a bulge by their arcs and appends the vertex that closes the chain.
void EntityReader::DrawBulges(bool closed) {
  if (context_.chain.size() < 2) return;
  const std::size_t count = context_.chain.size();
  const auto bulge = [this](std::size_t i) { return i < context_.bulges.size() ? context_.bulges[i] : 0; };
  const bool closing = closed && !(context_.chain.front() == context_.chain.back());
  if (std::all_of(context_.bulges.begin(), context_.bulges.end(), [](double b) { return b == 0; })) {
    if (closing) context_.chain.push_back(Vertex(context_.chain.front()));
    return;
  }
  context_.scratch.assign(1, context_.chain.front());
  for (std::size_t i = 0; i + 1 < count; ++i)
    AppendBulge(context_.scratch, context_.chain[i], context_.chain[i + 1], bulge(i));
  if (closing) AppendBulge(context_.scratch, context_.chain.back(), context_.chain.front(), bulge(count - 1));
  context_.chain.swap(context_.scratch);
}

// ---- wires

// The rows of a mesh and its columns. The declared sizes count only as far as there are vertices.
bool EntityReader::MakeMesh(tEntity& element, std::int32_t flags) {
  const bool fitted =
      (flags & kSplineFit) != 0 && context_.groups.Integer(73, 0) > 0 && context_.groups.Integer(74, 0) > 0;
  const auto size = [](std::int32_t value) { return static_cast<std::size_t>(std::max(value, 0)); };
  const std::size_t columns = size(context_.groups.Integer(fitted ? 74 : 72, 0));
  if (columns == 0 || context_.chain.size() < columns) return Damaged(context_, "has no row of vertices");
  const std::size_t rows =
      std::min(size(context_.groups.Integer(fitted ? 73 : 71, 0)), context_.chain.size() / columns);
  if (rows == 0) return Damaged(context_, "has no row of vertices");
  if (rows * columns < context_.chain.size()) {
    Warn(context_, WarningKind::MeshSize,
         std::to_string(context_.chain.size() - rows * columns) + " vertices beyond the " + std::to_string(rows) +
             " by " + std::to_string(columns) + " of its mesh were left out");
  }
  context_.scratch.swap(context_.chain);
  context_.chain.clear();
  const auto wire = [&](std::size_t first, std::size_t step, std::size_t count, bool closed) {
    for (std::size_t i = 0; i < count; ++i) context_.chain.push_back(context_.scratch[first + i * step]);
    if (closed) context_.chain.push_back(context_.scratch[first]);
    context_.wires.End(context_.chain.size(), closed);
  };
  const bool rowsClosed = (flags & kClosedAcross) != 0, columnsClosed = (flags & kClosed) != 0;
  if (columns > 1) {
    for (std::size_t row = 0; row < rows; ++row) wire(row * columns, 1, columns, rowsClosed);
  }
  if (rows > 1) {
    for (std::size_t column = 0; column < columns; ++column) wire(column, columns, rows, columnsClosed);
  }
  if (context_.wires.IsEmpty()) wire(0, 1, 1, false);
  return StoreWire(context_, element);
}

bool EntityReader::MakePolyface(tEntity& element) {
  context_.scratch.swap(context_.chain);
  context_.chain.clear();
  std::size_t wrong = 0;
  for (const Corners& corners : context_.faces) wrong += AddFace(corners, context_.scratch) ? 0 : 1;
  if (wrong > 0) {
    Warn(context_, WarningKind::PolyfaceFaces, std::to_string(wrong) + " faces do not name vertices and were left out");
  }
  return context_.wires.IsEmpty() ? Damaged(context_, "has no faces") : StoreWire(context_, element);
}

// A corner is the number of a vertex, counted from 1, negative before a hidden edge; hidden edges are drawn too.
bool EntityReader::AddFace(const Corners& corners, const VertexChain& locations) {
  const std::size_t begin = context_.chain.size();
  for (const std::int32_t corner : corners) {
    if (corner == 0) break;
    const auto number = static_cast<std::size_t>(std::abs(std::int64_t{corner}));
    if (number > locations.size()) {
      context_.chain.resize(begin);
      return false;
    }
    context_.chain.push_back(locations[number - 1]);
  }
  const std::size_t count = context_.chain.size() - begin;
  if (count == 0) return false;
  if (count > 2) context_.chain.push_back(Vertex(context_.chain[begin]));
  context_.wires.End(context_.chain.size(), count > 2);
  return true;
}

}  // namespace tesselink
