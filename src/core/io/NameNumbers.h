// SPDX-License-Identifier: MIT
// Names as numbers.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <unordered_map>

#include "core/io/Text.h"

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
    return recent.name != nullptr && IsSame(*recent.name, name) ? recent.number : Find(name);
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

  // By the letters at its ends, where the names of one drawing differ.
  static std::size_t PlaceOf(std::string_view name) {
    constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15;  // of 2 to the 64th: spreads what it multiplies
    const auto endsOf = [name](auto word) {
      auto last = word;
      std::memcpy(&word, name.data(), sizeof word);
      std::memcpy(&last, name.data() + name.size() - sizeof last, sizeof last);
      return word * kGoldenRatio + last;
    };
    const std::uint64_t key = name.size() >= 8   ? endsOf(std::uint64_t{})
                              : name.size() >= 4 ? endsOf(std::uint32_t{})
                              : name.empty()     ? 0
                                                 : endsOf(std::uint8_t{});
    return (key ^ name.size()) * kGoldenRatio >> (64 - kPlaceBits);
  }
  std::size_t Find(std::string_view name);

  std::unordered_map<std::string, std::size_t, Hash, std::equal_to<>> numbers_;
  std::array<Known, kRecent> recent_{};
};

}  // namespace tesselink
