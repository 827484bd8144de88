// SPDX-License-Identifier: MIT
// What somebody may have meant who typed something that is none of the words there are.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tesselink {

/// How many letters are to be put in, left out, changed or swapped with their neighbour to make one word the other.
/// Small and capital letters are the same.
std::size_t EditDistance(std::string_view a, std::string_view b);

/// The words that come nearest, up to three that are equally near; none where even they are far away. Where no word is
/// near, those that begin or end with what was typed.
std::vector<std::string> NearestWords(std::string_view typed, const std::vector<std::string>& words);

/// As in "; did you mean --to or --tolerance?"; empty where nothing comes near.
std::string DidYouMean(std::string_view typed, const std::vector<std::string>& words);

/// As in "--a, --b and --c", with the word before the last one.
std::string Listed(const std::vector<std::string>& names, const std::string& word);

}  // namespace tesselink
