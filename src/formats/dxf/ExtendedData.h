// SPDX-License-Identifier: MIT
// What this program says of entities in extended data, as drawings have it for applications.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tesselink {

class GroupScanner;

/// The application that extended data name when they are this program's.
inline constexpr std::string_view kOwnData = "TESSELINK";

/// What a drawn entity is of the record of an attribute table that it stands for, as written: a chain, a ring of an
/// area, a point, one of a group of points, or a text that names it.
namespace role {
inline constexpr std::string_view kChain = "chain", kRing = "ring", kPoint = "point", kOfGroup = "point of a group",
                                  kLabel = "label ";
}  // namespace role

/// Gathers the extended data of an entity or of a layer as far as they are this program's.
class ExtendedData {
 public:
  /// Forgets all.
  void Begin();
  /// Takes the scanner's group, whose code is 1000 or more.
  void Take(const GroupScanner& scanner);

  /// Whether other applications have data there, those of CAD itself aside.
  bool HasOther() const { return hasOther_; }
  /// Whether the entity names table, record and part.
  bool HasRecord() const { return integers_ >= kOfRecord && count_ > 0; }
  std::int32_t Table() const { return numbers_[0]; }
  std::int32_t Record() const { return numbers_[1]; }
  std::int32_t Part() const { return numbers_[2]; }
  /// The texts, as the drawing has them: the role and "NAME=value" of each field with a value.
  std::span<const std::string> Texts() const { return {texts_.data(), count_}; }
  /// The handle of another entity that it names; empty where it names none.
  const std::string& Handle() const { return handle_; }

 private:
  static constexpr std::size_t kOfRecord = 3;

  bool isOwn_ = false, hasOther_ = false;
  std::size_t integers_ = 0, count_ = 0, bytes_ = 0;
  std::array<std::int32_t, kOfRecord> numbers_{};
  std::vector<std::string> texts_;  // the first `count_`; the rest keep their memory
  std::string handle_;
};

}  // namespace tesselink
