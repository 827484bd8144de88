// SPDX-License-Identifier: MIT
// Coordinate systems by their definitions.
#pragma once

#include <string>

#include "core/element/CoordinateSystem.h"
#include "projection/Handles.h"

namespace tesselink {

/// The system that a text defines. Throws Error when it defines none in which drawings are.
ProjObject SystemOf(Proj& proj, const std::string& definition);
/// All that files say of it.
CoordinateSystem Description(Proj& proj, const PJ* system, const std::string& definition);
/// Whether both are one, whatever order a geographic one gives its axes.
bool IsSame(Proj& proj, const PJ* a, const PJ* b);
/// What of it counts for x and y, without heights and without a way to another datum.
ProjObject PlaneOf(Proj& proj, const PJ* system);
/// What its x and y are counted in; nothing else is described.
void DescribeUnit(Proj& proj, const PJ* plane, CoordinateSystem& described);
/// Whether it has heights besides x and y.
bool HasHeights(Proj& proj, const PJ* system);

}  // namespace tesselink
