// SPDX-License-Identifier: MIT
// The option --encoding, which several readers have.
#pragma once

#include "core/io/CodePage.h"
#include "core/run/Filters.h"

namespace tesselink {

/// The encoding of an input's texts, where it does not tell it or tells a wrong one.
FormatOption EncodingOption();

/// The code page that was chosen by it; null where none was.
const CodePage* ChosenPage(const FilterOptions& options);

}  // namespace tesselink
