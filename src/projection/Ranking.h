// SPDX-License-Identifier: MIT
// Which operation leads from one system to another at some place.
#pragma once

#include <string>
#include <vector>

#include "projection/Handles.h"

namespace tesselink {

/// A rectangle in degrees; west lies beyond east where it crosses the antimeridian.
struct Area {
  double west = 0, south = 0, east = 0, north = 0;
  bool Holds(double longitude, double latitude) const {
    const bool within = west <= east ? longitude >= west && longitude <= east : longitude >= west || longitude <= east;
    return within && latitude >= south && latitude <= north;
  }
};

/// An operation as PROJ's database has it.
struct Candidate {
  std::string name;
  double accuracy = -1;
  bool isBallpark = false;
  bool isThere = true;  ///< with all of its grids
  std::vector<std::string> grids, missing;
  Area area{-180, -90, 180, 90};
  ProjObject object;
};

class Ranking {
 public:
  /// Both systems outlive this.
  Ranking(Proj& proj, const PJ* from, const PJ* to) : proj_(proj), from_(from), to_(to) {}
  /// Those that are meant for a place, the best one first, as PROJ ranks them for a small area there.
  std::vector<Candidate> At(double longitude, double latitude) const;
  /// All, wherever they are meant for.
  std::vector<Candidate> Anywhere() const;

 private:
  std::vector<Candidate> Listed(PJ_OPERATION_FACTORY_CONTEXT* wish) const;
  Candidate Described(ProjObject operation) const;

  Proj& proj_;
  const PJ* from_;
  const PJ* to_;
};

}  // namespace tesselink
