// SPDX-License-Identifier: MIT
#include "core/element/tEntity.h"

#include <algorithm>
#include <cmath>

#include "core/element/EqnLine.h"
#include "core/io/Errors.h"

namespace tesselink {
namespace {

constexpr double kProbeHalfLength = 1e99;

// The edges of the chain taken as closed: edge i runs from vertex i to the next one, the last back to vertex 0.
std::vector<EqnLine> ClosedEdges(const tEntity& entity, std::size_t count) {
  std::vector<EqnLine> edges(count);
  for (std::size_t i = 0; i < count; ++i) {
    const auto from = static_cast<tEntity::Index>(i);
    const auto to = static_cast<tEntity::Index>(i + 1 == count ? 0 : i + 1);
    edges[i].Line(entity.x(from), entity.Y(from), entity.x(to), entity.Y(to));
  }
  return edges;
}

}  // namespace

bool tEntity::Grow(Coordinates& values, Index index) {
  if (index < 0) {
    state_ = ErrorState::SubscriptOutOfRange;
    return false;
  }
  if (static_cast<std::size_t>(index) == values.size()) {
    values.push_back(0);
  } else {
    values.resize(static_cast<std::size_t>(index) + 1);
  }
  return true;
}

bool tEntity::IsLevel() const {
  return std::all_of(z_.begin(), z_.end(), [this](double value) { return value == z_.front(); });
}

bool tEntity::HasHeight() const {
  return std::any_of(z_.begin(), z_.end(), [](double value) { return value != 0; });
}

bool tEntity::HasMeasure() const {
  return std::any_of(Measures.begin(), Measures.end(), [](double m) { return !std::isnan(m) && m != 0; });
}

tEntity::Spans tEntity::Vertices() {
  const auto count = static_cast<std::size_t>(PointCount() + 1);
  if (z_.size() < count) z_.resize(count);
  return {std::span(x_).first(count), std::span(y_).first(count), std::span(z_).first(count)};
}

tEntity::PlaneSpans tEntity::ToStore(Index count) {
  const auto size = static_cast<std::size_t>(count);
  for (Coordinates* values : {&x_, &y_}) {
    if (values->size() < size) values->resize(size);
  }
  stored_ = stored_ || count > 0;
  return {std::span(x_).first(size), std::span(y_).first(size)};
}

void tEntity::AddPoint(double px, double py, double pz) {
  if (PointCount() == 0 && x(0) == 0 && Y(0) == 0 && Z(0) == 0) {
    x_[0] = px;
    y_[0] = py;
    z_[0] = static_cast<double>(static_cast<float>(pz));
    return;
  }
  x(XCount() + 1, px);
  Y(YCount() + 1, py);
  Z(ZCount() + 1, static_cast<float>(pz));
}

void tEntity::ClearVertices() {
  for (Coordinates* values : {&x_, &y_, &z_}) {
    if (values->size() != 1) values->resize(1);
    values->front() = 0;
  }
  stored_ = false;
  Parts.clear();
  Bulges.clear();
  Measures.clear();
  IsArea = false;
}

CurveNumbers tEntity::Curve() const {
  const auto inFull = [](double stored, float single) {
    return static_cast<float>(stored) == single ? stored : static_cast<double>(single);
  };
  return {inFull(curve_.radius, Rad), inFull(curve_.start, AngStart), inFull(curve_.end, AngEnd)};
}

void tEntity::Curve(const CurveNumbers& numbers) {
  curve_ = numbers;
  Rad = static_cast<float>(numbers.radius);
  AngStart = static_cast<float>(numbers.start);
  AngEnd = static_cast<float>(numbers.end);
}

void tEntity::Clear() {
  ClearVertices();
  bType = 0;
  Colour = 0;
  Curve({});
  TextAng = TextSize = 0;
  TextJust = 0;
  Closed = false;
  RGB = 0;
  IsBlack = WasArea = IsLabel = false;
  Lost = 0;
  ColourFrom = LineStyleFrom = StyleSource::Own;
  Record = 0;
  Handle = 0;
}

void tEntity::Reset() {
  Clear();
  Layer.clear();
  LineStyle.clear();
  Text.clear();
  TextUnits.clear();
  CDFCode.clear();
  Block.clear();
}

void tEntity::TurnParts() {
  for (std::size_t part = 0; part < PartCount(); ++part) {
    for (Coordinates* values : {&x_, &y_, &z_}) {
      if (std::ssize(*values) < PartEnd(part)) continue;
      std::reverse(values->begin() + PartBegin(part), values->begin() + PartEnd(part));
    }
  }
}

void tEntity::RemoveLastVertex() {
  for (Coordinates* values : {&x_, &y_, &z_}) {
    if (values->size() > 1) values->pop_back();
  }
}

void tEntity::ResetToCentroid() {
  ComputeExtents();
  ClearVertices();
  AddPoint((minX_ + maxX_) / 2, (minY_ + maxY_) / 2, (minZ_ + maxZ_) / 2);
}

void tEntity::ResetExtents() {
  maxX_ = maxY_ = maxZ_ = -99999999;
  minX_ = minY_ = minZ_ = 99999999;
}

void tEntity::ComputeExtents() {
  ResetExtents();
  const Index last = PointCount();
  for (Index i = 0; i <= last; ++i) {
    const double pz = Height(i);
    maxX_ = std::max(maxX_, x(i));
    maxY_ = std::max(maxY_, Y(i));
    maxZ_ = std::max(maxZ_, pz);
    minX_ = std::min(minX_, x(i));
    minY_ = std::min(minY_, Y(i));
    minZ_ = std::min(minZ_, pz);
  }
}

bool tEntity::Clockwise() {
  clockwise_ = ComputeOrientation();
  return clockwise_;
}

bool tEntity::ComputeOrientation() const {
  const std::vector<EqnLine> edges = ClosedEdges(*this, x_.size());
  const EqnLine& first = edges.front();
  const bool verticalProbe = first.X1() != first.X2();
  EqnLine probe;
  double reference = 0;
  if (verticalProbe) {
    const double mid = (first.X1() + first.X2()) / 2;
    probe.Line(mid, kProbeHalfLength, mid, -kProbeHalfLength);
    reference = first.QueryYatX(mid);
  } else {
    const double mid = (first.Y1() + first.Y2()) / 2;
    probe.Line(kProbeHalfLength, mid, -kProbeHalfLength, mid);
    reference = first.QueryXatY(mid);
  }
  if (!std::isfinite(reference)) throw Error("Overflow in the orientation of a polygon", "Clockwise");

  int crossings = 0;
  for (const EqnLine& edge : edges) {
    if (!edge.Intersects(probe)) continue;
    double crossX = 0, crossY = 0;
    edge.Intersection(probe, crossX, crossY);
    if ((verticalProbe ? crossY : crossX) >= reference) ++crossings;
  }
  const bool odd = crossings % 2 != 0;
  return first.X1() > first.X2() ? !odd : odd;
}

}  // namespace tesselink
