// SPDX-License-Identifier: MIT
// The one record that travels from a reader through the run to a writer.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

namespace tesselink {

/// The kinds of element that readers deliver, the values of `tEntity::bType`.
enum Kind : std::int16_t {
  kPoint = 0,
  kLine = 1,
  kPolyline = 2,
  kText = 3,
  kCircle = 4,
  kArc = 6,
};

/// Kinds as a set: a bit for each.
using KindSet = std::uint32_t;
constexpr KindSet SetOf(Kind kind) { return KindSet{1} << kind; }
inline constexpr KindSet kChainsAndCurves = SetOf(kLine) | SetOf(kPolyline) | SetOf(kCircle) | SetOf(kArc);

/// Whether elements of a kind lie at single places.
constexpr bool IsPointOrText(std::int16_t kind) { return kind == kPoint || kind == kText; }
/// Whether they are chains of vertices.
constexpr bool IsChain(std::int16_t kind) { return kind == kLine || kind == kPolyline; }
/// Whether they are given by a centre, a radius and angles.
constexpr bool IsCurve(std::int16_t kind) { return kind == kCircle || kind == kArc; }

/// What a circle or an arc is given by, besides its centre; degrees.
struct CurveNumbers {
  double radius = 0, start = 0, end = 0;
};

/// Where the colour or the line type of an element comes from. `Colour`, `RGB` and `LineStyle` say in any case which
/// one it is; only within a block that of the block is not known.
enum class StyleSource : std::uint8_t { Own, Layer, Block };

/// What the source of an element has and its reader could not put into it, as bits. The run counts it.
enum ReadingLoss : std::uint32_t {
  kLostArea = 1,               ///< that its chain is a ring
  kLostParts = 2,              ///< that further elements are parts of the same; of the first of them
  kLostBaseline = 4,           ///< that a text stands on its baseline
  kLostCurve = 8,              ///< a curve, for which its chain stands
  kLostDigits = 16,            ///< of z, radius and angles, beyond single precision
  kLostHiding = 32,            ///< that the drawing does not show it
  kLostPattern = 64,           ///< with what the area is filled
  kLostBreaks = 128,           ///< where the font breaks a line of text
  kLostPicture = 256,          ///< what an image shows or a wipeout hides
  kLostWidth = 1 << 9,         ///< the width of its line
  kLostThickness = 1 << 10,    ///< how far it is drawn out across its plane
  kLostWeight = 1 << 11,       ///< the weight of its line
  kLostFont = 1 << 12,         ///< of a text, other than the plainest
  kLostSlant = 1 << 13,        ///< of its letters, or that they are mirrored
  kLostLetterWidth = 1 << 14,  ///< beside that of the font
  kLostFormats = 1 << 15,      ///< of parts of a text
  kLostLayerHiding = 1 << 16,  ///< that its layer is off or frozen
  kLostArrow = 1 << 17,        ///< the head of an arrow at its end
  kLostData = 1 << 18,         ///< what applications other than CAD itself attached to it
  kLostAppearance =
      kLostWidth | kLostThickness | kLostWeight | kLostFont | kLostSlant | kLostLetterWidth | kLostFormats | kLostArrow,
};

/// What an element has besides its vertices.
struct EntityAttributes {
  std::int16_t bType = 0;     ///< kind of element, see Kind
  std::int32_t Colour = 0;    ///< DXF colour number
  float Rad = 0;              ///< radius of a circle or arc
  float AngStart = 0;         ///< start angle of an arc, degrees
  float AngEnd = 0;           ///< end angle of an arc, degrees
  std::string Layer;          ///< layer name
  std::string LineStyle;      ///< line type name; empty means "CONTINUOUS"
  std::string Text;           ///< text, or the symbol name of a point
  double TextAng = 0;         ///< rotation of a text, degrees
  double TextSize = 0;        ///< height of a text
  std::int16_t TextJust = 0;  ///< justification code, see Justification.h
  std::string TextUnits;      ///< short tag; "M" for shapefile labels
  std::string CDFCode;        ///< feature code of up to 7 characters
  bool Closed = false;        ///< goes with CDFCode; a polygon
  std::int32_t RGB = 0;       ///< 24-bit colour, red in the low byte

  // What drawings hold beyond these; readers of the classic dialect leave it as it is here. See core/run/Reduction.h.
  bool IsArea = false;   ///< the parts are closed rings; outer ones run clockwise, holes the other way
  bool IsBlack = false;  ///< an RGB of 0 is black; else it is no colour
  StyleSource ColourFrom = StyleSource::Own, LineStyleFrom = StyleSource::Own;

  bool WasArea = false;      ///< a closed chain that is a ring of an area, which the writer cannot hold as such
  bool IsLabel = false;      ///< a text that names the record of another element
  std::string Block;         ///< of a point that stands for an inserted block, its name
  std::uint64_t Handle = 0;  ///< of what drew it in its drawing; 0 where there is none

  std::uint32_t Lost = 0;   ///< of ReadingLoss; in the classic dialect too
  std::int64_t Record = 0;  ///< number, from 1, of the input's record that it came from; 0 where there are none
};

/// One drawing element: attributes, and three arrays of coordinates that callers keep in step. A cleared entity holds
/// one element of value 0 in each array. One entity is reused for a whole run: readers `Clear` and refill it.
class tEntity : public EntityAttributes {
 public:
  /// Position in a coordinate array, from 0.
  using Index = std::ptrdiff_t;
  /// What the last reads left behind; the counts set it back to `None`.
  enum class ErrorState { None, SubscriptOutOfRange };

  std::vector<Index> Parts;      ///< the first vertex of each further part of a chain or group; empty: one part
  std::vector<double> Bulges;    ///< tangents of a quarter of the arcs behind the first vertices; the rest have none
  std::vector<double> Measures;  ///< m of each vertex, not a number where it has none; empty: none has

  tEntity() : x_(1), y_(1), z_(1) {}

  /// Whether the chain, taken as closed, runs clockwise; computed afresh by counting the crossings of a probe line
  /// through the middle of the first edge.
  bool Clockwise();

  /// The coordinate at an index; outside the array 0, noted in `State`.
  double x(Index index) const { return Read(x_, index); }
  double Y(Index index) const { return Read(y_, index); }
  float Z(Index index) const { return static_cast<float>(Read(z_, index)); }
  /// Stores a coordinate; an index above the upper bound grows the array (new elements are 0). An index below 0 is
  /// noted in `State` and stores nothing.
  void x(Index index, double value) {
    Write(x_, index, value);
    stored_ = true;
  }
  void Y(Index index, double value) { Write(y_, index, value); }
  /// As for x, but an index below the lower bound writes to the lower bound, and a variable of any integer type becomes
  /// it.
  template <typename Integer>
  requires std::integral<std::remove_cvref_t<Integer>>
  void Z(Integer&& index, float value) {
    auto at = static_cast<Index>(index);
    if (at < 0) {
      at = 0;
      if constexpr (!std::is_const_v<std::remove_reference_t<Integer>>) index = 0;
    }
    Write(z_, at, static_cast<double>(value));
  }

  /// The z in double precision, as the standard dialect's readers store it; `Z` is the nearest single.
  double Height(Index index) const { return Read(z_, index); }
  void Height(Index index, double value) { Write(z_, index, value); }
  /// Radius and angles likewise: as they were stored in double precision, or what `Rad`, `AngStart` and `AngEnd` say if
  /// those have been set since.
  CurveNumbers Curve() const;
  void Curve(const CurveNumbers& numbers);

  /// Index of the last vertex, the smaller of the bounds of x and y; -1 when there is none, which is also what a single
  /// vertex at (0, 0) counts as unless `CountOrigin` says otherwise.
  Index PointCount() const {
    state_ = ErrorState::None;
    const std::size_t size = x_.size() < y_.size() ? x_.size() : y_.size();
    if (size == 1 && x_[0] == 0 && y_[0] == 0 && !(countsOrigin_ && stored_)) return -1;
    return static_cast<Index>(size) - 1;
  }
  /// Whether a single vertex that was stored at (0, 0) is one; clearing leaves that as it is.
  void CountOrigin(bool counts) { countsOrigin_ = counts; }
  /// The upper bound of one array; -1 when it holds a single 0.
  Index XCount() const { return Count(x_); }
  Index YCount() const { return Count(y_); }
  Index ZCount() const { return Count(z_); }

  /// Whether the chain is closed and does not end on its first vertex.
  bool LacksClosingVertex() const {
    const Index last = PointCount();
    return Closed && (x(0) != x(last) || Y(0) != Y(last));
  }
  /// Whether it stands for a record of the input that has no vertices.
  bool IsNull() const { return Record > 0 && !stored_; }
  /// Whether the element is one chain or group of straight segments, and nothing more.
  bool IsPlain() const { return Parts.empty() && Bulges.empty() && Measures.empty() && !IsArea; }
  /// The number of parts, and where one ends, as the index behind its last vertex.
  std::size_t PartCount() const { return Parts.size() + 1; }
  Index PartBegin(std::size_t part) const { return part == 0 ? 0 : Parts[part - 1]; }
  Index PartEnd(std::size_t part) const { return part < Parts.size() ? Parts[part] : PointCount() + 1; }
  /// Makes each part run the other way, from its last vertex to its first. Not for elements with bulges or m values.
  void TurnParts();
  /// Whether all vertices have the same z.
  bool IsLevel() const;
  /// Whether any z is other than 0, which formats without heights lose.
  bool HasHeight() const;
  /// The same for m.
  bool HasMeasure() const;

  /// The arrays as they stand, the single 0 of an empty one included.
  std::span<const double> AllX() const { return x_; }
  std::span<const double> AllY() const { return y_; }
  std::span<const double> AllZ() const { return z_; }

  /// The coordinates of the vertices, as many of each, to be changed in place.
  struct Spans {
    std::span<double> x, y, z;
  };
  Spans Vertices();
  /// The first `count` of x and of y, all of which the caller stores; the arrays grow to hold them.
  struct PlaneSpans {
    std::span<double> x, y;
  };
  PlaneSpans ToStore(Index count);

  /// Appends a coordinate behind the last one of each array. An array whose only element is 0 counts as empty, so a
  /// first coordinate of exactly 0 is overwritten by the second: store by index where that matters.
  void AddPoint(double x, double y, double z);
  /// One element of value 0 in each array, numeric attributes 0, `Closed` false; the text attributes stay.
  void Clear();
  /// `Clear`, and the text attributes empty: a fresh entity that keeps its memory.
  void Reset();
  /// One element of value 0 in each array; the attributes stay.
  void ClearVertices();
  /// Drops the last element of each array that has more than one.
  void RemoveLastVertex();
  /// Takes on all but the vertices and what belongs to them.
  void CopyAttributes(const tEntity& from) {
    EntityAttributes::operator=(from);
    curve_ = from.curve_;
  }
  /// Becomes another element, but for what counts as a vertex.
  void CopyFrom(const tEntity& from) {
    const bool counts = countsOrigin_;
    *this = from;
    countsOrigin_ = counts;
  }
  /// Replaces the vertices by the centre of their box.
  void ResetToCentroid();

  ErrorState State() const { return state_; }

 private:
  using Coordinates = std::vector<double>;

  double Read(const Coordinates& values, Index index) const {
    if (static_cast<std::size_t>(index) < values.size()) return values[static_cast<std::size_t>(index)];
    state_ = ErrorState::SubscriptOutOfRange;
    return 0;
  }
  void Write(Coordinates& values, Index index, double value) {
    if (static_cast<std::size_t>(index) >= values.size() && !Grow(values, index)) return;
    values[static_cast<std::size_t>(index)] = value;
  }
  bool Grow(Coordinates& values, Index index);
  Index Count(const Coordinates& values) const {
    state_ = ErrorState::None;
    return values.size() == 1 && values[0] == 0 ? -1 : static_cast<Index>(values.size()) - 1;
  }
  bool ComputeOrientation() const;
  void ComputeExtents();
  void ResetExtents();

  Coordinates x_, y_, z_;
  CurveNumbers curve_;
  double maxX_ = -99999999, maxY_ = -99999999, maxZ_ = -99999999;
  double minX_ = 99999999, minY_ = 99999999, minZ_ = 99999999;
  bool clockwise_ = false;
  bool countsOrigin_ = false;
  bool stored_ = false;  // a vertex, since they were cleared
  mutable ErrorState state_ = ErrorState::None;
};

}  // namespace tesselink
