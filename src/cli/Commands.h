// SPDX-License-Identifier: MIT
// What each command does; every one returns its exit code. Failures are thrown as Error or UsageError.
#pragma once

#include "cli/Arguments.h"

namespace tesselink {

int Run(const ParsingEnded& ended);
int Run(const ConvertCommand& command);
int Run(const BatchCommand& command);
int Run(const InfoCommand& command);
int Run(const CatCommand& command);
int Run(const LayersCommand& command);
int Run(const PreviewCommand& command);
int Run(const TableCommand& command);
int Run(const FormatsCommand& command);

/// Runs any of them and tells what was thrown.
int RunCommand(const Command& command);

}  // namespace tesselink
