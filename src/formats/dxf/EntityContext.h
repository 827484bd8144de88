// SPDX-License-Identifier: MIT
// What the functions that read entities work with and share.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/element/SplineChains.h"
#include "core/element/VertexChains.h"
#include "formats/dxf/DrawingColours.h"
#include "formats/dxf/EntityGroups.h"
#include "formats/dxf/MultileaderEntities.h"
#include "formats/dxf/Placement.h"
#include "formats/dxf/TextLines.h"

namespace tesselink {

class Drawing;
struct DrawingLayer;
class GroupScanner;
class Report;

/// How inserts of blocks arrive: as points, as what the blocks draw, or as both.
enum class BlockMode { Points, Expand, Both };

/// An insert that is to be drawn.
struct BlockInsert {
  std::size_t block = 0;
  BlockPlace at;
  const DrawingLayer* layer = nullptr;  ///< of the insert
};

/// Inserts, where the first one is, and the entities that their blocks draw.
struct BlockTally {
  std::int64_t inserts = 0, place = 0, entities = 0;
};

/// What entities are read from. The scanner, the drawing and the report outlive their reader.
struct EntitySource {
  GroupScanner& scanner;
  Drawing& drawing;
  Report& report;
  std::string programFolder;  ///< where the colour table lies
  bool paperSpace = false;    ///< deliver paper space too
  bool inFull = false;        ///< z, radii and angles in double precision; else rounded to singles
  bool byLayer = false;       ///< what colour and line type come from is told; else an element has them itself
  BlockMode blocks = BlockMode::Points;
  bool ownBlocks = false;       ///< dimensions and tables come as what their block draws; else they are not read
  bool whole = false;           ///< hatches, leaders and what else drawings hold come too; else they are counted
  bool inBlock = false;         ///< what is read is the definition of a block
  bool symbolsOfPoints = true;  ///< a POINT has the symbol "NOSTATUS"; else none
  bool baselines = false;       ///< a text on its baseline has the placement 0; else 16, as one on its bottom has
  bool bulges = false;          ///< polylines keep their bulges, where their plane lies in the map; else they are drawn
  CurveTolerance tolerance = CurveTolerance::Classic();  ///< of curves that are drawn
};

/// The chains of an entity that draws several: they lie one behind the other in the context's chain and are delivered
/// one by one.
class Wires {
 public:
  struct Wire {
    std::size_t begin = 0, end = 0;  ///< of its vertices in the chain
    bool closed = false;
  };

  void Clear() {
    wires_.clear();
    next_ = 0;
  }
  /// Ends a wire that holds the vertices behind the last one, up to the chain's size.
  void End(std::size_t size, bool closed) { wires_.push_back({wires_.empty() ? 0 : wires_.back().end, size, closed}); }
  bool IsEmpty() const { return wires_.empty(); }
  bool HasNext() const { return next_ < wires_.size(); }
  const Wire& Next() { return wires_[next_++]; }

 private:
  std::vector<Wire> wires_;
  std::size_t next_ = 0;
};

/// The vertices of an MLINE, each with how far along its miter the lines run.
struct Multiline {
  struct At {
    Vertex place, miter;
    std::size_t offsets = 0;  ///< where its own begin
  };
  std::vector<At> vertices;
  std::vector<double> offsets;

  void Clear() {
    vertices.clear();
    offsets.clear();
  }
};

/// The entity being read. An element is made in `chain`; what an entity type gathers besides is here as well, so that
/// its memory is used again.
struct EntityContext {
  using Corners = std::array<std::int32_t, 4>;

  explicit EntityContext(EntitySource from) : source(std::move(from)), colours(source.programFolder, source.report) {}
  EntityContext(const EntityContext&) = delete;
  EntityContext& operator=(const EntityContext&) = delete;

  EntitySource source;
  DrawingColours colours;

  std::string type;        ///< as it may be shown
  EntityGroups groups;     ///< the common ones
  bool atEnd = false;      ///< the file has ended
  bool curved = false;     ///< a curve was drawn since it was set, so that elements depend on the tolerance
  std::uint32_t lost = 0;  ///< of the entity, what its elements lack; bits of ReadingLoss
  bool toDraw = false;     ///< the entity is an insert that is to be drawn, which `insert` tells
  BlockInsert insert;
  bool inArray = false;  ///< attributes that follow are those of an array of inserts, at `array`
  BlockPlace array;
  BlockTally undrawn;  ///< inserts that were delivered as points only

  VertexChain chain, scratch;
  Wires wires;
  TextLines lines;
  std::vector<double> bulges;       ///< of the first vertices of the chain; the others have none
  std::vector<std::int32_t> flags;  ///< likewise
  std::vector<Corners> faces;       ///< of a polyface
  SplineCurve spline;
  std::string regionData;  ///< of a region
  std::string hatch;       ///< the handle of the last HATCH that became an area
  Multiline multiline;
  Multileader multileader;
};

}  // namespace tesselink
