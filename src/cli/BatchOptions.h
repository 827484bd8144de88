// SPDX-License-Identifier: MIT
// The options of `batch`, and those by which it makes a conversion a part of it.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "cli/Arguments.h"

namespace tesselink {

/// What `batch` has beyond the options of a conversion.
void AddBatchOptions(CLI::App& command, BatchCommand& values, const CLI::Validator& size);
/// The options of the conversion that were given, as arguments; those that each file has of its own, or the batch has
/// for all, are left out.
std::vector<std::string> ConversionOptionsGiven(const CLI::App& command);

/// Options of `convert` that no person gives, and so no help tells: there are none where the arguments have none.
void AddPartOfBatch(CLI::App& command, ConvertCommand& values, const std::vector<std::string>& arguments);
/// Them as arguments.
std::vector<std::string> PartOfBatch(int process, std::uint64_t memory, bool leftovers);

}  // namespace tesselink
