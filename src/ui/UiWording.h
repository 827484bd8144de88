// SPDX-License-Identifier: MIT
// The window's language for texts that the command line tells too.
#pragma once

#include "app/Wording.h"

namespace tesselink {

/// Texts as they are translated, numbers with separators.
class UiWording : public Wording {
 public:
  std::string Text(const char* context, const char* text) const override;
  std::string Number(std::int64_t number) const override;
};

inline const UiWording kUiWording;

}  // namespace tesselink
