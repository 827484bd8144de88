// SPDX-License-Identifier: MIT
// The Geographix CDF reader: card-style lines in fixed columns, told apart by their first character.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/element/VertexAppender.h"
#include "core/io/Files.h"
#include "core/run/Filters.h"
#include "formats/cdf/CodeTables.h"
#include "formats/cdf/PointFile.h"

namespace tesselink {

enum class WarningKind;

/// Reads headers "B" (an entity code and whether the element is closed), coordinates "C" and texts "D"; other lines are
/// skipped. Layers and colours are those of the entity code, so there are no layers to match. The standard dialect
/// goes on with the points of the file beside the drawing.
class CDFInFilter final : public InputFilter {
 public:
  explicit CDFInFilter(const FilterContext& context);
  static std::vector<FormatOption> Options();

  int FileNumber() const override { return reader_.Number(); }
  /// The position in bytes.
  std::int64_t Loc() const override { return reader_.Position(); }
  double Progress() const override {
    return Percentage(reader_.Position() + points_.Position(), reader_.Size() + points_.Size());
  }
  /// At the end of the file with no line read ahead, and of the points.
  bool Eof() const override { return !pending_ && reader_.AtEnd() && !points_.HasMore(); }
  /// File and line on which the element delivered last begins.
  std::string Where() const override { return atPoints_ ? points_.Where() : PlaceOf(began_); }

  /// The distinct entity codes of the file's headers, in order of first appearance. Reads the whole file.
  std::vector<std::string> GetLayerCodes() const;

 private:
  // All that the dialects decide differently.
  struct Conventions {
    std::size_t lineEndWithin;  // bytes that are searched for a paired line end before the person is asked
    bool pointFile;             // the points beside the drawing are read
    bool zeroGivesWay;          // a first coordinate of 0 is overwritten; else vertices are stored by index
  };
  static const Conventions kClassic, kStandard;

  void Open(const std::string& path) override;
  bool Next(tEntity& entity) override;

  bool NextOfDrawing(tEntity& entity);
  bool NextLine();
  void ReadHeader();
  void ReadChain(tEntity& entity);
  bool ReadGroups(tEntity& entity);
  void ReadText(tEntity& entity);
  void AddVertex(tEntity& entity, double x, double y);
  double Number(std::string_view field) const;
  void WarnOfLoneHeader();
  std::string PlaceOf(std::int64_t line) const { return filename_ + ", line " + std::to_string(line); }
  void WarnAtLine(WarningKind kind, std::string_view what);

  const Conventions& conventions_;
  LineReader reader_;
  CodeTables tables_;
  std::string_view line_;    // the line last read
  std::string_view groups_;  // of a "C" line, what has not been consumed
  char kind_ = ' ';          // the first character of line_
  bool pending_ = false;     // line_, or its groups_, is still to be delivered
  // Of the last header.
  std::string code_;
  bool closed_ = false;
  std::int64_t loneHeader_ = 0;  // its line, until an element follows

  std::int64_t began_ = 0;   // the line on which the element begins
  VertexAppender vertices_;  // of the chain that is being read
  bool anyLine_ = false;
  PointFile points_;
  bool atPoints_ = false;
};

}  // namespace tesselink
