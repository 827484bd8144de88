// The part of EntityReader that makes polylines, meshes and polyfaces.
#include <algorithm>
#include <cmath>

#include "core/run/Report.h"
#include "formats/dxf/Drawing.h"
#include "formats/dxf/EntityReader.h"
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
  const bool closed = (groups_.Integer(70, 0) & kClosed) != 0;
  for (Vertex& v : chain_) v.z = groups_.Elevation();
  DrawBulges(closed);
  ToWorld(ObjectCoordinates(groups_.Extrusion()));
  element.Closed = closed;
  return StoreChain(element, kPolyline);
}

// The vertices follow as entities of their own, up to a SEQEND or any other entity. Whether a polyline says that they
// follow does not matter: many that have some do not say so.
void EntityReader::GatherPolyline() {
  Gather();
  bulges_.clear();
  flags_.clear();
  faces_.clear();
  const bool polyface = (groups_.Integer(70, 0) & kPolyface) != 0;
  while (!atEnd_ && source_.scanner.Keyword() == "VERTEX") {
    const PolyVertex vertex = GatherVertex();
    if (polyface && (vertex.flags & kPolyfacePart) != 0 && (vertex.flags & kLocation) == 0) {
      faces_.push_back(vertex.corners);
    } else {
      AddVertex(vertex);
    }
  }
  if (!atEnd_ && source_.scanner.Keyword() == "SEQEND") {
    while (NextGroup()) {
    }
  }
}

EntityReader::PolyVertex EntityReader::GatherVertex() {
  PolyVertex vertex;
  while (NextGroup()) {
    const int code = source_.scanner.Code();
    switch (code) {
      case 10:
        vertex.at.x = Number();
        break;
      case 20:
        vertex.at.y = Number();
        break;
      case 30:
        vertex.at.z = Number();
        break;
      case 42:
        vertex.bulge = Number();
        break;
      case 70:
        vertex.flags = source_.scanner.Integer().value_or(0);
        break;
      case 71:
      case 72:
      case 73:
      case 74:
        vertex.corners[static_cast<std::size_t>(code - 71)] = source_.scanner.Integer().value_or(0);
        break;
      default:
        break;
    }
  }
  return vertex;
}

void EntityReader::AddVertex(const PolyVertex& vertex) {
  chain_.push_back(vertex.at);
  if (vertex.bulge != 0) {
    bulges_.resize(chain_.size());
    bulges_.back() = vertex.bulge;
  }
  if (vertex.flags != 0) {
    flags_.resize(chain_.size());
    flags_.back() = vertex.flags;
  }
}

// Leaves out the points of a spline's frame, unless nothing else is there.
void EntityReader::DropFrame() {
  flags_.resize(chain_.size());
  bulges_.resize(chain_.size());
  const auto isFrame = [](std::int32_t flags) { return (flags & kFramePoint) != 0; };
  if (std::all_of(flags_.begin(), flags_.end(), isFrame)) return;
  std::size_t kept = 0;
  for (std::size_t i = 0; i < chain_.size(); ++i) {
    if (isFrame(flags_[i])) continue;
    chain_[kept] = chain_[i];
    bulges_[kept++] = bulges_[i];
  }
  chain_.resize(kept);
  bulges_.resize(kept);
}

bool EntityReader::MakePolyline(tEntity& element) {
  const std::int32_t flags = groups_.Integer(70, 0);
  if ((flags & kPolyface) != 0) return MakePolyface(element);
  if ((flags & kSplineFit) != 0) DropFrame();
  if ((flags & kMesh) != 0) return MakeMesh(element, flags);
  const bool closed = (flags & kClosed) != 0;
  element.Closed = closed;
  if ((flags & k3d) != 0) {
    bulges_.clear();
    DrawBulges(closed);
    return StoreChain(element, kPolyline);
  }
  const double elevation = groups_.Point(0).z;
  for (Vertex& v : chain_) v.z = v.z == 0 ? elevation : v.z;
  DrawBulges(closed);
  ToWorld(ObjectCoordinates(groups_.Extrusion()));
  return StoreChain(element, kPolyline);
}

// Replaces segments with a bulge by their arcs and appends the vertex that closes the chain.
void EntityReader::DrawBulges(bool closed) {
  if (chain_.size() < 2) return;
  const std::size_t count = chain_.size();
  const auto bulge = [this](std::size_t i) { return i < bulges_.size() ? bulges_[i] : 0; };
  const bool closing = closed && !(chain_.front() == chain_.back());
  if (std::all_of(bulges_.begin(), bulges_.end(), [](double b) { return b == 0; })) {
    if (closing) chain_.push_back(Vertex(chain_.front()));
    return;
  }
  scratch_.assign(1, chain_.front());
  for (std::size_t i = 0; i + 1 < count; ++i) AppendBulge(scratch_, chain_[i], chain_[i + 1], bulge(i));
  if (closing) AppendBulge(scratch_, chain_.back(), chain_.front(), bulge(count - 1));
  chain_.swap(scratch_);
}

// ---- wires

void EntityReader::EndWire(bool closed) { wires_.push_back({chain_.size(), closed}); }

bool EntityReader::NextWire(tEntity& element) {
  while (nextWire_ < wires_.size()) {
    const std::size_t begin = nextWire_ == 0 ? 0 : wires_[nextWire_ - 1].end;
    const Wire& wire = wires_[nextWire_++];
    element.Closed = wire.closed;
    if (!StoreChain(element, kPolyline, begin, wire.end)) continue;
    SetAttributes(element);
    return true;
  }
  return false;
}

// The rows of a mesh and its columns. The declared sizes count only as far as there are vertices.
bool EntityReader::MakeMesh(tEntity& element, std::int32_t flags) {
  const bool fitted = (flags & kSplineFit) != 0 && groups_.Integer(73, 0) > 0 && groups_.Integer(74, 0) > 0;
  const auto size = [](std::int32_t value) { return static_cast<std::size_t>(std::max(value, 0)); };
  const std::size_t columns = size(groups_.Integer(fitted ? 74 : 72, 0));
  if (columns == 0 || chain_.size() < columns) return Damaged("has no row of vertices");
  const std::size_t rows = std::min(size(groups_.Integer(fitted ? 73 : 71, 0)), chain_.size() / columns);
  if (rows == 0) return Damaged("has no row of vertices");
  if (rows * columns < chain_.size()) {
    Warn(WarningKind::MeshSize, groups_.Place(),
         std::to_string(chain_.size() - rows * columns) + " vertices beyond the " + std::to_string(rows) + " by " +
             std::to_string(columns) + " of its mesh were left out");
  }
  scratch_.swap(chain_);
  chain_.clear();
  const auto wire = [&](std::size_t first, std::size_t step, std::size_t count, bool closed) {
    for (std::size_t i = 0; i < count; ++i) chain_.push_back(scratch_[first + i * step]);
    if (closed) chain_.push_back(scratch_[first]);
    EndWire(closed);
  };
  const bool rowsClosed = (flags & kClosedAcross) != 0, columnsClosed = (flags & kClosed) != 0;
  if (columns > 1) {
    for (std::size_t row = 0; row < rows; ++row) wire(row * columns, 1, columns, rowsClosed);
  }
  if (rows > 1) {
    for (std::size_t column = 0; column < columns; ++column) wire(column, columns, rows, columnsClosed);
  }
  if (wires_.empty()) wire(0, 1, 1, false);
  return NextWire(element);
}

bool EntityReader::MakePolyface(tEntity& element) {
  scratch_.swap(chain_);
  chain_.clear();
  std::size_t wrong = 0;
  for (const Corners& corners : faces_) wrong += AddFace(corners, scratch_) ? 0 : 1;
  if (wrong > 0) {
    Warn(WarningKind::PolyfaceFaces, groups_.Place(),
         std::to_string(wrong) + " faces do not name vertices and were left out");
  }
  return wires_.empty() ? Damaged("has no faces") : NextWire(element);
}

// A corner is the number of a vertex, counted from 1, negative before a hidden edge; hidden edges are drawn too.
bool EntityReader::AddFace(const Corners& corners, const VertexChain& locations) {
  const std::size_t begin = chain_.size();
  for (const std::int32_t corner : corners) {
    if (corner == 0) break;
    const auto number = static_cast<std::size_t>(std::abs(std::int64_t{corner}));
    if (number > locations.size()) {
      chain_.resize(begin);
      return false;
    }
    chain_.push_back(locations[number - 1]);
  }
  const std::size_t count = chain_.size() - begin;
  if (count == 0) return false;
  if (count > 2) chain_.push_back(Vertex(chain_[begin]));
  EndWire(count > 2);
  return true;
}

}  // namespace tesselink
