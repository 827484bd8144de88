// SPDX-License-Identifier: MIT
// What the manual pages say beyond the help texts.
#pragma once

#include <string>
#include <vector>

namespace tesselink {

struct TermText {
  std::string term, text;
};

/// Paragraphs on the program ("") or a command; none where the help says all.
std::vector<std::string> DescriptionOf(const std::string& command);
const std::vector<TermText>& ExitCodeTexts();
const std::vector<TermText>& EnvironmentTexts();
const std::vector<TermText>& FileTexts();

}  // namespace tesselink
