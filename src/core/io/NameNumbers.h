// SPDX-License-Identifier: MIT
// Names as numbers.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tesselink {

/// Numbers names in order of first appearance, from 0. Names that come again and again, as those of the layers of a
/// drawing, cost a comparison.
class NameNumbers {
 public:
  NameNumbers() = default;
  NameNumbers(NameNumbers&&) = default;
  NameNumbers& operator=(NameNumbers&&) = default;

  /// The number of a name; that of a new one is how many there were before it.
  std::size_t Of(std::string_view name) {
    const Known& recent = recent_[PlaceOf(name)];
    return recent.name != nullptr && *recent.name == name ? recent.number : Find(name);
  }

 private:
  struct Known {
    const std::string* name = nullptr;  // in the table, whose names stay where they are
    std::size_t number = 0;
  };
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const { return std::hash<std::string_view>()(name); }
  };
  static constexpr unsigned kPlaceBits = 10;  // a hundred names seldom share a place
  static constexpr std::size_t kRecent = std::size_t{1} << kPlaceBits;

  // Of the letters, those in which the names of one drawing differ: the first, one amid, the last three. Without a
  // branch, since the lengths of names are not to be foreseen.
  static std::size_t PlaceOf(std::string_view name) {
    if (name.empty()) return 0;
    const std::size_t size = name.size(), last = size - 1;
    const auto letter = [name](std::size_t i) { return std::uint64_t{static_cast<unsigned char>(name[i])}; };
    const std::uint64_t key = size ^ letter(0) << 8 ^ letter(size / 2) << 16 ^ letter(last) << 24 ^
                              letter(last - (size > 1)) << 32 ^ letter(last - (size > 2) * std::size_t{2}) << 40;
    constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15;  // of 2 to the 64th: spreads what it multiplies
    return key * kGoldenRatio >> (64 - kPlaceBits);
  }
  std::size_t Find(std::string_view name);

  std::unordered_map<std::string, std::size_t, Hash, std::equal_to<>> numbers_;
  std::array<Known, kRecent> recent_{};
};

}  // namespace tesselink
