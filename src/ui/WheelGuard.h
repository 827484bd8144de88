// SPDX-License-Identifier: MIT
// Lists whose values the wheel does not change in passing.
#pragma once

class QComboBox;

namespace tesselink {

/// Leaves the wheel to what lies below the list, unless the list has the keyboard.
void GuardFromWheel(QComboBox& list);

}  // namespace tesselink
