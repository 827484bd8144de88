// SPDX-License-Identifier: MIT
// The coordinate system of a drawing.
#pragma once

#include <string>

namespace tesselink {

/// A coordinate system as files name it.
struct CoordinateSystem {
  std::string name;           ///< as in "NAD27 / Texas South Central"; empty: the system is not known
  int epsg = 0;               ///< its code where that is certain; else 0
  bool isGeographic = false;  ///< coordinates are longitude and latitude, in degrees
  bool isWgs84 = false;       ///< longitude and latitude on WGS 84
  std::string unit;           ///< as in "US survey foot"
  double metres = 0;          ///< in a unit; 0 where it is an angle
  std::string esriWkt;        ///< as .prj files hold it
  std::string wkt;            ///< as OGC 01-009 has it; empty where it cannot be said so

  bool IsKnown() const { return !name.empty(); }
};

/// What a writer wishes to know of the coordinates that it is handed.
enum class SystemWish {
  None,
  Known,  ///< their system, described in full
  Wgs84,  ///< they are to be longitude and latitude on WGS 84
};

}  // namespace tesselink
