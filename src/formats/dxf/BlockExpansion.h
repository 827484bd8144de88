// SPDX-License-Identifier: MIT
// What inserts of blocks draw.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/element/tEntity.h"
#include "core/run/Report.h"
#include "formats/dxf/EntityContext.h"
#include "formats/dxf/EntityReader.h"
#include "formats/dxf/GroupScanner.h"
#include "formats/dxf/Placement.h"

namespace tesselink {

/// Draws an insert one element a call, with all that its block inserts in turn. Small blocks are read once; of a large
/// one a piece at a time is in memory, whatever the number of inserts and of places.
///
/// What lies on layer 0 of a block is on the layer of its insert; a colour or line type by block is that of the insert.
class BlockExpansion {
 public:
  /// `source` is that of the drawing; `most` is the number of entities, drawn or not, after which it refuses to go on.
  BlockExpansion(const std::string& path, const EntitySource& source, std::int64_t most);

  /// Begins with an insert; the element has its layer, colour and line type.
  void Begin(const BlockInsert& insert, const tEntity& attributes, std::int64_t place);
  /// Begins with an attribute at the further places of its insert's array.
  void Repeat(const tEntity& attribute, const BlockPlace& array, std::int64_t place);
  bool IsActive() const { return depth_ > 0 || copy_ < repeated_.insert.at.Count(); }
  /// The next element, in fresh attributes. False when this call found none, which is no end. Throws LimitReached.
  bool Next(tEntity& element);

 private:
  // Something that a block draws: an element, or an insert with its attributes. An element that is an attribute of an
  // insert as an array stands at each place of that.
  struct Part {
    tEntity element;
    bool isInsert = false;
    BlockInsert insert;
  };
  // Where reading goes on, and the array whose attributes may follow.
  struct PieceMark : GroupMark {
    BlockPlace array = {};
  };
  // A run of a block's entities, as they lie in the block.
  struct Piece {
    std::vector<Part> parts;
    std::map<std::string, std::int64_t, std::less<>> undelivered;
    std::int64_t passed = 0;  // entities that draw nothing
    bool isLast = true;
    bool wiresFollow = false;  // the entity read last draws more, which the reader holds
    bool isRest = false;       // it is what one entity still draws, not what is read at a mark
    int scale = 0;             // for which it was drawn, as a power of 2; matters only where it has curves
    bool hasCurves = false;
    PieceMark next;         // where the block goes on
    std::size_t bytes = 0;  // that it takes, roughly
  };
  // An insert at work.
  struct Frame {
    BlockInsert insert;
    Placement outer;                     // of the block that holds the insert
    Placement placement;                 // of the insertion at work
    std::int64_t count = 0;              // of the insertion at work, in the array
    PieceMark mark;                      // of the piece
    std::shared_ptr<const Piece> piece;  // null when it has to be read again
    std::size_t part = 0;                // the next one
    std::int64_t copy = 0;               // the next one of that part
    EntityAttributes style;              // the insert's, and that of its layer
    std::string layerLineType;
    std::int32_t layerColour = 0, layerRGB = 0;
  };
  // What is known of a block besides what it says itself.
  struct Known {
    std::shared_ptr<const Piece> whole;  // of a small block that has been read
    std::int64_t told = -1;              // up to where what is wrong in it has been told
    std::int64_t split = -1;             // an entity whose wires fill pieces, which was told of when it was first met
    bool isOpen = false;                 // an insert of it is at work
  };

  void Push(const BlockInsert& insert, const EntityAttributes& attributes);
  void BeginPlace(Frame& frame);
  void GoOn(Frame& frame);
  void Use(Frame& frame, const PieceMark& mark);
  void Load(Frame& frame);
  void LetGo();
  void Count(std::int64_t entities = 1);
  std::shared_ptr<const Piece> PieceAt(std::size_t block, const PieceMark& mark, int scale);
  std::shared_ptr<Piece> ReadPiece(Known& known, const PieceMark& mark, int scale);
  void AddParts(Piece& piece);
  void AddPart(Piece& piece, const BlockInsert* insert);
  void AddWires(Piece& piece);
  void GoOnWithWires(Frame& frame);
  [[noreturn]] void Refuse(const std::string& why);
  bool DeliverPart(Frame& frame, tEntity& element);
  bool Place(tEntity& element, const Placement& placement);
  static void Style(const Frame& frame, EntityAttributes& style);
  void Warn(WarningKind kind, const std::string& what);

  EntitySource source_;
  GroupScanner scanner_;
  Report read_;  // what the reading of a piece met
  EntityReader reader_;
  tEntity scratch_;
  Placing placing_;
  std::vector<Frame> frames_;
  std::size_t depth_ = 0;
  std::vector<Known> known_;  // by the number of the block
  std::size_t kept_ = 0;      // bytes of small blocks that are held
  std::size_t atWork_ = 0;    // bytes of the pieces of inserts at work
  std::size_t loaded_ = 0;    // the outermost insert at work whose piece is held
  std::int64_t most_, count_ = 0;
  std::int64_t place_ = 0;  // of the insert in the drawing
  Part repeated_;           // an attribute of the drawing itself
  std::int64_t copy_ = 1;   // the next one of that
};

}  // namespace tesselink
