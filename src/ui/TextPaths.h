// SPDX-License-Identifier: MIT
// Paths as people paste and type them, and names that are proposed.
#pragma once

#include <QString>
#include <string>

#include "core/run/FormatTable.h"

class QUrl;

namespace tesselink {

/// The path that a pasted or typed text means: without blanks and quotation marks around it, a file:// address as its
/// path, "~" as the home folder. A text that names an existing file is that file.
QString CleanPath(const QString& text);
/// The path of a local file's address.
QString LocalFile(const QUrl& url);

/// Whether the name ends in the format's extension.
bool HasExtensionOf(const OutputFormat& format, const QString& path);
/// The name with the format's extension in the place of another output format's, else behind it.
QString WithExtensionOf(const OutputFormat& format, const FormatTable& formats, const QString& path);
/// An output beside an input, or in another folder where that may not be written: of the input's name, or like it, so
/// that nothing there would be replaced. Empty where there is no place for one.
QString ProposedOutput(const std::string& input, const std::string& otherFolder, const OutputFormat& format,
                       const FilterOptions& options);

}  // namespace tesselink
