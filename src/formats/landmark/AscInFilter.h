// SPDX-License-Identifier: MIT
// The Landmark ASCII reader: records of comma-separated lines whose last field names a colour, the element's layer.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/element/VertexAppender.h"
#include "core/io/Files.h"
#include "core/run/Filters.h"

namespace tesselink {

enum class WarningKind;

/// Reads "TEXT", "LINE", "POLYGON" and "VECTOR" records; other lines are skipped. A one-line "VECTOR" record is kept as
/// the pending line and delivered again by every further call: the system's own way, noticed through `Stalled`. The
/// standard dialect departs from it as `Conventions` tells.
class AscInFilter final : public InputFilter {
 public:
  explicit AscInFilter(const FilterContext& context);

  int FileNumber() const override { return reader_.Number(); }
  /// The position in blocks of 128 bytes.
  std::int64_t Loc() const override { return reader_.Position() / kBlock; }
  double Progress() const override;
  /// At the end of the file, whether or not a line is pending that is not going to be read.
  bool Eof() const override { return reader_.AtEnd() && !(hasPending_ && conventions_.lastPendingRead); }
  bool Stalled() const override { return repeating_ && !Eof(); }
  std::string Where() const override;

 private:
  static constexpr std::int64_t kBlock = 128;

  // All that the dialects decide differently.
  struct Conventions {
    std::size_t lineEndWithin;  // bytes that are searched for a paired line end before the person is asked
    bool keywordByBlanks;   // a point line's keyword ends at a blank where there are two; else at a blank or a comma
    bool ownLinePending;    // so that a one-line VECTOR record repeats; else only a line that is not read yet
    bool lastPendingRead;   // a record that begins on the last line is delivered
    bool zeroGivesWay;      // a first coordinate of 0 is overwritten; else vertices are stored by index
    bool vectorsOverwrite;  // within a record; else they continue the chain
    bool vectorLayerAsIs;   // blanks around it included
    bool quotesHoldCommas;  // a comma in a text that stands in quotes is part of it
    bool layerColours;      // the colour that a layer is named for is that of its elements
  };
  static const Conventions kClassic, kStandard;

  // A line split at a separator: the first fields, the last one and how many there are.
  struct Fields {
    static constexpr std::size_t kKept = 8;
    std::array<std::string_view, kKept> first;
    std::string_view last;
    std::size_t count = 0;

    void Prepend(std::string_view field);
  };

  void Open(const std::string& path) override;
  bool Next(tEntity& entity) override;

  void ScanLayers(const std::string& path);
  bool NextLine(std::string_view& line);
  static Fields Split(std::string_view line, char separator);
  static Fields SplitQuoted(std::string_view line);
  void Require(const Fields& fields, std::size_t count) const;
  double Lenient(const Fields& fields, std::size_t index) const;
  double Strict(const Fields& fields, std::size_t index) const;
  void ReadText(tEntity& entity, const Fields& fields);
  void ReadVector(tEntity& entity, const Fields& fields);
  void ReadPointLines(tEntity& entity, std::string_view line);
  bool ReadPlainVertex(tEntity& entity, std::string_view line);
  bool ReadPointLine(tEntity& entity, std::string_view& line);
  bool ReadPointLineByBlanks(tEntity& entity, std::string_view& line);
  bool ReadPointLineByWord(tEntity& entity, std::string_view& line);
  void AddVector(tEntity& entity, const Fields& fields);
  void EndRecord(tEntity& entity, std::string_view line, bool unread);
  void AddVertex(tEntity& entity, double x, double y);
  void WarnAtLine(WarningKind kind, const std::string& what);
  [[noreturn]] void ThrowAtLine(const std::string& what) const;

  const Conventions& conventions_;
  LineReader reader_;
  std::string pending_;
  bool hasPending_ = false;
  bool repeating_ = false;
  bool anyRecord_ = false;
  VertexAppender vertices_;  // of the chain that is being read
  std::string rewritten_;
};

}  // namespace tesselink
