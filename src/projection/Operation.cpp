// SPDX-License-Identifier: MIT
#include "projection/Operation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

#include "core/io/Errors.h"
#include "projection/Systems.h"

namespace tesselink {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::size_t kMostRegions = 1000;

std::string Joined(const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& name : names) list += (list.empty() ? "" : " and ") + name;
  return list;
}

std::string NameOf(const ProjObject& system) { return "\"" + Text(proj_get_name(system.get())) + "\""; }

std::string WhatIsMissing(const Candidate& candidate) {
  if (candidate.missing.empty()) return "which this version of PROJ does not know how to do";
  return std::string(candidate.missing.size() > 1 ? "whose grids " : "whose grid ") + Joined(candidate.missing) +
         (candidate.missing.size() > 1 ? " are" : " is") + " not installed";
}

std::string AccuracyText(double accuracy) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.3g m", accuracy);
  return accuracy < 0 ? "of unknown accuracy" : text.data();
}

// What would be more accurate, were its grids there; empty for nothing.
std::string BetterThan(const Candidate& chosen, const std::vector<Candidate>& ranked) {
  std::string better;
  double best = chosen.accuracy;
  if (best < 0) best = kInfinity;
  for (const Candidate& other : ranked) {
    if (other.isThere || other.accuracy < 0 || other.accuracy >= best) continue;
    best = other.accuracy;
    better = other.name + ", " + AccuracyText(other.accuracy) + ", " + WhatIsMissing(other);
  }
  return better;
}

// Null where the system is in degrees from Greenwich already.
ProjObject ToDegrees(Proj& proj, const PJ* system) {
  const ProjObject plane = PlaneOf(proj, system);
  CoordinateSystem described;
  DescribeUnit(proj, plane.get(), described);
  ProjObject geographic(proj_crs_get_geodetic_crs(proj, plane.get()));
  const ProjObject meridian(geographic ? proj_get_prime_meridian(proj, geographic.get()) : nullptr);
  double longitude = 0;
  if (meridian) proj_prime_meridian_get_parameters(proj, meridian.get(), &longitude, nullptr, nullptr);
  if (described.isGeographic && longitude == 0) return nullptr;
  const ProjObject axes(geographic ? proj_crs_get_coordinate_system(proj, geographic.get()) : nullptr);
  const char* unit = nullptr;
  if (axes) proj_cs_get_axis_info(proj, axes.get(), 0, nullptr, nullptr, nullptr, nullptr, &unit, nullptr, nullptr);
  if (longitude != 0 || Text(unit) != "degree") geographic.reset(proj_create(proj, "OGC:CRS84"));
  const ProjObject way(proj_create_crs_to_crs_from_pj(proj, plane.get(), geographic.get(), nullptr, nullptr));
  return ProjObject(way ? proj_normalize_for_visualization(proj, way.get()) : nullptr);
}

}  // namespace

Operation::Operation(Proj& proj, ProjObject from, ProjObject to, bool allowBallpark)
    : proj_(proj),
      from_(std::move(from)),
      to_(std::move(to)),
      allowBallpark_(allowBallpark),
      changesHeights_(HasHeights(proj, from_.get()) && HasHeights(proj, to_.get())),
      ranking_(proj, from_.get(), to_.get()),
      toDegrees_(ToDegrees(proj, from_.get())) {
  const std::vector<Candidate> all = ranking_.Anywhere();
  if (all.empty()) throw Error("no operation is known that leads from " + NameOf(from_) + " to " + NameOf(to_));
  for (const Candidate& candidate : all) AddBorders(candidate.area);
}

// ---- boxes

// An area across the antimeridian has two, and degrees may be counted from 0 to 360.
void Operation::AddBorders(const Area& area) {
  if (area.west <= area.east) {
    AddBorder(area.west, area.south, area.east, area.north);
  } else {
    AddBorder(area.west, area.south, 180, area.north);
    AddBorder(-180, area.south, area.east, area.north);
  }
}

void Operation::AddBorder(double west, double south, double east, double north) {
  constexpr int kSteps = 21;  // along each side
  if (!toDegrees_) {
    borders_.push_back({west, south, east, north});
    borders_.push_back({west + 360, south, east + 360, north});
    return;
  }
  Box box{};
  const bool isKnown = proj_trans_bounds(proj_, toDegrees_.get(), PJ_INV, west, south, east, north, &box.minX,
                                         &box.minY, &box.maxX, &box.maxY, kSteps) != 0;
  if (isKnown && std::isfinite(box.maxX - box.minX) && std::isfinite(box.maxY - box.minY)) borders_.push_back(box);
}

// As large as may be: within each border that the place lies in, and on the near side of all others.
Operation::Box Operation::BoxAt(double x, double y) const {
  Box box{-kInfinity, -kInfinity, kInfinity, kInfinity};
  for (const Box& border : borders_) {
    if (border.Holds(x, y)) {
      box = {std::max(box.minX, border.minX), std::max(box.minY, border.minY), std::min(box.maxX, border.maxX),
             std::min(box.maxY, border.maxY)};
      continue;
    }
    const std::array<double, 4> gaps{border.minX - x, x - border.maxX, border.minY - y, y - border.maxY};
    const auto widest = std::max_element(gaps.begin(), gaps.end());
    if (widest == gaps.begin()) box.maxX = std::min(box.maxX, std::nextafter(border.minX, x));
    if (widest == gaps.begin() + 1) box.minX = std::max(box.minX, std::nextafter(border.maxX, x));
    if (widest == gaps.begin() + 2) box.maxY = std::min(box.maxY, std::nextafter(border.minY, y));
    if (widest == gaps.begin() + 3) box.minY = std::max(box.minY, std::nextafter(border.maxY, y));
  }
  return box;
}

const Operation::Region* Operation::RegionAt(double x, double y) {
  if (!std::isfinite(x) || !std::isfinite(y)) return nullptr;
  if (current_ < regions_.size() && regions_[current_].box.Holds(x, y)) return &regions_[current_];
  const auto found =
      std::find_if(regions_.begin(), regions_.end(), [&](const Region& region) { return region.box.Holds(x, y); });
  if (found == regions_.end()) {
    const std::optional<Region> region = Found(x, y);
    if (!region) return nullptr;
    if (regions_.size() >= kMostRegions) regions_.clear();
    regions_.push_back(*region);
    current_ = regions_.size() - 1;
  } else {
    current_ = static_cast<std::size_t>(found - regions_.begin());
  }
  return &regions_[current_];
}

// A place that nothing but a ballpark is meant for goes with the vertices before it, as outside of their area. None
// where that is no place on the earth.
std::optional<Operation::Region> Operation::Found(double x, double y) {
  double longitude = x, latitude = y;
  if (toDegrees_) {
    const PJ_COORD place = proj_trans(toDegrees_.get(), PJ_FWD, proj_coord(x, y, 0, 0));
    longitude = place.xy.x;
    latitude = place.xy.y;
  }
  longitude = std::remainder(longitude, 360);
  const bool isPlace = std::isfinite(longitude) && std::fabs(latitude) <= 90;
  std::vector<Candidate> ranked;
  if (isPlace) ranked = ranking_.At(longitude, latitude);
  const bool isMeant = !ranked.empty() && !ranked.front().isBallpark;
  if (!isMeant && latest_ != nullptr && !latest_->use.isBallpark) return Region{BoxAt(x, y), latest_, true};
  if (!isPlace) return std::nullopt;
  const std::string better = BetterThan(Allowed(ranked), ranked);
  Candidate chosen = std::move(Allowed(ranked));
  const bool outside = !chosen.area.Holds(longitude, latitude);
  return Region{BoxAt(x, y), &WayOf(std::move(chosen), better), outside};
}

// ---- the choice

Candidate& Operation::Allowed(std::vector<Candidate>& ranked) const {
  const std::string way = "from " + NameOf(from_) + " to " + NameOf(to_) + " ";
  if (ranked.empty()) throw Error("no operation leads " + way + "here");
  const Candidate& first = ranked.front();
  if (!allowBallpark_ && !first.isThere) {
    throw Error("the best operation " + way + "here is " + first.name + ", " + AccuracyText(first.accuracy) + ", " +
                WhatIsMissing(first) + " (PROJ's package proj-data has grids, and so does its command projsync)");
  }
  if (!allowBallpark_ && first.isBallpark) {
    throw Error("no operation but a ballpark leads " + way + "here (" + first.name + ")");
  }
  const auto usable = std::find_if(ranked.begin(), ranked.end(), [](const Candidate& c) { return c.isThere; });
  if (usable == ranked.end()) throw Error("no operation " + way + "can be carried out here");
  return *usable;
}

Operation::Way& Operation::WayOf(Candidate candidate, const std::string& better) {
  for (const auto& way : ways_) {
    const OperationUse& use = way->use;
    if (use.name == candidate.name && use.accuracy == candidate.accuracy && use.grids == candidate.grids) return *way;
  }
  auto way = std::make_unique<Way>();
  proj_.BeSilent();
  way->object.reset(proj_normalize_for_visualization(proj_, candidate.object.get()));
  if (!way->object) throw Error("the operation " + candidate.name + " cannot be set up: " + proj_.Said());
  way->use = {.name = std::move(candidate.name),
              .accuracy = candidate.accuracy,
              .grids = std::move(candidate.grids),
              .isBallpark = candidate.isBallpark,
              .better = better};
  way->area = candidate.area;
  return *ways_.emplace_back(std::move(way));
}

std::vector<OperationUse> Operation::Uses() const {
  std::vector<OperationUse> uses;
  for (const auto& way : ways_) {
    if (way->use.count > 0) uses.push_back(way->use);
  }
  return uses;
}

// ---- vertices

namespace {

bool Trans(PJ* way, std::span<double> x, std::span<double> y, std::span<double> z) {
  constexpr std::size_t kStride = sizeof(double);
  const std::size_t count = x.size();
  proj_trans_generic(way, PJ_FWD, x.data(), kStride, count, y.data(), kStride, count, z.empty() ? nullptr : z.data(),
                     kStride, z.empty() ? 0 : count, nullptr, 0, 0);
  const auto isFinite = [](double value) { return std::isfinite(value); };
  const bool all = std::all_of(x.begin(), x.end(), isFinite) && std::all_of(y.begin(), y.end(), isFinite) &&
                   std::all_of(z.begin(), z.end(), isFinite);
  if (!all) proj_errno_reset(way);
  return all;
}

}  // namespace

bool Operation::Transform(std::span<double> x, std::span<double> y, std::span<double> z) {
  for (std::size_t begin = 0; begin < x.size();) {
    const Region* const region = RegionAt(x[begin], y[begin]);
    if (region == nullptr) return false;
    std::size_t end = begin + 1;
    while (end < x.size() && region->box.Holds(x[end], y[end])) ++end;
    const std::size_t count = end - begin;
    latest_ = region->way;
    const auto heights = z.empty() ? z : z.subspan(begin, count);
    if (!Trans(region->way->object.get(), x.subspan(begin, count), y.subspan(begin, count), heights)) return false;
    region->way->use.count += static_cast<std::int64_t>(count);
    if (region->outside) outside_ += static_cast<std::int64_t>(count);
    begin = end;
  }
  return true;
}

bool Operation::Probe(std::span<double> x, std::span<double> y) {
  const Region* const region = RegionAt(x[0], y[0]);
  return region != nullptr && Trans(region->way->object.get(), x, y, {});
}

// Judged by a square of some hundred miles: equal steps lead equally far, at right angles, and equally from each side.
std::optional<Similarity> Operation::SimilarityAt(double x, double y) {
  const Region* const region = RegionAt(x, y);
  if (region == nullptr) return std::nullopt;
  Way& way = *region->way;
  if (std::exchange(way.isJudged, true)) return way.similarity;
  const double side = toDegrees_ ? 1e5 : 1;
  constexpr double kPart = 1e-9;  // of a length
  std::array<double, 6> xs{x, x + side, x - side, x, x, x + side}, ys{y, y, y, y + side, y - side, y + side};
  if (!Trans(way.object.get(), xs, ys, {})) return std::nullopt;
  const double dx = xs[1] - xs[0], dy = ys[1] - ys[0], length = std::hypot(dx, dy);
  const std::array<double, 6> wantedX{0, dx, -dx, -dy, dy, dx - dy}, wantedY{0, dy, -dy, dx, -dx, dx + dy};
  for (std::size_t i = 0; i < xs.size(); ++i) {
    if (std::hypot(xs[i] - xs[0] - wantedX[i], ys[i] - ys[0] - wantedY[i]) > kPart * length) return std::nullopt;
  }
  const double scale = length / side;
  way.similarity = {std::fabs(scale - 1) < 1e-12 ? 1 : scale, std::atan2(dy, dx) * 180 / std::numbers::pi};
  return way.similarity;
}

}  // namespace tesselink
