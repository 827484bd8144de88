// SPDX-License-Identifier: MIT
// Controls are found by their names.
#pragma once

namespace tesselink {

/// Gives a new control or layout its name.
template <typename T>
T* Named(T* object, const char* name) {
  object->setObjectName(name);
  return object;
}

}  // namespace tesselink
