// SPDX-License-Identifier: MIT
#include "core/element/EqnLine.h"

#include <algorithm>

#include "core/io/Errors.h"

namespace tesselink {
namespace {

bool WithinClosed(double value, double a, double b) { return value >= std::min(a, b) && value <= std::max(a, b); }
bool WithinHalfOpen(double value, double a, double b) { return value >= std::min(a, b) && value < std::max(a, b); }

}  // namespace

EqnLine::Equation EqnLine::Compute() const {
  if (x1_ == x2_) return {1e99, -1e99};
  return {(y2_ - y1_) / (x2_ - x1_), (x1_ * y2_ - y1_ * x2_) / (x1_ - x2_)};
}

void EqnLine::Recompute() {
  const Equation equation = Compute();
  slope_ = equation.slope;
  intercept_ = equation.intercept;
}

void EqnLine::X1(double value) {
  x1_ = value;
  Recompute();
}
void EqnLine::Y1(double value) {
  y1_ = value;
  Recompute();
}
void EqnLine::X2(double value) {
  x2_ = value;
  Recompute();
}
void EqnLine::Y2(double value) {
  y2_ = value;
  Recompute();
}

void EqnLine::Line(double x1, double y1, double x2, double y2) {
  x1_ = x1;
  y1_ = y1;
  x2_ = x2;
  y2_ = y2;
}

double EqnLine::QueryYatX(double x) const {
  if (x1_ == x2_) return 0;
  const Equation equation = Compute();
  return equation.intercept + equation.slope * x;
}

double EqnLine::QueryXatY(double y) const {
  if (x1_ == x2_) return x1_;
  const Equation equation = Compute();
  if (equation.slope == 0) throw Error("Division by zero: a horizontal line has no single x at a given y", "QueryXatY");
  return (y - equation.intercept) / equation.slope;
}

bool EqnLine::Intersects(const EqnLine& other) const {
  const Equation mine = Compute(), theirs = other.Compute();
  if (mine.slope == theirs.slope) return false;
  double x = 0, y = 0;
  Intersection(other, x, y);
  // The wider side decides which coordinate tells the position along this segment; a vertical probe is tested by x,
  // a horizontal one by y, so that rounding in the other coordinate cannot lose the crossing.
  const bool onMine = other.x1_ == other.x2_   ? WithinHalfOpen(other.x1_, x1_, x2_)
                      : other.y1_ == other.y2_ ? WithinHalfOpen(other.y1_, y1_, y2_)
                      : x1_ == x2_             ? WithinHalfOpen(y, y1_, y2_)
                                               : WithinHalfOpen(x, x1_, x2_);
  const bool onTheirs =
      other.x1_ == other.x2_ ? WithinClosed(y, other.y1_, other.y2_) : WithinClosed(x, other.x1_, other.x2_);
  return onMine && onTheirs;
}

void EqnLine::Intersection(const EqnLine& other, double& x, double& y) const {
  const Equation mine = Compute(), theirs = other.Compute();
  if (mine.slope == theirs.slope) return;
  if (x1_ == x2_) {
    x = x1_;
    y = other.QueryYatX(x);
  } else if (other.x1_ == other.x2_) {
    x = other.x1_;
    y = QueryYatX(x);
  } else {
    x = (theirs.intercept - mine.intercept) / (mine.slope - theirs.slope);
    y = mine.intercept + mine.slope * x;
  }
}

}  // namespace tesselink
