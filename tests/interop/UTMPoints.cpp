// Reads "longitude latitude" lines and prints easting, northing, and longitude and latitude computed back from them, in
// the zone and hemisphere of the point.
#include <cstdio>

#include "formats/grid/cUTM.h"

int main() {
  double lon = 0, lat = 0;
  while (std::scanf("%lf %lf", &lon, &lat) == 2) {
    tesselink::cUTM there;
    there.ChooseZone(lat, lon);
    tesselink::cUTM back = there;
    there.Lat(lat);
    there.Lon(lon);
    back.x(there.x());
    back.Y(there.Y());
    std::printf("%.9f %.9f %.15f %.15f\n", there.x(), there.Y(), back.Lon(), back.Lat());
  }
  return 0;
}
