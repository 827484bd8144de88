// SPDX-License-Identifier: MIT
// The commands and their options, each with the words that help has for it.
#pragma once

#include <CLI/App.hpp>

#include "cli/Arguments.h"
#include "cli/CommandOptions.h"

namespace tesselink {

/// The command that tells how another one is used.
inline constexpr const char* kHelp = "help";

/// Each adds a command, with those of its options that are asked for, which fill in the values.
CLI::App* AddConvert(CLI::App& app, const Asked& asked, ConvertCommand& values);
CLI::App* AddBatch(CLI::App& app, const Asked& asked, BatchCommand& values);
CLI::App* AddInfo(CLI::App& app, const Asked& asked, InfoCommand& values);
CLI::App* AddCat(CLI::App& app, const Asked& asked, CatCommand& values);
CLI::App* AddLayers(CLI::App& app, const Asked& asked, LayersCommand& values);
CLI::App* AddPreview(CLI::App& app, const Asked& asked, PreviewCommand& values);
CLI::App* AddTable(CLI::App& app, const Asked& asked, TableCommand& values);
void AddFormats(CLI::App& app, const Asked& asked, FormatsCommand& values);
void AddHelp(CLI::App& app, const Asked& asked);

}  // namespace tesselink
