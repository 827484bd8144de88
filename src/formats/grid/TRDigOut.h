// SPDX-License-Identifier: MIT
// The T/R Digitizer writer: chains of vertices under the township, range and section that a dBase table gives them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/io/Files.h"
#include "core/run/Filters.h"
#include "core/run/Interaction.h"
#include "formats/shape/DBFInFilter.h"

namespace tesselink {

/// For each chain a line "SEC,township,range,section,vertices" and a line "x,y" for each vertex. A closed chain
/// ends on its first vertex, and points and texts are skipped. The table and its fields
/// are asked for at the first chain; which row a chain has, docs/formats/trdigitizer.md tells.
class TRDigOut final : public OutputFilter {
 public:
  explicit TRDigOut(const FilterContext& context) : OutputFilter(context) {}
  static std::vector<FormatOption> Options();
  static KindSet LeftOut(const OptionValues&) { return SetOf(kPoint) | SetOf(kText); }
  ~TRDigOut() override { ReleaseQuietly(); }

  void SourceOpened(InputFilter& source) override;
  std::vector<std::string> Outputs() const override;
  Holding Holds() const override {
    return {.lacks = kHasLayer | kHasLineType | kHasColour | kHasEntityCode | kHasClosedMark};
  }
  std::string_view TakesFromAttributes() const override { return "township, range and section"; }
  std::int64_t Size() const override { return file_.Size(); }

 private:
  /// A file that is there already is emptied at the first chain: until then it might be the table that is still to be
  /// named.
  void Create(const std::string& path) override;
  WriteResult Write(tEntity& entity) override;
  void Complete() override;
  void Drop() noexcept override;

  void CreateFile();
  void PrepareTable();
  void OpenTable(const std::string& path);
  int FieldOf(const std::string& name, const char* meaning) const;
  std::string FieldNames() const;
  std::int64_t RowOf(const tEntity& entity) const;
  void WriteHead(std::int64_t row, std::size_t vertices);
  std::string_view Value(int field, std::int64_t row);
  void WriteChain(const tEntity& entity, std::int64_t row);

  std::string path_;
  FileWriter file_;
  bool created_ = false;
  DBFInFilter table_;
  bool tableReady_ = false;  // for the input that is open
  std::array<int, 3> fields_{};
  std::int64_t rows_ = 0;
  TableFields answer_;
  bool asked_ = false;
  bool ownTables_ = false;  // each input has its own
  std::string source_ = "the input", ownTable_;
  std::int64_t records_ = 0;        // of the input that is open
  std::int64_t recordsBefore_ = 0;  // of the inputs before it
  std::int64_t chains_ = 0;
  std::string cleaned_;
};

}  // namespace tesselink
