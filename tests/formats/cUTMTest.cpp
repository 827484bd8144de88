#include "formats/grid/cUTM.h"

#include <gtest/gtest.h>

#include <random>

namespace tesselink {
namespace {

TEST(cUTM, ZonesAndHemispheres) {
  cUTM utm;
  const std::tuple<double, double, double, double> cases[] = {{40, -105, -105, 0}, {-33, 151.2, 153, 10000000},
                                                              {0, -180, -177, 0},  {10, 179.999, 177, 0},
                                                              {10, 180, 177, 0},   {1, 0, 3, 0}};
  for (const auto& [lat, lon, meridian, northing] : cases) {
    utm.ChooseZone(lat, lon);
    // 180 degrees east and west are one meridian, in either zone beside it.
    EXPECT_TRUE(utm.CentMerid == meridian || (lon == 180 && utm.CentMerid == -177)) << lon;
    EXPECT_EQ(utm.FalseNorthing, northing);
  }
}

TEST(cUTM, ThereAndBack) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> lats(-84, 84), lons(-180, 180);
  for (int i = 0; i < 20000; ++i) {
    const double lat = lats(random), lon = lons(random);
    cUTM utm;
    utm.ChooseZone(lat, lon);
    utm.Lat(lat);
    utm.Lon(lon);
    cUTM back = utm;
    back.x(utm.x());
    back.Y(utm.Y());
    ASSERT_NEAR(back.Lat(), lat, 1e-9);
    ASSERT_NEAR(back.Lon(), lon, 1e-9);
  }
  cUTM poles;
  poles.Lat(90);
  EXPECT_NEAR(poles.x(), 500000, 1e-6);
  EXPECT_NEAR(poles.Y(), 9997964.943, 0.001);
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
