// SPDX-License-Identifier: MIT
// What a drawing looks like on a screen: chains, points and texts by layer, thinned to what a screen can show.
//
// As long as a drawing is small, every vertex is kept. When the budget of vertices is used up, a grid of square cells
// is laid over the drawing: a vertex in the cell of the one before it is dropped, and so is a segment or a point where
// another one of its look runs between the same cells; rings of areas stay whole until they are smaller than two cells.
// Each time the budget is used up again the cells double, and what is held is thinned anew. Cells nest, so that every
// vertex that was dropped lies in the cell of one that was kept, and every vertex that is kept is one of the drawing's
// own.
#pragma once

#include <compare>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "core/element/Extents.h"
#include "core/element/VertexChains.h"
#include "core/element/tEntity.h"
#include "picture/PictureStyles.h"

namespace tesselink {

struct PicturePoint {
  double x = 0, y = 0;
  bool operator==(const PicturePoint&) const = default;
};

/// What is drawn at a mark.
enum class MarkKind : std::uint8_t {
  Chain,  ///< one of a single vertex is a chain that is smaller than a cell
  Point,
  Ring,  ///< of an area; it ends on its first vertex. Those of one area follow each other
};

/// Something drawn, whose vertices begin behind those of the mark before.
struct PictureMark {
  std::uint32_t end = 0;      ///< the vertex behind its last one
  std::uint32_t element = 0;  ///< its number; an area's rings have that of the first
  std::uint16_t style = 0;
  MarkKind kind = MarkKind::Chain;
};

struct PictureText {
  PicturePoint at;
  double size = 0;   ///< height in the drawing's unit
  double angle = 0;  ///< degrees, counter-clockwise
  std::int16_t justification = 0;
  std::uint16_t style = 0;
  std::uint32_t element = 0;
  bool ofTable = false;  ///< from an attribute table, whose labels have heights that fit no drawing
  std::string text;
};

/// What a drawing holds, by what people call it.
struct PictureCounts {
  std::int64_t elements = 0;
  std::int64_t layers = 0;  ///< as far as they are told apart
  std::int64_t areas = 0, points = 0, texts = 0;

  bool operator==(const PictureCounts&) const = default;
};

/// How much of a drawing is held. The greatest budget takes less than 50 MB.
struct PictureBudget {
  std::size_t vertices = 500'000;  ///< not less than 1024
  std::size_t texts = 50'000;      ///< further ones are points
};

class Picture {
 public:
  /// Cells along the longer side of the drawing when it is thinned for the first time.
  static constexpr double kFirstCells = 4096;

  explicit Picture(PictureBudget budget = {}, const CurveTolerance& tolerance = CurveTolerance::Classic());

  /// Adds an element as a writer would be handed it, with a number by which it is found again; 0: how many there are.
  /// What has no vertex, or is of no kind that is drawn, adds nothing; vertices that are no finite numbers are left
  /// out.
  void Add(const tEntity& entity, std::uint32_t number = 0);
  /// The line types that the drawing defines.
  void Define(const std::vector<LineType>& lineTypes) { styles_.Define(lineTypes); }
  /// Whether there is hardly room for more. The next element would then have all that is held thinned at once, which
  /// may take as long as a person notices; `ThinOn` does a part of it, until there is room. What is shown stays
  /// meanwhile.
  bool IsFull() const { return IsThinning() || now_.vertices.size() + budget_.vertices / 64 > budget_.vertices; }
  void ThinOn();
  /// What has been added may be drawn now. A ring that joins an area from before counts as a change of it.
  void Rest() { rested_ = true; }

  const PictureStyles& Styles() const { return styles_; }
  const std::vector<PictureLayer>& Layers() const { return styles_.Layers(); }
  std::size_t MarkCount() const { return Shown().marks.size(); }
  const PictureMark& Mark(std::size_t mark) const { return Shown().marks[mark]; }
  std::span<const PicturePoint> Vertices(std::size_t mark) const {
    const auto& [vertices, marks] = Shown();
    const std::size_t first = mark == 0 ? 0 : marks[mark - 1].end;
    return {vertices.data() + first, marks[mark].end - first};
  }
  const std::vector<PictureText>& Texts() const { return texts_; }
  std::size_t VertexCount() const { return Shown().vertices.size(); }

  /// Elements that were added, and what they are.
  std::int64_t Elements() const { return counts_.elements; }
  PictureCounts Counts() const;
  /// Vertices that were no finite numbers.
  std::int64_t LeftOut() const { return leftOut_; }
  /// The bounds in x and y of every vertex that was added.
  const Extents& Bounds() const { return bounds_; }
  /// The bounds to show: without a few vertices that lie far away from nearly all others, as slips and fillers do.
  Extents View() const;
  /// Whether there are such vertices.
  bool LeavesOutOfView() const;
  /// The side of a cell; 0 while nothing has been thinned.
  double Cell() const { return cell_; }
  /// Changes whenever marks that were there before have changed; else new ones stand behind them.
  std::int64_t Generation() const { return generation_ + styles_.Changes(); }

 private:
  struct CellPlace {
    std::int64_t x = 0, y = 0;
    auto operator<=>(const CellPlace&) const = default;
  };

  struct Strokes {
    std::vector<PicturePoint> vertices;
    std::vector<PictureMark> marks;
  };
  static constexpr std::size_t kAllThinned = SIZE_MAX;

  bool IsThinning() const { return thinned_ != kAllThinned; }
  const Strokes& Shown() const { return IsThinning() ? before_ : now_; }
  void Count(const tEntity& entity, std::uint32_t number);
  void CountChain(const tEntity& entity);
  void AddPlain(const tEntity& entity);
  void AddPoints(const tEntity& entity);
  void AddChain(const tEntity& entity);
  void AddPart(std::span<const double> xs, std::span<const double> ys, bool closed);
  void AddText(const tEntity& entity);
  bool Takes(PicturePoint at);

  void PutPoint(PicturePoint at);
  void DrawPoint(PicturePoint at);
  void BeginChain();
  void PutVertex(PicturePoint at);
  void DrawTo(PicturePoint at);
  void EndChain();
  void EndRing();
  void DrawFlat();
  void LiftPen(MarkKind kind = MarkKind::Chain);
  std::size_t RunBegin() const { return now_.marks.empty() ? 0 : now_.marks.back().end; }

  void MakeRoom();
  void Coarsen();
  void BeginThinning();
  void Thin();
  CellPlace CellOf(PicturePoint at) const;
  static std::uint64_t BitsOf(CellPlace from, CellPlace to, std::uint32_t style, bool point);
  bool IsNew(CellPlace from, CellPlace to, bool point);
  void Foresee(const PictureMark& mark, PicturePoint at) const;
  bool IsNewRing();
  bool Notes(std::uint64_t bits);

  PictureBudget budget_;
  CurveTolerance tolerance_;
  Strokes now_;
  // What was held before it was thinned, whose memory is taken again the next time: to ask for as much anew would take
  // longer than the thinning itself.
  Strokes before_;
  std::size_t thinned_ = kAllThinned;  // so many of its marks
  std::vector<PictureText> texts_;
  PictureStyles styles_;
  // Of the element at work.
  std::uint16_t style_ = 0;
  std::uint32_t element_ = 0;
  bool ring_ = false;  // its chains are rings of an area

  // The chain at work. What it has drawn since the pen was last lifted stands behind the vertices of the last mark.
  PicturePoint pen_;
  CellPlace penPlace_;
  bool penSet_ = false;  // the pen is somewhere; the next vertex is the end of a segment
  bool moved_ = false;   // the chain has left the cell in which it began

  double cell_ = 0, perCell_ = 0;
  PicturePoint anchor_;  // a corner of cells
  // An open hash table of what runs where; 0 is a free place. That a fingerprint is another's by chance costs one mark
  // in a thousand million.
  std::vector<std::uint32_t> drawn_;

  Extents bounds_;
  PictureCounts counts_;  // but for layers
  // Of the area whose ring came last: the record, and the number of the element that began it.
  std::int64_t areaRecord_ = 0;
  std::uint32_t areaElement_ = 0;
  bool rested_ = false;
  std::int64_t leftOut_ = 0, generation_ = 0;
};

}  // namespace tesselink
