// SPDX-License-Identifier: MIT
// Which conventions files follow where the system's own and the published layouts differ.
#pragma once

namespace tesselink {

enum class Dialect {
  Classic,   ///< the system's own, which existing files and habits rest on
  Standard,  ///< the published layouts, as other programs read them
};

}  // namespace tesselink
