// SPDX-License-Identifier: MIT
// The fields of an attribute table that were chosen, as values of options.
#pragma once

#include "core/run/FieldSelection.h"
#include "core/run/Options.h"

namespace tesselink {

FieldChoice FieldsOf(const OptionValues& values);
/// That nothing was chosen is a choice too.
void NoteFields(const FieldChoice& choice, OptionValues& values);

}  // namespace tesselink
