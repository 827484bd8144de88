// SPDX-License-Identifier: MIT
// The writer of drawings of release 2007 (AC1021): UTF-8, every object with a handle.
#pragma once

#include <string_view>

#include "formats/dxf/DrawingOutput.h"
#include "formats/dxf/GroupWriter.h"

namespace tesselink {

/// What few entities have.
struct EntityTies {
  Handle hatch = kNoHandle;       ///< of which it is a boundary
  std::int32_t transparency = 0;  ///< as group 440 has it; 0: none
};

/// Flat chains are LWPOLYLINEs, others POLYLINEs in space; an area is a HATCH with all its rings, tied to a closed
/// LWPOLYLINE for each of them. Entities count their handles up as they come; the layers and line types, which are
/// known only at the end, have those behind them, and all else has handles of its own below.
class DXF2007OutFilter final : public DrawingOutput {
 public:
  explicit DXF2007OutFilter(const FilterContext& context);
  ~DXF2007OutFilter() override { ReleaseQuietly(); }

  Holding Holds() const override {
    return {.bulges = true,
            .lacks = kHasSymbol | kHasEntityCode | kHasSeveralPoints,
            .curves = true,
            .levelAreas = true,
            .keeps = kLostHiding | kLostLayerHiding};
  }

 private:
  // The vertices of a chain within an element; not the one that closes it.
  struct Run {
    tEntity::Index first = 0, last = 0;
    std::int64_t Count() const { return last - first + 1; }
  };

  void Create(const std::string& path) override;
  void WriteSections() override;
  void WriteEnd(FileWriter& output) override;
  void WritePoints(const tEntity& entity, tEntity::Index last) override;
  void WriteLines(const tEntity& entity, tEntity::Index last) override;
  void WritePolyline(const tEntity& entity, tEntity::Index last) override;
  void WriteText(const tEntity& entity) override;
  void WriteCircle(const tEntity& entity) override;
  void WriteArc(const tEntity& entity) override;

  void WritePoint(const tEntity& entity, tEntity::Index at);
  void WriteFlatChain(const tEntity& entity, const Run& chain, bool closed, Handle hatch);
  void WriteChainInSpace(const tEntity& entity, const Run& chain);
  void WriteArea(const tEntity& entity);
  void WriteHatch(const tEntity& entity, std::int64_t paths);
  void WritePath(const tEntity& entity, const Run& ring, Handle boundary);
  static Run RingOf(const tEntity& entity, std::size_t part);
  static bool Surrounds(const tEntity& entity, const Run& ring);
  static bool HasBulges(const tEntity& entity, const Run& chain);
  void FlatVertices(const tEntity& entity, const Run& chain, bool bulges, bool everyBulge);

  void Begin(std::string_view type, Handle owner = kNoHandle);
  void Open(std::string_view type, const tEntity& entity, std::string_view subclass, const EntityTies& ties = {});
  void WriteHeader();
  void WriteLineTypeTable();
  void WriteLayerTable();
  bool HasLettersBeyondAscii() const;

  Handle next_ = kNoHandle;  // of the next entity, or the next row of a table
  bool textsBeyondAscii_ = false;
  std::string commonHead_;
};

}  // namespace tesselink
