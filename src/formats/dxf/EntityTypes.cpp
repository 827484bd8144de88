// SPDX-License-Identifier: MIT
#include "formats/dxf/EntityTypes.h"

#include <algorithm>
#include <array>

#include "formats/dxf/BlockEntities.h"
#include "formats/dxf/CurveEntities.h"
#include "formats/dxf/EntityGathering.h"
#include "formats/dxf/HatchEntities.h"
#include "formats/dxf/ImageEntities.h"
#include "formats/dxf/LeaderEntities.h"
#include "formats/dxf/LineEntities.h"
#include "formats/dxf/MultileaderEntities.h"
#include "formats/dxf/MultilineEntities.h"
#include "formats/dxf/PointEntities.h"
#include "formats/dxf/PolylineEntities.h"
#include "formats/dxf/RegionEntities.h"
#include "formats/dxf/TextEntities.h"
#include "formats/dxf/ToleranceEntities.h"

namespace tesselink {
namespace {

// The most frequent first.
constexpr std::array kTypes{
    EntityType{"LINE", GatherCommon, MakeLine},
    EntityType{"POLYLINE", GatherPolyline, MakePolyline},
    EntityType{"LWPOLYLINE", GatherLwPolyline, MakeLwPolyline},
    EntityType{"POINT", GatherCommon, MakePoint},
    EntityType{"INSERT", GatherCommon, MakeInsert},
    EntityType{"TEXT", GatherCommon, MakeText},
    EntityType{"MTEXT", GatherMText, MakeMText},
    EntityType{"ATTRIB", GatherAttrib, MakeAttrib, true},
    EntityType{"SEQEND", GatherCommon, nullptr, true},
    EntityType{"CIRCLE", GatherCommon, MakeCircle},
    EntityType{"ARC", GatherCommon, MakeArc},
    EntityType{"ELLIPSE", GatherCommon, MakeEllipse},
    EntityType{"SPLINE", GatherSpline, MakeSpline},
    EntityType{"3DFACE", GatherCommon, MakeFace},
    EntityType{"SOLID", GatherCommon, MakeSolid},
    EntityType{"TRACE", GatherCommon, MakeSolid},
    EntityType{"DIMENSION", GatherCommon, MakeDimension},
    EntityType{"ARC_DIMENSION", GatherCommon, MakeDimension},
    EntityType{"ACAD_TABLE", GatherTable, MakeTable},
    EntityType{"ATTDEF", GatherAttributeDefinition, MakeAttributeDefinition},
    EntityType{"3DLINE", GatherCommon, MakeLine, false, true},
    EntityType{"SHAPE", GatherCommon, MakeShape, false, true},
    EntityType{"IMAGE", GatherImage, MakeImage, false, true},
    EntityType{"WIPEOUT", GatherImage, MakeWipeout, false, true},
    EntityType{"HATCH", GatherHatch, MakeHatch, false, true},
    EntityType{"REGION", GatherRegion, MakeRegion, false, true},
    EntityType{"LEADER", GatherLeader, MakeLeader, false, true},
    EntityType{"MULTILEADER", GatherMultileader, MakeMultileader, false, true},
    EntityType{"MLEADER", GatherMultileader, MakeMultileader, false, true},
    EntityType{"TOLERANCE", GatherTolerance, MakeTolerance, false, true},
    EntityType{"MLINE", GatherMultiline, MakeMultiline, false, true},
};

}  // namespace

const EntityType* EntityTypeOf(std::string_view name) {
  const auto found =
      std::find_if(kTypes.begin(), kTypes.end(), [&](const EntityType& type) { return type.name == name; });
  return found == kTypes.end() ? nullptr : &*found;
}

}  // namespace tesselink
