// SPDX-License-Identifier: MIT
#include "projection/Ranking.h"

#include <algorithm>
#include <utility>

namespace tesselink {

using Wish = std::unique_ptr<PJ_OPERATION_FACTORY_CONTEXT, ProjRelease>;

std::vector<Candidate> Ranking::At(double longitude, double latitude) const {
  constexpr double kAround = 1e-9;  // degrees
  const Wish wish(proj_create_operation_factory_context(proj_, nullptr));
  proj_operation_factory_context_set_area_of_interest(
      proj_, wish.get(), std::max(longitude - kAround, -180.0), std::max(latitude - kAround, -90.0),
      std::min(longitude + kAround, 180.0), std::min(latitude + kAround, 90.0));
  return Listed(wish.get());
}

std::vector<Candidate> Ranking::Anywhere() const {
  const Wish wish(proj_create_operation_factory_context(proj_, nullptr));
  proj_operation_factory_context_set_crs_extent_use(proj_, wish.get(), PJ_CRS_EXTENT_NONE);
  return Listed(wish.get());
}

std::vector<Candidate> Ranking::Listed(PJ_OPERATION_FACTORY_CONTEXT* wish) const {
  proj_operation_factory_context_set_grid_availability_use(proj_, wish, PROJ_GRID_AVAILABILITY_USED_FOR_SORTING);
  const ProjList found(proj_create_operations(proj_, from_, to_, wish));
  std::vector<Candidate> candidates;
  const int count = found ? proj_list_get_count(found.get()) : 0;
  for (int i = 0; i < count; ++i) candidates.push_back(Described(ProjObject(proj_list_get(proj_, found.get(), i))));
  return candidates;
}

Candidate Ranking::Described(ProjObject operation) const {
  Candidate candidate;
  candidate.name = Text(proj_get_name(operation.get()));
  const bool isExact = proj_get_type(operation.get()) == PJ_TYPE_CONVERSION;  // within one datum
  candidate.accuracy = isExact ? 0 : proj_coordoperation_get_accuracy(proj_, operation.get());
  candidate.isBallpark = proj_coordoperation_has_ballpark_transformation(proj_, operation.get()) != 0;
  const int grids = proj_coordoperation_get_grid_used_count(proj_, operation.get());
  for (int i = 0; i < grids; ++i) {
    const char* name = nullptr;
    int available = 0;
    proj_coordoperation_get_grid_used(proj_, operation.get(), i, &name, nullptr, nullptr, nullptr, nullptr, nullptr,
                                      &available);
    candidate.grids.push_back(Text(name));
    if (available == 0) candidate.missing.push_back(Text(name));
  }
  candidate.isThere = candidate.missing.empty() && proj_coordoperation_is_instantiable(proj_, operation.get()) != 0;
  Area& area = candidate.area;
  double west = 0, south = 0, east = 0, north = 0;
  if (proj_get_area_of_use(proj_, operation.get(), &west, &south, &east, &north, nullptr) != 0 && west > -1000) {
    area = {west, south, east, north};
  }
  candidate.object = std::move(operation);
  return candidate;
}

}  // namespace tesselink
