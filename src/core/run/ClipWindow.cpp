// SPDX-License-Identifier: MIT
#include "core/run/ClipWindow.h"

#include <algorithm>
#include <cmath>

namespace tesselink {
namespace {

// Which side of a line a place is on, as the sign.
double SideOf(const Vertex& from, const Vertex& to, double x, double y) {
  return (to.x - from.x) * (y - from.y) - (to.y - from.y) * (x - from.x);
}

// Whether a ray from a place to the east crosses a segment. One end of the segment counts.
bool CrossesRay(const Vertex& from, const Vertex& to, double x, double y) {
  if ((from.y > y) == (to.y > y)) return false;
  return (SideOf(from, to, x, y) > 0) == (to.y > from.y);
}

}  // namespace

bool ClipWindow::Touches(const tEntity& entity) {
  const tEntity::Index last = entity.PointCount();
  if (last < 0) return false;
  if (entity.bType == kText) return box_.Holds(entity.x(0), entity.Y(0));
  if (IsCurve(entity.bType)) return TouchesCurve(entity);
  if (entity.bType == kPoint || last == 0) {
    for (tEntity::Index i = 0; i <= last; ++i) {
      if (box_.Holds(entity.x(i), entity.Y(i))) return true;
    }
    return false;
  }
  if (entity.Bulges.empty()) return TouchesChain(entity);
  drawn_.CopyFrom(entity);
  DrawBulges(drawn_, chain_, tolerance_);
  return TouchesChain(drawn_);
}

// Most curves are told from their box, without drawing them.
bool ClipWindow::TouchesCurve(const tEntity& entity) {
  const double x = entity.x(0), y = entity.Y(0), radius = std::fabs(entity.Curve().radius);
  const ClipBox around{box_.minX - radius, box_.minY - radius, box_.maxX + radius, box_.maxY + radius};
  if (!around.Holds(x, y)) return false;
  chain_.clear();
  AppendCurve(chain_, entity, tolerance_);
  for (std::size_t i = 0; i + 1 < chain_.size(); ++i) {
    if (TouchesSegment(chain_[i], chain_[i + 1])) return true;
  }
  return false;
}

// Each part of an area ends where it begins, and so does a closed chain.
bool ClipWindow::TouchesChain(const tEntity& entity) const {
  bool surrounds = false;
  for (std::size_t part = 0; part < entity.PartCount(); ++part) {
    const tEntity::Index begin = entity.PartBegin(part), end = entity.PartEnd(part);
    if (begin >= end) continue;
    const bool closes = entity.IsArea || entity.Closed;
    Vertex from = VertexAt(entity, closes ? end - 1 : begin);
    for (tEntity::Index i = begin; i < end; ++i) {
      const Vertex to = VertexAt(entity, i);
      if (TouchesSegment(from, to)) return true;
      if (entity.IsArea && CrossesRay(from, to, box_.minX, box_.minY)) surrounds = !surrounds;
      from = to;
    }
  }
  return surrounds;
}

// They do not where a side of the box, or the segment itself, has one wholly on one side of it and the other beyond.
bool ClipWindow::TouchesSegment(const Vertex& from, const Vertex& to) const {
  const auto [left, right] = std::minmax(from.x, to.x);
  const auto [bottom, top] = std::minmax(from.y, to.y);
  if (!(right >= box_.minX && left <= box_.maxX && top >= box_.minY && bottom <= box_.maxY)) return false;
  if (box_.Holds(from.x, from.y) || box_.Holds(to.x, to.y)) return true;
  const double sides[] = {SideOf(from, to, box_.minX, box_.minY), SideOf(from, to, box_.minX, box_.maxY),
                          SideOf(from, to, box_.maxX, box_.minY), SideOf(from, to, box_.maxX, box_.maxY)};
  const auto isLeft = [](double side) { return side > 0; };
  const auto isRight = [](double side) { return side < 0; };
  return !std::all_of(std::begin(sides), std::end(sides), isLeft) &&
         !std::all_of(std::begin(sides), std::end(sides), isRight);
}

}  // namespace tesselink
