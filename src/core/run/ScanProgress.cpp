// SPDX-License-Identifier: MIT
#include "core/run/ScanProgress.h"

#include <algorithm>

#include "core/io/Errors.h"
#include "core/run/Interaction.h"

namespace tesselink {

void ScanProgress::Show(std::int64_t position, std::int64_t size) {
  next_ = position + every_;
  interaction_.ShowScan(text_, position, std::max(position, size));
  interaction_.Yield();
  if (interaction_.CancelRequested()) throw OperationCanceled();
}

void ScanProgress::End() { interaction_.HideScan(); }

}  // namespace tesselink
