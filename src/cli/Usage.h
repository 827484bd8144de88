// SPDX-License-Identifier: MIT
// What a person is told who asks for help, or who typed something that is no command.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/Arguments.h"

namespace CLI {
class App;
class FormatterBase;
class ParseError;
}  // namespace CLI

namespace tesselink {

/// As in "tesselink preview [OPTIONS] INPUT PICTURE.svg".
std::string UsageOf(const CLI::App& command);
/// The form of help texts.
std::shared_ptr<CLI::FormatterBase> HelpFormat();
/// Help, the version or what is wrong, for arguments that ended the parsing. All options must have been added.
ParsingEnded EndOfParsing(const CLI::App& app, const CLI::ParseError& error, const std::vector<std::string>& arguments);

}  // namespace tesselink
