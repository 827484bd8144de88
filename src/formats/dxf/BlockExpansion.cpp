// SPDX-License-Identifier: MIT
#include "formats/dxf/BlockExpansion.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "core/io/Errors.h"
#include "core/io/Utf8.h"
#include "formats/dxf/Drawing.h"
#include "formats/dxf/EntityReporting.h"

namespace tesselink {
namespace {

// A piece of a block ends at either.
constexpr std::size_t kMostParts = 512, kPieceBytes = std::size_t{512} << 10;
// Small blocks that are held, together.
constexpr std::size_t kMostKept = std::size_t{4} << 20;
// Pieces of inserts that are at work, together. Where blocks nest deeper, those of the outer ones are read again.
constexpr std::size_t kMostAtWork = std::size_t{32} << 20;
// No drawing nests its blocks as deeply.
constexpr std::size_t kDeepest = 10'000;
// Entities that are looked at in one call without finding an element.
constexpr int kMostLooks = 1000;

EntitySource SourceWithin(const EntitySource& source, GroupScanner& scanner, Report& report) {
  return {.scanner = scanner,
          .drawing = source.drawing,
          .report = report,
          .programFolder = source.programFolder,
          .paperSpace = true,
          .inFull = true,
          .byLayer = true,
          .blocks = BlockMode::Expand,
          .ownBlocks = true,
          .whole = source.whole,
          .inBlock = true,
          .symbolsOfPoints = source.symbolsOfPoints,
          .baselines = source.baselines,
          .bulges = source.bulges};
}

// How often something is doubled until it has grown by a factor.
int Doublings(double factor) {
  constexpr double kRounding = 1e-9;
  if (!std::isfinite(factor) || factor <= 0) return 0;
  return std::min(static_cast<int>(std::ceil(std::log2(factor) - kRounding)),
                  std::numeric_limits<double>::max_exponent - 1);
}

void RoundToSingles(tEntity& element) {
  const auto single = [&](double value) {
    const auto rounded = static_cast<double>(static_cast<float>(value));
    if (rounded != value) element.Lost |= kLostDigits;
    return rounded;
  };
  for (tEntity::Index i = 0; i <= element.ZCount(); ++i) element.Height(i, single(element.Height(i)));
  const auto [radius, start, end] = element.Curve();
  element.Curve({single(radius), single(start), single(end)});
}

// What an element that has its colour or line type from the block has it from on the layer that it is on now.
StyleSource Inherited(StyleSource insert, bool sameLayer) {
  return insert == StyleSource::Layer && !sameLayer ? StyleSource::Own : insert;
}

}  // namespace

BlockExpansion::BlockExpansion(const std::string& path, const EntitySource& source, std::int64_t most)
    : source_(source),
      scanner_(path, read_),
      reader_(SourceWithin(source, scanner_, read_)),
      placing_(source.tolerance),
      most_(most) {}

void BlockExpansion::Begin(const BlockInsert& insert, const tEntity& attributes, std::int64_t place) {
  place_ = place;
  depth_ = 0;
  Push(insert, attributes);
}

void BlockExpansion::Repeat(const tEntity& attribute, const BlockPlace& array, std::int64_t place) {
  place_ = place;
  repeated_.element.CopyFrom(attribute);
  repeated_.insert.at = array;
  copy_ = 1;
}

bool BlockExpansion::Next(tEntity& element) {
  if (depth_ == 0 && IsActive()) {
    Count();
    element.CopyFrom(repeated_.element);
    const bool placed = Place(element, repeated_.insert.at.Step(copy_++));
    if (!source_.inFull) RoundToSingles(element);
    return placed;
  }
  for (int looks = 0; looks < kMostLooks && depth_ > 0; ++looks) {
    Frame& frame = frames_[depth_ - 1];
    if (!frame.piece) Load(frame);
    if (frame.part == frame.piece->parts.size()) {
      GoOn(frame);
      continue;
    }
    Count();
    if (const Part& part = frame.piece->parts[frame.part]; part.isInsert) {
      ++frame.part;
      Push(part.insert, part.element);
    } else if (DeliverPart(frame, element)) {
      return true;
    }
  }
  return false;
}

void BlockExpansion::Count(std::int64_t entities) {
  count_ += entities;
  if (count_ <= most_) return;
  Refuse("draw more than the " + std::to_string(most_) + " entities that this run may expand");
}

void BlockExpansion::Refuse(const std::string& why) {
  while (depth_ > 0) known_[frames_[--depth_].insert.block].isOpen = false;
  throw LimitReached(source_.scanner.PlaceText(place_) + ": the blocks of the drawing " + why);
}

// Frames are used again, so that their texts keep their memory.
void BlockExpansion::Push(const BlockInsert& insert, const EntityAttributes& attributes) {
  if (known_.size() <= insert.block) known_.resize(insert.block + 1);
  Known& known = known_[insert.block];
  const DrawingBlock& block = source_.drawing.Blocks().Block(insert.block);
  if (known.isOpen) {
    std::string name;
    source_.drawing.Text().DecodeName(block.name, name);
    return Warn(WarningKind::CircularBlocks, "block " + std::string(CutUtf8(name, kLongestShownName)) +
                                                 " inserts itself; what it would draw there was left out");
  }
  if (block.drawn == 0) return;
  if (depth_ == kDeepest) Refuse("nest more than " + std::to_string(kDeepest) + " deep");
  if (frames_.size() == depth_) frames_.emplace_back();
  Frame& frame = frames_[depth_];
  const Frame* outer = depth_ > 0 ? &frames_[depth_ - 1] : nullptr;
  frame.insert = insert;
  frame.style = attributes;
  if (outer != nullptr && attributes.Layer == "0") {
    frame.layerColour = outer->layerColour;
    frame.layerRGB = outer->layerRGB;
    frame.layerLineType = outer->layerLineType;
  } else {
    frame.layerColour = insert.layer->colour;
    frame.layerRGB = reader_.RgbOf(*insert.layer);
    frame.layerLineType = insert.layer->lineType;
  }
  if (outer != nullptr) Style(*outer, frame.style);
  frame.outer = outer != nullptr ? outer->placement : Placement();
  frame.count = 0;
  known.isOpen = true;
  ++depth_;
  BeginPlace(frame);
}

void BlockExpansion::BeginPlace(Frame& frame) {
  Count();
  const DrawingBlock& block = source_.drawing.Blocks().Block(frame.insert.block);
  frame.placement = frame.outer.After(frame.insert.at.PlacementOf(frame.count, block.base));
  Use(frame, {block.contents});
}

// A piece is at its end: the next one, the next place of an array, or what holds the insert.
void BlockExpansion::GoOn(Frame& frame) {
  if (frame.piece->wiresFollow) {
    GoOnWithWires(frame);
  } else if (!frame.piece->isLast) {
    const PieceMark next = frame.piece->next;
    Use(frame, next);
  } else if (++frame.count < frame.insert.at.Count()) {
    BeginPlace(frame);
  } else {
    atWork_ -= frame.piece->bytes;
    frame.piece.reset();
    known_[frame.insert.block].isOpen = false;
    --depth_;
    loaded_ = std::min(loaded_, depth_);
  }
}

void BlockExpansion::Use(Frame& frame, const PieceMark& mark) {
  if (frame.piece) atWork_ -= frame.piece->bytes;
  frame.piece.reset();
  frame.mark = mark;
  frame.part = 0;
  frame.copy = 0;
  Load(frame);
  Count(frame.piece->passed);
  for (const auto& [type, count] : frame.piece->undelivered) source_.report.Undelivered(type, count);
}

void BlockExpansion::Load(Frame& frame) {
  frame.piece = PieceAt(frame.insert.block, frame.mark, Doublings(frame.placement.GreatestScale()));
  atWork_ += frame.piece->bytes;
  loaded_ = std::min(loaded_, depth_ - 1);
  if (atWork_ > kMostAtWork) LetGo();
}

// Lets go of the pieces of all but the innermost insert. One that can not be read again has come to its end, for an
// insert is the last that it draws.
void BlockExpansion::LetGo() {
  for (; loaded_ < depth_ - 1; ++loaded_) {
    Frame& frame = frames_[loaded_];
    const auto piece = std::move(frame.piece);
    if (!piece) continue;
    atWork_ -= piece->bytes;
    if (!piece->isRest) continue;
    const auto end = std::make_shared<Piece>();
    end->isRest = true;
    end->isLast = piece->isLast;
    end->next = piece->next;
    frame.piece = end;
    frame.part = 0;
  }
}

std::shared_ptr<const BlockExpansion::Piece> BlockExpansion::PieceAt(std::size_t block, const PieceMark& mark,
                                                                     int scale) {
  Known& known = known_[block];
  const bool isFirst = mark.position == source_.drawing.Blocks().Block(block).contents.position;
  if (isFirst && known.whole && (known.whole->scale == scale || !known.whole->hasCurves)) return known.whole;
  const std::shared_ptr<Piece> piece = ReadPiece(known, mark, scale);
  // What is wrong is told when it is read for the first time.
  if (mark.position > known.told) source_.report.Add(read_);
  known.told = std::max(known.told, mark.position);
  if (isFirst && piece->isLast && !piece->wiresFollow) {
    if (kept_ + piece->bytes > kMostKept) {
      for (Known& other : known_) other.whole.reset();
      kept_ = 0;
    }
    kept_ += piece->bytes - (known.whole ? known.whole->bytes : 0);
    known.whole = piece;
  }
  return piece;
}

std::shared_ptr<BlockExpansion::Piece> BlockExpansion::ReadPiece(Known& known, const PieceMark& mark, int scale) {
  read_ = Report();
  reader_.Tolerance(source_.tolerance.Scaled(std::ldexp(1, scale)));
  const auto piece = std::make_shared<Piece>();
  piece->bytes = sizeof(Piece);
  piece->scale = scale;
  scanner_.GoTo(mark);
  reader_.BeginWithin(mark.array);
  piece->next = mark;
  piece->isLast = false;
  while (piece->parts.size() < kMostParts && piece->bytes < kPieceBytes && !piece->isLast && !piece->wiresFollow) {
    if (EndsBlock(scanner_.Keyword())) {
      piece->isLast = true;
      break;
    }
    const std::size_t before = piece->parts.size();
    AddParts(*piece);
    if (reader_.HasWires() && before > 0) {
      // Read again as the first of a piece, so that no insert takes the reader from its wires.
      piece->parts.resize(before);
      known.split = piece->next.position;
      break;
    }
    const bool isFirst = piece->next.position == mark.position;
    if (isFirst && mark.position == known.split) read_ = Report();
    if (piece->parts.size() == before) ++piece->passed;
    piece->hasCurves = reader_.DependsOnTolerance();
    piece->wiresFollow = reader_.HasWires();
    piece->isLast = reader_.AtEnd();
    piece->next = {scanner_.Mark(), reader_.Array()};
  }
  piece->undelivered = read_.UndeliveredTypes();
  return piece;
}

void BlockExpansion::AddParts(Piece& piece) {
  scratch_.Reset();
  if (reader_.Read(scratch_)) {
    AddPart(piece, nullptr);
    if (reader_.IsOfArray()) piece.parts.back().insert.at = reader_.Array();
  }
  AddWires(piece);
}

void BlockExpansion::AddPart(Piece& piece, const BlockInsert* insert) {
  Part& part = piece.parts.emplace_back();
  part.element = scratch_;
  if (insert != nullptr) part.insert = *insert;
  part.isInsert = insert != nullptr;
  piece.bytes += sizeof part + scratch_.AllX().size() * sizeof(Vertex) + scratch_.Bulges.size() * sizeof(double) +
                 scratch_.Text.size() + scratch_.Block.size() + scratch_.Layer.size() + scratch_.LineStyle.size();
}

// Adds what the entity read last still draws, as far as the piece has room; what it inserts comes last, for that takes
// the reader from the rest.
void BlockExpansion::AddWires(Piece& piece) {
  while (reader_.HasWires() && piece.parts.size() < kMostParts && piece.bytes < kPieceBytes) {
    scratch_.Reset();
    if (reader_.NextWire(scratch_)) AddPart(piece, nullptr);
  }
  if (!reader_.HasWires() && reader_.ToDraw() != nullptr) AddPart(piece, reader_.ToDraw());
}

void BlockExpansion::GoOnWithWires(Frame& frame) {
  const auto piece = std::make_shared<Piece>();
  piece->bytes = sizeof(Piece);
  piece->isRest = true;
  piece->isLast = frame.piece->isLast;
  piece->next = frame.piece->next;
  AddWires(*piece);
  piece->wiresFollow = reader_.HasWires();
  atWork_ += piece->bytes - frame.piece->bytes;
  frame.piece = piece;
  frame.part = 0;
}

// The next copy of the next part, of which there is but one unless it stands in an array.
bool BlockExpansion::DeliverPart(Frame& frame, tEntity& element) {
  const Part& part = frame.piece->parts[frame.part];
  const std::int64_t copy = frame.copy++;
  const BlockPlace& array = part.insert.at;
  if (frame.copy == array.Count()) {
    frame.copy = 0;
    ++frame.part;
  }
  element.CopyFrom(part.element);
  if (!Place(element, copy == 0 ? frame.placement : frame.placement.After(array.Step(copy)))) return false;
  Style(frame, element);
  if (!source_.byLayer) {
    if (element.LineStyleFrom == StyleSource::Layer) element.LineStyle.clear();
    element.ColourFrom = element.LineStyleFrom = StyleSource::Own;
  }
  if (!source_.inFull) RoundToSingles(element);
  return true;
}

bool BlockExpansion::Place(tEntity& element, const Placement& placement) {
  if (!placing_.Place(element, placement)) {
    Warn(WarningKind::WildVertices, "an element of a block that lies beyond all numbers was left out");
    return false;
  }
  if (placing_.WasCoarse()) {
    Warn(WarningKind::CoarseCurves, "a curve of a block departs from its chain by more than the tolerance");
  }
  if (placing_.WasTooHigh()) {
    Warn(WarningKind::WildZ, "z values of a block that are no number or too large where it is placed were read as 0");
  }
  return true;
}

// Of what the block leaves open: its layer 0, and what is by block. What it draws belongs to the insert.
void BlockExpansion::Style(const Frame& frame, EntityAttributes& style) {
  const EntityAttributes& insert = frame.style;
  style.Lost |= insert.Lost & kLostHiding;
  style.Handle = insert.Handle;
  const bool onInsertsLayer = style.Layer == "0";
  if (onInsertsLayer) style.Layer = insert.Layer;
  const bool sameLayer = style.Layer == insert.Layer;
  if (style.ColourFrom == StyleSource::Block) {
    style.Colour = insert.Colour;
    style.RGB = insert.RGB;
    style.ColourFrom = Inherited(insert.ColourFrom, sameLayer);
  } else if (style.ColourFrom == StyleSource::Layer && onInsertsLayer) {
    style.Colour = frame.layerColour;
    style.RGB = frame.layerRGB;
  }
  if (style.LineStyleFrom == StyleSource::Block) {
    style.LineStyle = insert.LineStyle;
    style.LineStyleFrom = Inherited(insert.LineStyleFrom, sameLayer);
  } else if (style.LineStyleFrom == StyleSource::Layer && onInsertsLayer) {
    style.LineStyle = frame.layerLineType;
  }
}

void BlockExpansion::Warn(WarningKind kind, const std::string& what) {
  source_.report.Warn(kind, source_.scanner.PlaceText(place_) + ": " + what);
}

}  // namespace tesselink
