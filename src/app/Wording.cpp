// SPDX-License-Identifier: MIT
#include "app/Wording.h"

namespace tesselink {

std::string Wording::Text(const char* /*context*/, const char* text) const { return text; }

std::string Wording::Filled(const char* context, const char* pattern, std::initializer_list<std::string> values) const {
  const std::string text = Text(context, pattern);
  std::string told;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::size_t place = text[i] == '%' && i + 1 < text.size() ? static_cast<std::size_t>(text[i + 1] - '1') : ~0U;
    if (place < values.size()) {
      told += values.begin()[place];
      ++i;
    } else {
      told += text[i];
    }
  }
  return told;
}

}  // namespace tesselink
