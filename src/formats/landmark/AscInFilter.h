// The Landmark ASCII reader: records of comma-separated lines whose last field names a colour, the element's layer.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/Files.h"
#include "core/Filters.h"

namespace tesselink {

/// Reads "TEXT", "LINE", "POLYGON" and "VECTOR" records; other lines are skipped. A one-line "VECTOR" record is kept as
/// the pending line and delivered again by every further call: the system's own way, noticed through `Stalled`.
class AscInFilter final : public InputFilter {
 public:
  explicit AscInFilter(const FilterContext& context) : InputFilter(context) {}

  int FileNumber() const override { return reader_.Number(); }
  /// The position in blocks of 128 bytes.
  std::int64_t Loc() const override { return reader_.Position() / 128; }
  double Progress() const override;
  /// At the end of the file, whether or not a line is pending.
  bool Eof() const override { return reader_.AtEnd(); }
  bool Stalled() const override { return repeating_ && !Eof(); }
  std::string Where() const override;

 private:
  // A line split at a separator: the first fields, the last one and how many there are.
  struct Fields {
    static constexpr std::size_t kKept = 8;
    std::array<std::string_view, kKept> first;
    std::string_view last;
    std::size_t count = 0;
  };

  void Open(const std::string& path) override;
  bool Next(tEntity& entity) override;

  void ScanLayers(const std::string& path);
  bool NextLine(std::string_view& line);
  static Fields Split(std::string_view line, char separator);
  void Require(const Fields& fields, std::size_t count) const;
  double Lenient(const Fields& fields, std::size_t index) const;
  double Strict(const Fields& fields, std::size_t index) const;
  void ReadText(tEntity& entity, const Fields& fields);
  void ReadVector(tEntity& entity, const Fields& fields);
  void ReadPointLines(tEntity& entity, std::string_view line);
  bool ReadPlainVertex(tEntity& entity, std::string_view line);
  bool ReadPointLine(tEntity& entity, std::string_view& line);
  void EndRecord(tEntity& entity, std::string_view line);
  void AddVertex(tEntity& entity, double x, double y);
  void WarnAtLine(std::string_view kind, const std::string& what);
  [[noreturn]] void ThrowAtLine(const std::string& what) const;

  LineReader reader_;
  std::string pending_;
  bool hasPending_ = false;
  bool repeating_ = false;
  bool anyRecord_ = false;
  tEntity::Index vertices_ = 0;  // of the chain that is being read
  std::string rewritten_;
};

}  // namespace tesselink
