// SPDX-License-Identifier: MIT
#include "projection/Systems.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <utility>

#include "core/io/Errors.h"

namespace tesselink {
namespace {

constexpr int kCertain = 100;  // per cent

bool IsOfDrawings(PJ_TYPE type) {
  return type == PJ_TYPE_GEOGRAPHIC_2D_CRS || type == PJ_TYPE_GEOGRAPHIC_3D_CRS || type == PJ_TYPE_PROJECTED_CRS ||
         type == PJ_TYPE_COMPOUND_CRS || type == PJ_TYPE_ENGINEERING_CRS || type == PJ_TYPE_BOUND_CRS ||
         type == PJ_TYPE_OTHER_CRS;
}

// The code that it gives itself counts only where it is the system of that code.
int OwnCode(Proj& proj, const PJ* system) {
  const char* code = proj_get_id_code(system, 0);
  if (Text(proj_get_id_auth_name(system, 0)) != "EPSG" || code == nullptr) return 0;
  const ProjObject known(proj_create_from_database(proj, "EPSG", code, PJ_CATEGORY_CRS, false, nullptr));
  return known && IsSame(proj, system, known.get()) ? std::atoi(code) : 0;
}

int CertainCode(Proj& proj, const PJ* system) {
  if (const int own = OwnCode(proj, system); own != 0) return own;
  int* confidence = nullptr;
  const ProjList found(proj_identify(proj, system, "EPSG", nullptr, &confidence));
  int code = 0;
  if (found && confidence != nullptr && proj_list_get_count(found.get()) > 0 && confidence[0] >= kCertain) {
    const ProjObject best(proj_list_get(proj, found.get(), 0));
    code = std::atoi(Text(proj_get_id_code(best.get(), 0)).c_str());
  }
  proj_int_list_destroy(confidence);
  return code;
}

std::string Wkt(Proj& proj, const PJ* system, PJ_WKT_TYPE type) {
  constexpr const char* kOptions[] = {"MULTILINE=NO", nullptr};
  return Text(proj_as_wkt(proj, system, type, kOptions));
}

// The two feet as .prj files name them, with all of the digits of the survey foot.
std::string WithNamedFeet(std::string wkt) {
  for (const auto& [from, to] :
       {std::pair{"UNIT[\"US survey foot\",0.304800609601219]", "UNIT[\"Foot_US\",0.3048006096012192]"},
        std::pair{"UNIT[\"foot\",0.3048]", "UNIT[\"Foot\",0.3048]"}}) {
    for (std::size_t at = 0; (at = wkt.find(from, at)) != std::string::npos;) wkt.replace(at, Text(from).size(), to);
  }
  return wkt;
}

// Units by their sizes: what a file calls a foot may be either.
struct Unit {
  bool isAngle;
  double size;  // metres or radians
  const char* name;
};
constexpr Unit kUnits[] = {{true, std::numbers::pi / 180, "degree"},
                           {false, 1, "metre"},
                           {false, 0.3048, "foot"},
                           {false, 1200.0 / 3937, "US survey foot"}};

}  // namespace

Proj::Proj() : context_(proj_context_create()) {
  proj_log_func(context_.get(), &said_,
                [](void* said, int, const char* text) { *static_cast<std::string*>(said) = text; });
  proj_context_set_enable_network(context_.get(), 0);
  proj_context_use_proj4_init_rules(context_.get(), 1);
  if (proj_context_get_database_path(context_.get()) == nullptr) {
    throw Error("the database of coordinate systems, proj.db, was not found; it comes with PROJ");
  }
}

ProjObject SystemOf(Proj& proj, const std::string& definition) {
  const bool isProjText =
      definition.find("+proj=") != std::string::npos || definition.find("+init=") != std::string::npos;
  const bool needsType = isProjText && definition.find("+type=crs") == std::string::npos;
  proj.BeSilent();
  ProjObject system(proj_create(proj, (definition + (needsType ? " +type=crs" : "")).c_str()));
  if (!system) {
    throw Error("names no coordinate system that PROJ knows" + (proj.Said().empty() ? "" : " (" + proj.Said() + ")"));
  }
  if (!IsOfDrawings(proj_get_type(system.get()))) {
    throw Error("is no coordinate system of drawings: \"" + Text(proj_get_name(system.get())) +
                "\" has no plane of x and y");
  }
  return system;
}

bool IsSame(Proj& proj, const PJ* a, const PJ* b) {
  return proj_is_equivalent_to_with_ctx(proj, a, b, PJ_COMP_EQUIVALENT_EXCEPT_AXIS_ORDER_GEOGCRS) != 0;
}

ProjObject PlaneOf(Proj& proj, const PJ* system) {
  ProjObject plane(proj_clone(proj, system));
  for (;;) {
    const PJ_TYPE type = proj_get_type(plane.get());
    if (type == PJ_TYPE_BOUND_CRS) {
      plane.reset(proj_get_source_crs(proj, plane.get()));
    } else if (type == PJ_TYPE_COMPOUND_CRS) {
      plane.reset(proj_crs_get_sub_crs(proj, plane.get(), 0));
    } else {
      return plane;
    }
  }
}

bool HasHeights(Proj& proj, const PJ* system) {
  ProjObject inner(proj_clone(proj, system));
  while (proj_get_type(inner.get()) == PJ_TYPE_BOUND_CRS) inner.reset(proj_get_source_crs(proj, inner.get()));
  if (proj_get_type(inner.get()) == PJ_TYPE_COMPOUND_CRS) return true;
  const ProjObject axes(proj_crs_get_coordinate_system(proj, inner.get()));
  return axes && proj_cs_get_axis_count(proj, axes.get()) > 2;
}

// That of x; of a geographic system it is an angle.
void DescribeUnit(Proj& proj, const PJ* plane, CoordinateSystem& described) {
  constexpr double kSame = 1e-9;  // the feet differ by two parts in a million
  const ProjObject axes(proj_crs_get_coordinate_system(proj, plane));
  const char* name = nullptr;
  double size = 0;
  if (!axes) return;
  proj_cs_get_axis_info(proj, axes.get(), 0, nullptr, nullptr, nullptr, &size, &name, nullptr, nullptr);
  const bool isAngle = proj_cs_get_type(proj, axes.get()) == PJ_CS_TYPE_ELLIPSOIDAL;
  described.unit = Text(name);
  for (const Unit& unit : kUnits) {
    if (unit.isAngle == isAngle && std::fabs(size / unit.size - 1) < kSame) described.unit = unit.name;
  }
  described.metres = isAngle ? 0 : size;
  described.isGeographic = isAngle && described.unit == "degree";
}

CoordinateSystem Description(Proj& proj, const PJ* system, const std::string& definition) {
  const ProjObject plane = PlaneOf(proj, system);
  const bool isBound = proj_get_type(system) == PJ_TYPE_BOUND_CRS;
  CoordinateSystem described;
  described.name = Text(proj_get_name(isBound ? plane.get() : system));
  if (described.name.empty() || described.name == "unknown") described.name = definition;
  described.epsg = CertainCode(proj, isBound ? plane.get() : system);
  DescribeUnit(proj, plane.get(), described);
  const ProjObject wgs84(proj_create(proj, "OGC:CRS84"));
  described.isWgs84 = described.isGeographic && wgs84 && IsSame(proj, plane.get(), wgs84.get());
  described.esriWkt = WithNamedFeet(Wkt(proj, isBound ? plane.get() : system, PJ_WKT1_ESRI));
  described.wkt = Wkt(proj, system, PJ_WKT1_GDAL);
  return described;
}

}  // namespace tesselink
