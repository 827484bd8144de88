// SPDX-License-Identifier: MIT
// How calls to the system are made: asked of the hook of tests first, and again where a signal interrupts them.
#pragma once

#include <algorithm>
#include <cerrno>

#include "core/io/System.h"

namespace tesselink::sys {

/// The result of a call, which may take a number of bytes; -1 when it fails.
template <typename Action>
std::int64_t Made(Call call, Action action, std::size_t count = 0) {
  for (;;) {
    Fault fault;
    if (faultHook != nullptr) fault = faultHook(call);
    std::int64_t result = -1;
    if (fault.error == 0) {
      result = action(std::min(count, fault.most));
    } else {
      errno = fault.error;
    }
    if (result != -1 || errno != EINTR) return result;
  }
}

template <typename Action>
bool Done(Call call, Action action) {
  return Made(call, [&](std::size_t) { return action(); }) == 0;
}

}  // namespace tesselink::sys
