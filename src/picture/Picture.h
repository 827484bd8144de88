// SPDX-License-Identifier: MIT
// What a drawing looks like on a screen: chains, points and texts by layer, thinned to what a screen can show.
//
// As long as a drawing is small, every vertex is kept. When the budget of vertices is used up, a grid of square cells
// is laid over the drawing: a vertex in the cell of the one before it is dropped, and so is a segment or a point where
// another one of its layer runs between the same cells. Each time the budget is used up again the cells double, and
// what is held is thinned anew. Cells nest, so that every vertex that was dropped lies in the cell of one that was
// kept, and every vertex that is kept is one of the drawing's own.
#pragma once

#include <compare>
#include <cstdint>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/element/Extents.h"
#include "core/element/VertexChains.h"
#include "core/element/tEntity.h"

namespace tesselink {

struct PicturePoint {
  double x = 0, y = 0;
  bool operator==(const PicturePoint&) const = default;
};

struct PictureLayer {
  std::string name;
  std::int64_t elements = 0;
  std::int32_t colour = 0;  ///< red in the low byte
  bool coloured = false;    ///< by an element or by its own name; false: from the palette
  bool others = false;      ///< stands for every layer behind the most that are told apart
};

/// A point of the drawing, or a chain that begins behind the vertices of the mark before.
struct PictureMark {
  std::uint32_t end = 0;  ///< the vertex behind its last one
  std::uint8_t layer = 0;
  bool point = false;  ///< else a chain; one of a single vertex is a chain that is smaller than a cell
};

struct PictureText {
  PicturePoint at;
  double size = 0;   ///< height in the drawing's unit
  double angle = 0;  ///< degrees, counter-clockwise
  std::int16_t justification = 0;
  std::uint8_t layer = 0;
  std::string text;
};

/// What a drawing holds, by what people call it.
struct PictureCounts {
  std::int64_t elements = 0;
  std::int64_t layers = 0;        ///< as far as they are told apart
  std::int64_t closedChains = 0;  ///< that are no rings of areas
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
  /// Layers that are told apart.
  static constexpr std::size_t kMostLayers = 200;
  /// Cells along the longer side of the drawing when it is thinned for the first time.
  static constexpr double kFirstCells = 4096;

  explicit Picture(PictureBudget budget = {}, const CurveTolerance& tolerance = CurveTolerance::Classic());

  /// Adds an element as a writer would be handed it. What has no vertex, or is of no kind that is drawn, adds nothing;
  /// vertices that are no finite numbers are left out.
  void Add(const tEntity& entity);

  const std::vector<PictureLayer>& Layers() const { return layers_; }
  std::size_t MarkCount() const { return marks_.size(); }
  const PictureMark& Mark(std::size_t mark) const { return marks_[mark]; }
  std::span<const PicturePoint> Vertices(std::size_t mark) const {
    const std::size_t first = mark == 0 ? 0 : marks_[mark - 1].end;
    return {vertices_.data() + first, marks_[mark].end - first};
  }
  const std::vector<PictureText>& Texts() const { return texts_; }
  std::size_t VertexCount() const { return vertices_.size(); }

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
  std::int64_t Generation() const { return generation_; }

 private:
  struct CellPlace {
    std::int64_t x = 0, y = 0;
    auto operator<=>(const CellPlace&) const = default;
  };

  void Count(const tEntity& entity);
  void AddPlain(const tEntity& entity);
  std::uint8_t LayerOf(const tEntity& entity);
  std::uint8_t LayerNumber(const std::string& name);
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
  void LiftPen(bool point = false);
  std::size_t RunBegin() const { return marks_.empty() ? 0 : marks_.back().end; }

  void MakeRoom();
  void Coarsen();
  void Rewrite();
  CellPlace CellOf(PicturePoint at) const;
  bool IsNew(CellPlace from, CellPlace to, bool point);

  PictureBudget budget_;
  CurveTolerance tolerance_;
  std::vector<PicturePoint> vertices_;
  std::vector<PictureMark> marks_;
  std::vector<PictureText> texts_;
  std::vector<PictureLayer> layers_;
  std::unordered_map<std::string, std::uint8_t> layerNumbers_;
  std::uint8_t layer_ = 0;  // of the element at work

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
  std::int64_t areaRecord_ = 0;  // whose first ring the element before was, or a further one
  std::int64_t leftOut_ = 0, generation_ = 0;
};

}  // namespace tesselink
