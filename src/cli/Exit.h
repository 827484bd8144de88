// SPDX-License-Identifier: MIT
// The exit codes, a promise to scripts.
#pragma once

namespace tesselink {

enum ExitCode {
  kExitDone = 0,
  kExitFailed = 1,
  kExitUsage = 2,
  kExitEndedEarly = 3,
  kExitCancelled = 130,
};

}  // namespace tesselink
