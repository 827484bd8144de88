// SPDX-License-Identifier: MIT
#include "formats/grid/cUTM.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <numbers>

namespace tesselink {
namespace {

constexpr double kDegree = std::numbers::pi / 180;
constexpr std::size_t kOrder = 6;
using Coefficients = std::array<double, kOrder>;

// Longitudes differ by less than a half turn.
double Wrapped(double degrees) { return std::remainder(degrees, 360); }

}  // namespace

// What follows from the ellipsoid.
struct cUTM::Series {
  double eccentricity;
  double radius;  // of the rectifying sphere
  Coefficients alpha, beta;

  explicit Series(const cUTM& utm) {
    const double a = utm.SemiMajAxis, b = utm.SemiMinAxis;
    eccentricity = std::sqrt(std::max((a - b) * (a + b), 0.0)) / a;
    const double n = (a - b) / (a + b), n2 = n * n, n3 = n2 * n, n4 = n3 * n, n5 = n4 * n, n6 = n5 * n;
    radius = a / (1 + n) * (1 + n2 / 4 + n4 / 64 + n6 / 256);
    alpha = {n / 2 - n2 * 2 / 3 + n3 * 5 / 16 + n4 * 41 / 180 - n5 * 127 / 288 + n6 * 7891 / 37800,
             n2 * 13 / 48 - n3 * 3 / 5 + n4 * 557 / 1440 + n5 * 281 / 630 - n6 * 1983433 / 1935360,
             n3 * 61 / 240 - n4 * 103 / 140 + n5 * 15061 / 26880 + n6 * 167603 / 181440,
             n4 * 49561 / 161280 - n5 * 179 / 168 + n6 * 6601661 / 7257600,
             n5 * 34729 / 80640 - n6 * 3418889 / 1995840,
             n6 * 212378941 / 319334400};
    beta = {n / 2 - n2 * 2 / 3 + n3 * 37 / 96 - n4 / 360 - n5 * 81 / 512 + n6 * 96199 / 604800,
            n2 / 48 + n3 / 15 - n4 * 437 / 1440 + n5 * 46 / 105 - n6 * 1118711 / 3870720,
            n3 * 17 / 480 - n4 * 37 / 840 - n5 * 209 / 4480 + n6 * 5569 / 90720,
            n4 * 4397 / 161280 - n5 * 11 / 504 - n6 * 830251 / 7257600,
            n5 * 4583 / 161280 - n6 * 108847 / 3991680,
            n6 * 20648693 / 638668800};
  }

  // xi + i eta with the sum over sin(2 j (xi + i eta)) added.
  static std::complex<double> Summed(std::complex<double> zeta, const Coefficients& coefficients, double sign) {
    std::complex<double> sum = zeta;
    for (std::size_t j = 0; j < kOrder; ++j) {
      sum += sign * coefficients[j] * std::sin(2.0 * static_cast<double>(j + 1) * zeta);
    }
    return sum;
  }

  // The tangent of the conformal latitude for that of the geographic one (equations 7 to 9).
  double Conformal(double tau) const {
    const double hypotenuse = std::hypot(1.0, tau);
    const double sigma = std::sinh(eccentricity * std::atanh(eccentricity * tau / hypotenuse));
    return std::hypot(1.0, sigma) * tau - sigma * hypotenuse;
  }

  // Its inverse by Newton's method (equations 19 to 21).
  double Geographic(double conformal) const {
    const double e2m = 1 - eccentricity * eccentricity;
    double tau = conformal / e2m;
    for (int i = 0; i < 8 && std::isfinite(tau); ++i) {
      const double here = Conformal(tau);
      const double step =
          (conformal - here) / std::hypot(1.0, here) * (1 + e2m * tau * tau) / (e2m * std::hypot(1.0, tau));
      tau += step;
      if (std::fabs(step) <= 1e-15 * std::max(1.0, std::fabs(tau))) break;
    }
    return tau;
  }

  // Distance from the equator to a latitude along the meridian, before scaling.
  double Meridian(double lat) const {
    return radius * Summed({std::atan(Conformal(std::tan(lat * kDegree))), 0}, alpha, 1).real();
  }
};

void cUTM::ChooseZone(double lat, double lon) {
  const double zone = std::clamp(std::floor((Wrapped(lon) + 180) / 6), 0.0, 59.0);
  CentMerid = zone * 6 - 177;
  FalseNorthing = lat < 0 ? 10000000 : 0;
}

void cUTM::Forward(double lat, double lon, double& easting, double& northing) const {
  const Series series(*this);
  const double lambda = Wrapped(lon - CentMerid) * kDegree;
  const double tau = series.Conformal(std::tan(lat * kDegree));
  const std::complex<double> sphere(std::atan2(tau, std::cos(lambda)),
                                    std::asinh(std::sin(lambda) / std::hypot(tau, std::cos(lambda))));
  const std::complex<double> zeta = Series::Summed(sphere, series.alpha, 1);
  easting = FalseEasting + ScaleFactor * series.radius * zeta.imag();
  northing = FalseNorthing + ScaleFactor * (series.radius * zeta.real() - series.Meridian(BasePara));
}

void cUTM::Inverse(double easting, double northing, double& lat, double& lon) const {
  const Series series(*this);
  const std::complex<double> zeta(
      ((northing - FalseNorthing) / ScaleFactor + series.Meridian(BasePara)) / series.radius,
      (easting - FalseEasting) / (ScaleFactor * series.radius));
  const std::complex<double> sphere = Series::Summed(zeta, series.beta, -1);
  const double sinhEta = std::sinh(sphere.imag()), cosXi = std::cos(sphere.real());
  const double tau = series.Geographic(std::sin(sphere.real()) / std::hypot(sinhEta, cosXi));
  lat = std::atan(tau) / kDegree;
  lon = Wrapped(CentMerid + std::atan2(sinhEta, cosXi) / kDegree);
}

void cUTM::SetGeographic(double lat, double lon) {
  known_ = Known::Geographic;
  lat_ = lat;
  lon_ = lon;
}

void cUTM::SetGrid(double x, double y) {
  known_ = Known::Grid;
  x_ = x;
  y_ = y;
}

double cUTM::Lat() {
  if (known_ == Known::Grid) Inverse(x_, y_, lat_, lon_);
  return lat_;
}
double cUTM::Lon() {
  if (known_ == Known::Grid) Inverse(x_, y_, lat_, lon_);
  return lon_;
}
double cUTM::x() {
  if (known_ == Known::Geographic) Forward(lat_, lon_, x_, y_);
  return x_;
}
double cUTM::Y() {
  if (known_ == Known::Geographic) Forward(lat_, lon_, x_, y_);
  return y_;
}

}  // namespace tesselink
