// SPDX-License-Identifier: MIT
// The Landmark ASCII writer: a header line, "LINE" records with their "XY" lines, and "TEXT" records.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/io/Files.h"
#include "core/run/Filters.h"
#include "core/run/SingleByteText.h"

namespace tesselink {

/// Circles and arcs become chains; points have no form. Layers do not appear: the last field of a record is the name of
/// the colour nearest to `RGB`. The blanks behind the commas of "XY" lines keep a Landmark reader of this system from
/// reading them back, which is the system's own way. The standard dialect departs from it as `Conventions` tells.
class AscOutFilter final : public OutputFilter {
 public:
  explicit AscOutFilter(const FilterContext& context);
  static std::vector<FormatOption> Options();
  static KindSet LeftOut(const OptionValues&) { return SetOf(kPoint); }
  ~AscOutFilter() override { ReleaseQuietly(); }

  void SourceOpened(InputFilter& source) override { texts_.SourceOpened(source); }
  std::int64_t Size() const override { return file_.Size(); }
  Holding Holds() const override {
    TraitSet lacks = kHasLayerBesideColour | kHasLineType | kHasUnnamedColour | kHasEntityCode | kHasBaseline;
    if (conventions_.closedAsLine) lacks |= kHasClosedMark;
    return {.lacks = lacks, .curves = conventions_.ownCurves};
  }

 private:
  // All that the dialects decide differently.
  struct Conventions {
    std::string_view separator;  // behind "XY" and between its numbers
    bool closedAsLine;           // else closed chains are POLYGON records
    bool horizontalFirst;        // of the justification's letters; else the order in which they are read
    bool endsByFirstZero;        // a single vertex whose x is 0 is left out
    bool ownCurves;  // in steps of 10 degrees with a closing angle in radians, and in metres where they look geographic
  };
  static const Conventions kClassic, kStandard;

  void Create(const std::string& path) override;
  /// Writes the element and clears its vertices.
  WriteResult Write(tEntity& entity) override;
  void Complete() override;
  void Drop() noexcept override;

  void WriteHeader();
  void WriteLine(const tEntity& entity);
  std::string Justification(std::int16_t code) const;
  void WriteText(const tEntity& entity);
  void ToChain(tEntity& entity);
  void ToSteps(tEntity& entity);
  void ToMetres(tEntity& entity);

  const Conventions& conventions_;
  std::string path_;
  FileWriter file_;
  SingleByteText texts_;
};

}  // namespace tesselink
