// SPDX-License-Identifier: MIT
// The files that a conversion writes, for the faces that ask before they are replaced.
#pragma once

#include <string>
#include <vector>

#include "core/run/FormatTable.h"
#include "core/run/Report.h"

namespace tesselink {

/// The companions that an output has, as options say.
std::vector<const Companion*> WrittenCompanions(const OutputFormat& format, const FilterOptions& options);

/// The output, or the parts that are made instead of it, and the files beside them, in either letter case, whether or
/// not they exist.
std::vector<std::string> WrittenFiles(const std::string& output, const OutputFormat& format,
                                      const FilterOptions& options);

/// Those of them that exist as a file or folder and so would be replaced; a device is none.
std::vector<std::string> ReplacedFiles(const std::string& output, const OutputFormat& format,
                                       const FilterOptions& options);

/// The first of some files that a path names, however it is spelt and whether or not it exists; empty when it names
/// none.
std::string FileAmong(const std::string& path, const std::vector<std::string>& files);

/// The target first, then its companions in the order of the format's row.
std::vector<std::string> InOrder(std::vector<std::string> files, const OutputFormat& format);

/// Tells of a file of the old output that stays beside the new one, if that can mislead.
void TellOlder(Report& report, const OutputFormat& format, const std::string& file);

}  // namespace tesselink
