// SPDX-License-Identifier: MIT
#include "cli/Suggestions.h"

#include <algorithm>

#include "core/io/Text.h"

namespace tesselink {
namespace {

constexpr std::size_t kMost = 3;

bool SameLetter(char a, char b) { return EqualsIgnoringCase({&a, 1}, {&b, 1}); }

std::size_t Tolerated(std::size_t length) { return length < 3 ? 0 : std::clamp<std::size_t>(length / 3, 1, 3); }

std::string_view WithoutDashes(std::string_view word) {
  word.remove_prefix(std::min(word.find_first_not_of('-'), word.size()));
  return word;
}

// A short word with one letter changed is another word, as .dbf is not .dxf; letters that changed places are a slip.
bool IsAnother(std::string_view word, std::string_view typed) {
  constexpr std::size_t kShort = 4;
  return typed.size() <= kShort && word.size() == typed.size() &&
         !std::is_permutation(word.begin(), word.end(), typed.begin(), SameLetter);
}

bool BeginsOrEndsWith(std::string_view word, std::string_view typed) {
  return word.size() > typed.size() && (EqualsIgnoringCase(word.substr(0, typed.size()), typed) ||
                                        EqualsIgnoringCase(word.substr(word.size() - typed.size()), typed));
}

}  // namespace

std::size_t EditDistance(std::string_view a, std::string_view b) {
  // Three rows of the table: what two beginnings are apart, by the lengths of both.
  std::vector<std::size_t> before(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (SameLetter(a[i - 1], b[j - 1]) ? 0 : 1)});
      if (i > 1 && j > 1 && SameLetter(a[i - 1], b[j - 2]) && SameLetter(a[i - 2], b[j - 1]))
        row[j] = std::min(row[j], before[j - 2] + 1);
    }
    before.swap(last);
    last.swap(row);
  }
  return last[b.size()];
}

std::vector<std::string> NearestWords(std::string_view typed, const std::vector<std::string>& words) {
  const std::string_view bare = WithoutDashes(typed);
  std::vector<std::string> nearest, parts;
  std::size_t least = Tolerated(bare.size());
  for (const std::string& word : words) {
    if (IsAnother(WithoutDashes(word), bare)) continue;
    const std::size_t distance = EditDistance(bare, WithoutDashes(word));
    if (distance < least) nearest.clear();
    if (distance <= least) nearest.push_back(word);
    least = std::min(least, distance);
    if (bare.size() > 2 && BeginsOrEndsWith(WithoutDashes(word), bare)) parts.push_back(word);
  }
  if (nearest.empty()) nearest.swap(parts);
  if (nearest.size() > kMost) nearest.clear();
  return nearest;
}

std::string DidYouMean(std::string_view typed, const std::vector<std::string>& words) {
  std::string text;
  const std::vector<std::string> nearest = NearestWords(typed, words);
  for (std::size_t i = 0; i < nearest.size(); ++i) {
    text += (i == 0 ? "; did you mean " : i + 1 == nearest.size() ? " or " : ", ") + nearest[i];
  }
  return text.empty() ? text : text + "?";
}

std::string Listed(const std::vector<std::string>& names, const std::string& word) {
  std::string list;
  for (std::size_t i = 0; i < names.size(); ++i) {
    list += (i == 0 ? "" : i + 1 == names.size() ? " " + word + " " : ", ") + names[i];
  }
  return list;
}

}  // namespace tesselink
