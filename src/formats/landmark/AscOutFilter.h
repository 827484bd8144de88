// The Landmark ASCII writer: a header line, "LINE" records with their "XY" lines, and "TEXT" records.
#pragma once

#include <cstdint>
#include <string>

#include "core/Files.h"
#include "core/Filters.h"

namespace tesselink {

/// Circles and arcs become chains; points have no form. Layers do not appear: the last field of a record is the name of
/// the colour nearest to `RGB`. The blanks behind the commas of "XY" lines keep a Landmark reader of this system from
/// reading them back, which is the system's own way.
class AscOutFilter final : public OutputFilter {
 public:
  explicit AscOutFilter(const FilterContext& context) : OutputFilter(context) {}
  ~AscOutFilter() override { ReleaseQuietly(); }

 private:
  void Create(const std::string& path) override;
  /// Writes the element and clears its vertices.
  WriteResult Write(tEntity& entity) override;
  void Complete() override;
  void Drop() noexcept override;

  void WriteHeader();
  void WriteLine(const tEntity& entity);
  void WriteText(const tEntity& entity);
  void ToChain(tEntity& entity);
  void ToMetres(tEntity& entity);

  std::string path_;
  FileWriter file_;
  std::string cleaned_;
  std::int64_t geographic_ = 0;
  std::int64_t heights_ = 0;
};

}  // namespace tesselink
