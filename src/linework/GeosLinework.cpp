// SPDX-License-Identifier: MIT
// Areas from lines by GEOS.
#define GEOS_USE_ONLY_R_API
#include <geos_c.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "core/io/Errors.h"
#include "core/run/Linework.h"

namespace tesselink {
namespace {

// Long chains are looked up piece by piece.
constexpr std::size_t kSegmentsOfPiece = 32;
// What is taken for rounding, for a coordinate of 1: of what reaches here, and of what cutting makes of it.
constexpr double kRounding = 1e-11, kRoundingOfCuts = 1e-10;
constexpr unsigned kNodeCapacity = 10;

struct Destroy {
  GEOSContextHandle_t geos;
  void operator()(GEOSGeometry* made) const { GEOSGeom_destroy_r(geos, made); }
  void operator()(GEOSSTRtree* made) const { GEOSSTRtree_destroy_r(geos, made); }
  void operator()(const GEOSPreparedGeometry* made) const { GEOSPreparedGeom_destroy_r(geos, made); }
};
template <typename T>
using Owned = std::unique_ptr<T, Destroy>;
using Geometry = Owned<GEOSGeometry>;

// The library asks one function of the whole process, without saying for whom.
class Asking {
 public:
  explicit Asking(const std::function<bool()>& question) {
    question_ = &question;
    cancelled_ = false;
    before_ = GEOS_interruptRegisterCallback(&Ask);
  }
  ~Asking() {
    GEOS_interruptRegisterCallback(before_);
    GEOS_interruptCancel();
    question_ = nullptr;
  }
  Asking(const Asking&) = delete;
  Asking& operator=(const Asking&) = delete;
  bool Cancelled() const { return cancelled_; }

 private:
  // Asks no more once it was cancelled; but the library takes some failures for a reason to try another way.
  static void Ask() {
    constexpr unsigned kSeldom = 1024;
    if (!cancelled_ && ++calls_ % kSeldom == 0) cancelled_ = (*question_)();
    if (cancelled_) GEOS_interruptRequest();
  }
  inline static const std::function<bool()>* question_ = nullptr;
  inline static bool cancelled_ = false;
  inline static unsigned calls_ = 0;
  GEOSInterruptCallback* before_ = nullptr;
};

// How much of a segment is passed where it comes nearest to a place, from 0 to 1.
double PassedAt(const Vertex& at, const Vertex& from, const Vertex& to) {
  const double dx = to.x - from.x, dy = to.y - from.y, square = dx * dx + dy * dy;
  return square > 0 ? std::clamp(((at.x - from.x) * dx + (at.y - from.y) * dy) / square, 0.0, 1.0) : 0;
}

double DistanceOf(const Vertex& at, const Vertex& from, const Vertex& to) {
  const double passed = PassedAt(at, from, to);
  return std::hypot(at.x - from.x - passed * (to.x - from.x), at.y - from.y - passed * (to.y - from.y));
}

// Whether two segments cross, each within the other.
bool Cross(const Vertex& a, const Vertex& b, const Vertex& c, const Vertex& d) {
  const auto side = [](const Vertex& from, const Vertex& to, const Vertex& at) {
    return (to.x - from.x) * (at.y - from.y) - (to.y - from.y) * (at.x - from.x);
  };
  return (side(a, b, c) > 0) != (side(a, b, d) > 0) && (side(c, d, a) > 0) != (side(c, d, b) > 0);
}

bool IsPoint(std::span<const Vertex> chain) {
  return std::all_of(chain.begin(), chain.end(),
                     [&](const Vertex& v) { return v.x == chain.front().x && v.y == chain.front().y; });
}

class GeosLinework final : public Linework {
 public:
  GeosLinework() { GEOSContext_setErrorMessageHandler_r(geos_, &NoteError, &error_); }

  void Add(std::span<const Vertex> chain) override;
  bool Build(double snap, const std::function<bool()>& cancelled) override;
  std::size_t FaceCount() const override { return faces_.size(); }
  void Face(std::size_t index, LineworkFace& face) override;
  std::optional<std::size_t> FaceAt(double x, double y) override;
  const LooseLines& LooseEnds() const override { return ends_; }
  const LooseLines& Cuts() const override { return cuts_; }
  const LooseLines& InvalidRings() const override { return invalid_; }

 private:
  struct Piece {
    std::size_t begin, count;  // of the vertices
    std::size_t chain;
  };
  // A vertex that lies upon a segment.
  struct Meeting {
    std::size_t segment;  // its first vertex
    double passed;        // of it, from 0 to 1
    Vertex at;
  };
  struct Polygon {
    const GEOSGeometry* polygon;
    std::size_t index;
    Owned<const GEOSPreparedGeometry> prepared;  // once a place is looked up in it
  };

  static void NoteError(const char* message, void* text) { *static_cast<std::string*>(text) = message; }
  [[noreturn]] void Fail() const;
  template <typename T>
  Owned<T> Made(T* made) const {
    if (made == nullptr) Fail();
    return {made, {geos_}};
  }
  Geometry LineOf(std::span<const Vertex> vertices) const;
  std::span<const Vertex> VerticesOf(const Piece& piece) const { return {&vertices_[piece.begin], piece.count}; }
  void MeetAtVertices();
  void MakeTree();
  void FindMeetings();
  void RefuseTooManyCrossings();
  std::size_t CrossingsOf(const Piece& piece);
  Geometry Together(std::vector<Geometry> lines) const;
  Geometry MeetingLines() const;
  void FindFaces();
  LooseLines EndsOf(const GEOSGeometry* dangles, const GEOSGeometry* all) const;
  LooseLines CountOf(const GEOSGeometry* lines) const;
  std::size_t CountIn(const GEOSGeometry* collection) const;
  const GEOSGeometry* Member(const GEOSGeometry* collection, std::size_t index) const;
  void AppendRing(const GEOSGeometry* ring, bool clockwise, std::vector<VertexChain>& rings) const;
  void FindSides(const VertexChain& ring, std::vector<LineworkFace::Side>& sides);
  void FindChainsAt(const Vertex& at);
  const std::vector<void*>& Within(GEOSSTRtree* tree, double minX, double minY, double maxX, double maxY);
  const std::vector<void*>& Near(GEOSSTRtree* tree, double x, double y, double reach) {
    return Within(tree, x - reach, y - reach, x + reach, y + reach);
  }

  struct Context {
    GEOSContextHandle_t handle = GEOS_init_r();
    Context() = default;
    ~Context() { GEOS_finish_r(handle); }
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;
  };
  const Context context_;  // outlives what is made in it
  const GEOSContextHandle_t geos_ = context_.handle;
  std::string error_;

  std::vector<Vertex> vertices_;  // piece by piece
  std::vector<Piece> pieces_;
  std::size_t chains_ = 0;
  double greatest_ = 0;  // of all coordinates

  double snap_ = 0;
  std::vector<Vertex> corners_;  // each place of a vertex once
  std::vector<Meeting> meetings_;

  std::vector<Geometry> lines_;  // of the pieces
  Geometry polygons_;
  Owned<GEOSSTRtree> piecesByPlace_, facesByPlace_;
  std::vector<Polygon> faces_;
  LooseLines ends_, cuts_, invalid_;
  std::vector<void*> near_;
  std::vector<std::size_t> upon_;  // chains that one side lies upon
};

void GeosLinework::Fail() const {
  if (error_.find("bad_alloc") != std::string::npos) throw std::bad_alloc();
  throw Error("the areas that lines bound could not be found: " + error_);
}

void GeosLinework::Add(std::span<const Vertex> chain) {
  for (const Vertex& v : chain) greatest_ = std::max({greatest_, std::fabs(v.x), std::fabs(v.y)});
  for (std::size_t at = 0; at + 1 < chain.size(); at += kSegmentsOfPiece) {
    const auto piece = chain.subspan(at, std::min(kSegmentsOfPiece + 1, chain.size() - at));
    if (IsPoint(piece)) continue;
    pieces_.push_back({vertices_.size(), piece.size(), chains_});
    vertices_.insert(vertices_.end(), piece.begin(), piece.end());
  }
  ++chains_;
}

bool GeosLinework::Build(double snap, const std::function<bool()>& cancelled) {
  snap_ = std::max({snap, kRounding * greatest_, std::numeric_limits<double>::min()});
  const Asking asking(cancelled);
  try {
    MeetAtVertices();
    MakeTree();
    RefuseTooManyCrossings();
    FindMeetings();
    FindFaces();
  } catch (const Error&) {
    if (!asking.Cancelled()) throw;
    return false;
  }
  return true;
}

// Vertices so near to an earlier one take its place. A cell is as wide as they may be apart, so that its neighbours
// hold all that are near.
void GeosLinework::MeetAtVertices() {
  struct Hash {
    std::size_t operator()(const std::pair<std::int64_t, std::int64_t>& cell) const {
      return static_cast<std::size_t>(cell.first) * 0x9E3779B97F4A7C15U ^ static_cast<std::size_t>(cell.second);
    }
  };
  std::unordered_multimap<std::pair<std::int64_t, std::int64_t>, std::size_t, Hash> cells;
  const auto meet = [&](Vertex& v) {
    const auto column = static_cast<std::int64_t>(std::floor(v.x / snap_));
    const auto row = static_cast<std::int64_t>(std::floor(v.y / snap_));
    for (std::int64_t dx = -1; dx <= 1; ++dx) {
      for (std::int64_t dy = -1; dy <= 1; ++dy) {
        const auto [begin, end] = cells.equal_range({column + dx, row + dy});
        for (auto corner = begin; corner != end; ++corner) {
          const Vertex& at = corners_[corner->second];
          if (!(std::hypot(at.x - v.x, at.y - v.y) <= snap_)) continue;
          v = {at.x, at.y, v.z};
          return;
        }
      }
    }
    cells.emplace(std::pair{column, row}, corners_.size());
    corners_.push_back(v);
  };
  for (Vertex& v : vertices_) meet(v);
  std::erase_if(pieces_, [this](const Piece& piece) { return IsPoint(VerticesOf(piece)); });
}

void GeosLinework::MakeTree() {
  lines_.reserve(pieces_.size());
  piecesByPlace_ = Made(GEOSSTRtree_create_r(geos_, kNodeCapacity));
  for (Piece& piece : pieces_) {
    lines_.push_back(LineOf(VerticesOf(piece)));
    GEOSSTRtree_insert_r(geos_, piecesByPlace_.get(), lines_.back().get(), &piece);
  }
}

// A small drawing may cross itself so often that what it is cut into fills the memory, at some 1300 bytes a crossing. A
// sample tells.
void GeosLinework::RefuseTooManyCrossings() {
  constexpr std::size_t kAmple = 1'000'000, kAmpleForVertex = 10, kSample = 1000;
  const std::size_t step = pieces_.size() / kSample + 1;
  const std::size_t most = std::max(kAmple, kAmpleForVertex * vertices_.size());
  std::size_t found = 0;
  for (std::size_t i = 0; i < pieces_.size() && found * step / 2 <= most; i += step) found += CrossingsOf(pieces_[i]);
  if (found * step / 2 <= most) return;
  throw Error("the lines cross each other more than " + std::to_string(most) +
              " times, too often to build areas of them; take fewer of them, by layer or by a window");
}

std::size_t GeosLinework::CrossingsOf(const Piece& piece) {
  std::size_t found = 0;
  const auto lines = VerticesOf(piece);
  const auto [left, right] =
      std::minmax_element(lines.begin(), lines.end(), [](auto& a, auto& b) { return a.x < b.x; });
  const auto [low, high] = std::minmax_element(lines.begin(), lines.end(), [](auto& a, auto& b) { return a.y < b.y; });
  for (const void* item : Within(piecesByPlace_.get(), left->x, low->y, right->x, high->y)) {
    const auto others = VerticesOf(*static_cast<const Piece*>(item));
    for (std::size_t i = 1; i < lines.size(); ++i) {
      for (std::size_t j = 1; j < others.size(); ++j) {
        found += Cross(lines[i - 1], lines[i], others[j - 1], others[j]) ? 1 : 0;
      }
    }
  }
  return found;
}

// The corners that lie upon segments between others.
void GeosLinework::FindMeetings() {
  for (const Vertex& corner : corners_) {
    for (const void* item : Near(piecesByPlace_.get(), corner.x, corner.y, snap_)) {
      const Piece& piece = *static_cast<const Piece*>(item);
      for (std::size_t v = piece.begin; v + 1 < piece.begin + piece.count; ++v) {
        const Vertex &from = vertices_[v], &to = vertices_[v + 1];
        const double passed = PassedAt(corner, from, to);
        if (!(passed > 0 && passed < 1 && DistanceOf(corner, from, to) <= snap_)) continue;
        if ((corner.x == from.x && corner.y == from.y) || (corner.x == to.x && corner.y == to.y)) continue;
        meetings_.push_back({v, passed, {corner.x, corner.y, from.z + passed * (to.z - from.z)}});
      }
    }
  }
  std::sort(meetings_.begin(), meetings_.end(), [](const Meeting& a, const Meeting& b) {
    return std::tie(a.segment, a.passed) < std::tie(b.segment, b.passed);
  });
  corners_ = {};
}

Geometry GeosLinework::LineOf(std::span<const Vertex> chain) const {
  static_assert(sizeof(Vertex) == 3 * sizeof(double));
  GEOSCoordSequence* const vertices =
      GEOSCoordSeq_copyFromBuffer_r(geos_, &chain[0].x, static_cast<unsigned>(chain.size()), 1, 0);
  if (vertices == nullptr) Fail();
  return Made(GEOSGeom_createLineString_r(geos_, vertices));
}

Geometry GeosLinework::Together(std::vector<Geometry> lines) const {
  std::vector<GEOSGeometry*> members;
  members.reserve(lines.size());
  for (Geometry& line : lines) members.push_back(line.release());
  return Made(
      GEOSGeom_createCollection_r(geos_, GEOS_MULTILINESTRING, members.data(), static_cast<unsigned>(members.size())));
}

Geometry GeosLinework::MeetingLines() const {
  std::vector<Geometry> lines;
  lines.reserve(pieces_.size());
  VertexChain chain;
  auto meeting = meetings_.begin();
  for (const Piece& piece : pieces_) {
    chain.clear();
    for (std::size_t v = piece.begin; v < piece.begin + piece.count; ++v) {
      chain.push_back(vertices_[v]);
      for (; meeting != meetings_.end() && meeting->segment == v; ++meeting) chain.push_back(meeting->at);
    }
    lines.push_back(LineOf(chain));
  }
  return Together(std::move(lines));
}

// The union of lines with themselves is cut wherever they meet, and has once what lies upon each other.
void GeosLinework::FindFaces() {
  const Geometry cut = Made(GEOSUnaryUnion_r(geos_, MeetingLines().get()));
  GEOSGeometry *cuts = nullptr, *dangles = nullptr, *invalid = nullptr;
  polygons_ = Made(GEOSPolygonize_full_r(geos_, cut.get(), &cuts, &dangles, &invalid));
  const Geometry own[] = {Made(cuts), Made(dangles), Made(invalid)};
  ends_ = EndsOf(dangles, cut.get());
  cuts_ = CountOf(Made(GEOSLineMerge_r(geos_, cuts)).get());
  invalid_ = CountOf(invalid);

  faces_.resize(CountIn(polygons_.get()));
  facesByPlace_ = Made(GEOSSTRtree_create_r(geos_, kNodeCapacity));
  for (std::size_t i = 0; i < faces_.size(); ++i) {
    faces_[i].polygon = Member(polygons_.get(), i);
    faces_[i].index = i;
    GEOSSTRtree_insert_r(geos_, facesByPlace_.get(), faces_[i].polygon, &faces_[i]);
  }
}

std::size_t GeosLinework::CountIn(const GEOSGeometry* collection) const {
  return static_cast<std::size_t>(std::max(0, GEOSGetNumGeometries_r(geos_, collection)));
}

const GEOSGeometry* GeosLinework::Member(const GEOSGeometry* collection, std::size_t index) const {
  return GEOSGetGeometryN_r(geos_, collection, static_cast<int>(index));
}

LooseLines GeosLinework::CountOf(const GEOSGeometry* lines) const {
  LooseLines found{static_cast<std::int64_t>(CountIn(lines))};
  if (found.count == 0) return found;
  const GEOSCoordSequence* const vertices = GEOSGeom_getCoordSeq_r(geos_, Member(lines, 0));
  if (vertices == nullptr) Fail();
  GEOSCoordSeq_getXY_r(geos_, vertices, 0, &found.place.x, &found.place.y);
  return found;
}

// Of a line that leads nowhere both ends may be such that others meet there; those of all lines tell.
LooseLines GeosLinework::EndsOf(const GEOSGeometry* dangles, const GEOSGeometry* all) const {
  std::map<std::pair<double, double>, std::size_t> meeting;
  const auto forEachEnd = [this](const GEOSGeometry* lines, const auto& handle) {
    for (std::size_t i = 0; i < CountIn(lines); ++i) {
      const GEOSCoordSequence* const vertices = GEOSGeom_getCoordSeq_r(geos_, Member(lines, i));
      unsigned size = 0;
      if (vertices == nullptr || GEOSCoordSeq_getSize_r(geos_, vertices, &size) == 0) Fail();
      for (const unsigned end : {0U, size - 1}) {
        std::pair<double, double> at;
        if (size > 0 && GEOSCoordSeq_getXY_r(geos_, vertices, end, &at.first, &at.second) != 0) handle(at);
      }
    }
  };
  forEachEnd(dangles, [&](const auto& at) { meeting[at] = 0; });
  if (meeting.empty()) return {};
  forEachEnd(all, [&](const auto& at) {
    if (const auto found = meeting.find(at); found != meeting.end()) ++found->second;
  });
  LooseLines loose;
  for (const auto& [at, lines] : meeting) {
    if (lines == 1 && loose.count++ == 0) loose.place = {at.first, at.second, 0};
  }
  return loose;
}

void GeosLinework::AppendRing(const GEOSGeometry* ring, bool clockwise, std::vector<VertexChain>& rings) const {
  const GEOSCoordSequence* const vertices = ring == nullptr ? nullptr : GEOSGeom_getCoordSeq_r(geos_, ring);
  unsigned size = 0;
  char isCcw = 0;
  if (vertices == nullptr || GEOSCoordSeq_getSize_r(geos_, vertices, &size) == 0 || size == 0) Fail();
  VertexChain& chain = rings.emplace_back(size);
  if (GEOSCoordSeq_copyToBuffer_r(geos_, vertices, &chain[0].x, 1, 0) == 0) Fail();
  if (GEOSCoordSeq_isCCW_r(geos_, vertices, &isCcw) == 0) Fail();
  if ((isCcw != 0) == clockwise) std::reverse(chain.begin(), chain.end());
  for (Vertex& v : chain) v.z = std::isfinite(v.z) ? v.z : 0;
}

void GeosLinework::Face(std::size_t index, LineworkFace& face) {
  const GEOSGeometry* const polygon = faces_[index].polygon;
  face.rings.clear();
  AppendRing(GEOSGetExteriorRing_r(geos_, polygon), true, face.rings);
  const int holes = GEOSGetNumInteriorRings_r(geos_, polygon);
  for (int i = 0; i < holes; ++i) AppendRing(GEOSGetInteriorRingN_r(geos_, polygon, i), false, face.rings);
  FindSides(face.rings.front(), face.sides);
}

// What a tree holds whose box touches another one.
const std::vector<void*>& GeosLinework::Within(GEOSSTRtree* tree, double minX, double minY, double maxX, double maxY) {
  near_.clear();
  const Geometry box = Made(GEOSGeom_createRectangle_r(geos_, minX, minY, maxX, maxY));
  const auto note = [](void* item, void* found) { static_cast<std::vector<void*>*>(found)->push_back(item); };
  GEOSSTRtree_query_r(geos_, tree, box.get(), note, &near_);
  return near_;
}

// Cutting loses which line is which, so each side is looked up by its middle. Lines that lie upon each other all count.
void GeosLinework::FindSides(const VertexChain& ring, std::vector<LineworkFace::Side>& sides) {
  sides.clear();
  for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
    const Vertex middle = {(ring[i].x + ring[i + 1].x) / 2, (ring[i].y + ring[i + 1].y) / 2, 0};
    const double length = std::hypot(ring[i + 1].x - ring[i].x, ring[i + 1].y - ring[i].y);
    FindChainsAt(middle);
    for (const std::size_t chain : upon_) sides.push_back({chain, length});
  }
  std::sort(sides.begin(), sides.end(), [](const auto& a, const auto& b) { return a.chain < b.chain; });
  std::size_t kept = 0;
  for (std::size_t i = 1; i < sides.size(); ++i) {
    if (sides[i].chain == sides[kept].chain) {
      sides[kept].length += sides[i].length;
    } else {
      sides[++kept] = sides[i];
    }
  }
  sides.resize(std::min(sides.size(), kept + 1));
}

void GeosLinework::FindChainsAt(const Vertex& at) {
  const double reach = std::max(kRoundingOfCuts * greatest_, 2 * snap_);
  upon_.clear();
  for (const void* item : Near(piecesByPlace_.get(), at.x, at.y, reach)) {
    const Piece& piece = *static_cast<const Piece*>(item);
    for (std::size_t v = piece.begin; v + 1 < piece.begin + piece.count; ++v) {
      if (!(DistanceOf(at, vertices_[v], vertices_[v + 1]) <= reach)) continue;
      upon_.push_back(piece.chain);
      break;
    }
  }
  std::sort(upon_.begin(), upon_.end());
  upon_.erase(std::unique(upon_.begin(), upon_.end()), upon_.end());
}

std::optional<std::size_t> GeosLinework::FaceAt(double x, double y) {
  if (!std::isfinite(x) || !std::isfinite(y)) return std::nullopt;
  const Geometry place = Made(GEOSGeom_createPointFromXY_r(geos_, x, y));
  std::optional<std::size_t> first;
  for (void* item : Near(facesByPlace_.get(), x, y, 0)) {
    Polygon& face = *static_cast<Polygon*>(item);
    if (first && *first < face.index) continue;
    if (!face.prepared) face.prepared = Made(GEOSPrepare_r(geos_, face.polygon));
    if (GEOSPreparedIntersects_r(geos_, face.prepared.get(), place.get()) == 1) first = face.index;
  }
  return first;
}

}  // namespace

extern "C" Linework* Create() { return new GeosLinework; }

}  // namespace tesselink
