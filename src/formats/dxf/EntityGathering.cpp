// SPDX-License-Identifier: MIT
#include "formats/dxf/EntityGathering.h"

namespace tesselink {

void GatherCommon(EntityContext& context) {
  GatherWith(context, [](int) { return false; });
}

}  // namespace tesselink
