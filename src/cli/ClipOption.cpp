// SPDX-License-Identifier: MIT
#include "cli/ClipOption.h"

#include <CLI/CLI.hpp>
#include <string>

#include "app/OptionChecks.h"
#include "cli/CommandOptions.h"

namespace tesselink {
void AddClip(CommandOptions& command, std::optional<ClipBox>& clip) {
  command
      .add_option_function<std::string>(
          "--clip", [&clip](const std::string& text) { clip = BoxIn(text); },
          "Take only elements that touch a window, and these whole:\ntwo opposite corners in units of the drawing")
      ->type_name("X1,Y1,X2,Y2")
      ->check(CLI::Validator([](std::string& text) { return WrongBox(text); }, ""));
}

}  // namespace tesselink
