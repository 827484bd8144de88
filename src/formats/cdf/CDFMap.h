// SPDX-License-Identifier: MIT
// The list of Geographix entity types, "$CDF.MAP": a code and a description each. Read, never written.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/run/LookupFile.h"

namespace tesselink {

/// Records of 67 bytes: the code's first three characters at byte 2, its last four at byte 12, the description of up to
/// 43 characters at byte 24; both texts end at their first NUL.
class CDFMap {
 public:
  explicit CDFMap(const FilterContext& context);
  /// For tests: with a registry of their own.
  CDFMap(const FilterContext& context, std::function<std::string(const std::string&)> registry);

  /// Finds and opens the list; see LookupFile.
  void Create() { file_.Create(); }
  /// The number of entity types.
  std::int16_t Count() const { return file_.Count(); }
  /// The code of an entity type, counted from 1; up to 7 characters. Empty while no file is open.
  std::string Code(int number);
  /// Its description as the list holds it, a byte a letter; empty while no file is open.
  std::string Description(int number);
  /// The same as UTF-8; the list is taken for Windows-1252.
  std::string DescriptionUtf8(int number);
  /// The number of the first entity type of exactly this code, or 0.
  std::int16_t FindCode(std::string_view code);
  /// The number of the first entity type with exactly this description, or 0.
  std::int16_t SearchDesc(const std::string& description);
  /// The number of the first entity type whose code fits the pattern ("*" any characters, "?" one, "#" a digit, "[...]"
  /// one of a list, "[!...]" none of it), or 0. A pattern of less than 7 characters, blanks at its ends not counted, is
  /// trimmed and gets a "*", in the caller's text too.
  std::int16_t SearchCode(std::string& pattern);

 private:
  template <typename Fits>
  std::int16_t FirstThat(Fits fits);

  LookupFile file_;
  std::string lastDescription_, lastPattern_;
  std::int16_t descriptionFound_ = 0, patternFound_ = 0;  // 0: nothing has been found yet
};

/// Whether the whole text fits a pattern as SearchCode takes it, letter case included.
bool FitsPattern(std::string_view text, std::string_view pattern);

}  // namespace tesselink
