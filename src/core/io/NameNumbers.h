// SPDX-License-Identifier: MIT
// Names as numbers.
#pragma once

#include <array>
#include <cstddef>
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
  static constexpr std::size_t kRecent = 64;

  static std::size_t PlaceOf(std::string_view name) {
    if (name.empty()) return 0;
    const auto letter = [name](std::size_t i) { return std::size_t{static_cast<unsigned char>(name[i])}; };
    return (name.size() + letter(0) * 3 + letter(name.size() / 2) * 7 + letter(name.size() - 1) * 13) % kRecent;
  }
  std::size_t Find(std::string_view name);

  std::unordered_map<std::string, std::size_t, Hash, std::equal_to<>> numbers_;
  std::array<Known, kRecent> recent_{};
};

}  // namespace tesselink
