// SPDX-License-Identifier: MIT
// The line through two points, as the orientation test of a polygon uses it.
#pragma once

namespace tesselink {

/// Two end points with the slope and the intercept that follow from them. Setting one coordinate recomputes slope and
/// intercept; `Line` sets all four and, on purpose, leaves them as they were.
class EqnLine {
 public:
  double X1() const { return x1_; }
  double Y1() const { return y1_; }
  double X2() const { return x2_; }
  double Y2() const { return y2_; }
  void X1(double value);
  void Y1(double value);
  void X2(double value);
  void Y2(double value);

  /// Sets both end points; slope and intercept keep their previous values until a coordinate is set singly.
  void Line(double x1, double y1, double x2, double y2);

  /// The stored slope; 1e99 for a vertical line.
  double Slope() const { return slope_; }
  double m() const { return slope_; }
  double A() const { return slope_; }
  /// The stored intercept; -1e99 for a vertical line.
  double y0() const { return intercept_; }
  double b() const { return intercept_; }

  /// The line's y at x, from the end points; 0 for a vertical line.
  double QueryYatX(double x) const;
  /// The line's x at y, from the end points; X1 for a vertical line. Throws Error for a horizontal line.
  double QueryXatY(double y) const;

  /// Whether the two segments cross. Of this segment the end with the greater coordinate does not belong to it, so
  /// that of two edges which meet on `other` exactly one crosses it. Parallel segments do not cross.
  bool Intersects(const EqnLine& other) const;
  /// The point where the two endless lines meet; unchanged arguments where they are parallel.
  void Intersection(const EqnLine& other, double& x, double& y) const;

 private:
  struct Equation {
    double slope, intercept;
  };
  Equation Compute() const;
  void Recompute();

  double x1_ = 0, y1_ = 0, x2_ = 0, y2_ = 0;
  double slope_ = 1e99, intercept_ = -1e99;
};

}  // namespace tesselink
