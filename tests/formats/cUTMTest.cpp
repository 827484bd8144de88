// SPDX-License-Identifier: MIT
#include "formats/grid/cUTM.h"

#include <gtest/gtest.h>

namespace tesselink {
namespace {

// Latitude, longitude, easting and northing by PROJ 9.1.
TEST(cUTM, AgreesWithAnIndependentProgramThereAndBack) {
  const std::tuple<double, double, double, double> points[] = {
      {40.25, -105.5, 457476.114131, 4455625.261065},  {-33.9, 151.2, 333568.941012, 6247473.336844},
      {1.5, -177.3, 466628.720606, 165797.736457},     {-79.5, 179.9, 558974.642625, 1172753.137238},
      {83.9, 2.999999, 499999.988136, 9316930.154067}, {1e-6, -3, 500000, 0.110530},
      {59.9, 10.1, 561538.643031, 6640785.596407},     {-53.2, -70.6, 393124.162213, 4104285.705284}};
  for (const auto& [lat, lon, easting, northing] : points) {
    cUTM utm;
    utm.ChooseZone(lat, lon);
    utm.Lat(lat);
    utm.Lon(lon);
    EXPECT_NEAR(utm.x(), easting, 1e-6) << lon;
    EXPECT_NEAR(utm.Y(), northing, 1e-6) << lon;
    cUTM back = utm;
    back.x(utm.x());
    back.Y(utm.Y());
    EXPECT_NEAR(back.Lat(), lat, 1e-11);
    EXPECT_NEAR(back.Lon(), lon, 1e-11);
  }
}

TEST(cUTM, ParametersByName) {
  cUTM grid;  // a sphere, true scale, the origin at 30 degrees north on the meridian of 10 degrees
  grid.SemiMajAxis = grid.SemiMinAxis = 6371000;
  grid.ScaleFactor = 1;
  grid.CentMerid = 10;
  grid.BasePara = 30;
  grid.FalseEasting = 1000;
  grid.FalseNorthing = 2000;
  grid.Lat(31);
  grid.Lon(10);
  EXPECT_NEAR(grid.x(), 1000, 1e-9);
  EXPECT_NEAR(grid.Y(), 2000 + 6371000 * 3.14159265358979323846 / 180, 1e-6);
}

}  // namespace
}  // namespace tesselink
