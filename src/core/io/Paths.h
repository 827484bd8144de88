// SPDX-License-Identifier: MIT
// Paths as people write them: folders are split at "/" and at "\", and joined with the platform's separator.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tesselink {

/// Whether the path names a regular file that can be opened for reading; any error gives false.
bool FileExists(const std::string& path);
/// Whether something has that name, readable or not. A name that cannot be looked up counts, so that whoever opens it
/// is told why.
bool IsThere(const std::string& path);
/// Why there is no file to be read, with its name, as in "plat.asc: does not exist"; empty where FileExists.
std::string WhyNotReadable(const std::string& path);
/// Whether what lies at a path is no file on a disk but a pipe, a device or one of the program's own streams.
bool IsStream(const std::string& path);
/// Whether it is a pipe or standard input, which are read to their end; a device may have none.
bool IsPipe(const std::string& path);
/// The path up to and including its last separator; empty when it has none.
std::string FolderOf(std::string_view path);
/// The path behind its last separator.
std::string FileNameOf(std::string_view path);
/// The path up to its last "."; unchanged when it has none.
std::string StripExtension(std::string_view path);
/// The path with a text behind the stem of its file name, as "plat-points.shp" of "plat.shp" and "-points".
std::string BehindStem(const std::string& path, const std::string& text);
/// The lower-cased extension of the path's file name with its period, as in ".shp"; empty when it has none.
std::string ExtensionOf(std::string_view path);
/// A folder and a name as one path. A name that is a path from the root stands for itself.
std::string JoinPath(const std::string& folder, const std::string& name);
/// Whether both paths name one existing file, however they are spelt. Throws Error where that cannot be found out.
bool SameFile(const std::string& a, const std::string& b);
/// Of the letter cases that an extension of a few letters can have, the first with which a file is there: capitals,
/// small letters, then any mixture. The stem ends with the period. Empty when there is none.
std::string FindSpelling(const std::string& stem, const std::string& extension,
                         const std::function<bool(const std::string&)>& isThere);
/// The file beside another that differs from it by its extension, given without the period and in capitals as "SHX";
/// letter case is that of the file found, which need not be readable. Empty when there is none.
std::string PartnerFile(const std::string& path, const std::string& extension);

}  // namespace tesselink
