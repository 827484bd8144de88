// SPDX-License-Identifier: MIT
// The Geographix CDF writer: card-style lines in fixed columns, and a second file ".pts" for points.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/element/VertexChains.h"
#include "core/io/Files.h"
#include "core/run/Filters.h"
#include "core/run/FormatTable.h"
#include "core/run/Interaction.h"
#include "core/run/SingleByteText.h"

namespace tesselink {

/// Chains become a header "B" and a line "C" for each vertex, y before x; texts a header and a line "D". Circles and
/// arcs become chains. The first point asks once whether points go to the second file or are left out. What does not
/// fit its columns is cut at the right, and counted; the standard dialect writes numbers with fewer digits instead.
class CDFOutFilter final : public OutputFilter {
 public:
  explicit CDFOutFilter(const FilterContext& context);
  static std::vector<Companion> Companions() { return {{"PTS", false, WarningKind::OlderPoints}}; }
  static std::vector<FormatOption> Options();
  static KindSet LeftOut(const OptionValues& values) { return values.Text("points") == "ignore" ? SetOf(kPoint) : 0; }
  ~CDFOutFilter() override { ReleaseQuietly(); }

  void SourceOpened(InputFilter& source) override { texts_.SourceOpened(source); }
  std::vector<std::string> Outputs() const override;
  std::int64_t Size() const override { return drawing_.file.Size() + points_.file.Size(); }
  /// Circles and arcs, whose chains it rounds to its columns itself; nobody is told of digits that it cuts off there.
  Holding Holds() const override {
    return {.lacks = kHasLineType | kHasBaseline | kHasUnmatchedLayer | kHasSeveralPoints, .curves = true};
  }

 private:
  // All that the dialects decide differently.
  struct Conventions {
    bool numbersCut;       // at the right where columns are short; else they get fewer digits, as far as that helps
    bool defaultOpen;      // an element without a code is not marked as closed
    bool anglesAsTheyAre;  // else within 0 to 360, since a sign takes a column of three
  };
  static const Conventions kClassic, kStandard;

  // What was lost of one kind: how often, and the first time in words.
  struct Loss {
    std::int64_t count = 0;
    std::string first;
  };
  struct Target {
    std::string path;
    FileWriter file;
    bool created = false;
    Loss digits;   // numbers cut behind their point
    Loss numbers;  // numbers that do not read as what they are
    Loss texts;    // texts that were cut
  };

  void Create(const std::string& path) override;
  /// Writes the element, fills its empty `TextUnits` and `CDFCode`, and makes a circle or an arc a chain.
  WriteResult Write(tEntity& entity) override;
  void Complete() override;
  void Drop() noexcept override;
  const char* NoFileSource() const override { return "GetNextEntity"; }

  void SetDefaults(tEntity& entity);
  void ToChain(tEntity& entity);
  void WriteHeader(const tEntity& entity);
  void WriteChain(const tEntity& entity);
  void WriteText(const tEntity& entity);
  WriteResult WritePoints(const tEntity& entity);
  void CreatePoints();
  void PutRightAligned(char* columns, double value);
  void PutText(Target& target, std::size_t first, std::size_t last, std::string_view text);
  bool PutNumber(Target& target, std::size_t first, std::size_t last, double value);
  std::size_t Fit(char* text, std::size_t length, double value, std::size_t width) const;
  void NoteNumber(Target& target, double value, std::string_view kept);
  std::string Element() const;
  void WarnOfLosses(const Target& target, std::string_view subject);

  const Conventions& conventions_;
  Target drawing_, points_;
  std::array<char, 80> line_{};
  std::optional<bool> pointsIgnored_;  // once it was asked
  VertexChain chain_;
  SingleByteText texts_;
  std::string label_;
  std::int64_t elements_ = 0, pointNumber_ = 0;
  std::int16_t kind_ = 0;  // of the element that is being written
};

}  // namespace tesselink
