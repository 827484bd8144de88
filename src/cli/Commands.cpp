// SPDX-License-Identifier: MIT
#include "cli/Commands.h"

#include <cstdio>

#include "cli/Console.h"
#include "cli/Exit.h"

namespace tesselink {

int Run(const ParsingEnded& ended) {
  if (ended.exitCode == kExitDone) {
    Print(ended.text);
  } else {
    PrintError(ended.text);
    std::fputs(ended.advice.c_str(), stderr);
  }
  return ended.exitCode;
}

int RunCommand(const Command& command) {
  OpenStandardStreams();
  CatchInterrupts();
  try {
    const int exitCode = std::visit(
        [](const auto& c) {
          if constexpr (requires { c.reading.quiet; }) {
            if (c.reading.quiet) SilenceWarnings();
          } else if constexpr (requires { c.conversion.reading.quiet; }) {
            if (c.conversion.reading.quiet) SilenceWarnings();
          }
          return Run(c);
        },
        command);
    FlushOutput();
    return exitCode;
  } catch (const UsageError& error) {
    PrintError(error.what());
    return kExitUsage;
  } catch (const std::exception& error) {
    PrintError(error.what());
    return kExitFailed;
  }
}

}  // namespace tesselink
