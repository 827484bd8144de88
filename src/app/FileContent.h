// SPDX-License-Identifier: MIT
// What a file is, by its first bytes, whatever its name says.
#pragma once

#include <string>
#include <string_view>

namespace tesselink {

enum class FileContent {
  Unknown,    ///< cannot be told; map overlays have no mark of their own
  Nothing,    ///< no byte
  Shapefile,  ///< or its index, which begins alike
  Drawing,    ///< DXF, text or binary
  Landmark,
  Cdf,
  Table,  ///< dBase
  Dwg,
  Dgn,
  Zip,
  Gzip,
  Database,  ///< SQLite, as a GeoPackage
  GeoJson,
  Xml,
  Pdf,
  Image,
  WideText,  ///< two bytes a letter
  Text,
};

/// What the beginning of a file says; some hundred bytes are enough.
FileContent ContentOf(std::string_view beginning);
/// What a file says; Unknown where it cannot be read.
FileContent ContentOfFile(const std::string& path);
/// The key of the input format that reads such a file, as "dxf"; empty when none does, or that cannot be told.
std::string_view InputKeyOf(FileContent content);

}  // namespace tesselink
