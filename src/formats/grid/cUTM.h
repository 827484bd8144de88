// SPDX-License-Identifier: MIT
// Transverse Mercator, both ways: geographic degrees and metres of a UTM zone.
#pragma once

namespace tesselink {

/// Set `Lat` and `Lon` to read `x` and `Y`, or the other way round; a property set last decides from which side the
/// other one is computed. The series is Krueger's of 1912 to the sixth order of the third flattening, as given by C. F.
/// F. Karney, "Transverse Mercator with an accuracy of a few nanometers", J. Geodesy 85 (2011), equations 7 to 36:
/// errors stay below a micrometre within a zone. The defaults are WGS 84 and UTM.
class cUTM {
 public:
  double CentMerid = 0;                      ///< central meridian, degrees
  double SemiMajAxis = 6378137;              ///< metres
  double SemiMinAxis = 6356752.31424517950;  ///< metres
  double ScaleFactor = 0.9996;               ///< on the central meridian
  double BasePara = 0;                       ///< latitude of the origin, degrees
  double FalseEasting = 500000;              ///< metres
  double FalseNorthing = 0;                  ///< metres

  /// Takes central meridian and false northing from the zone and the hemisphere of a point, in degrees: zones of 6
  /// degrees from 180 degrees west, without the exceptions around Norway.
  void ChooseZone(double lat, double lon);

  double Lat();
  double Lon();
  double x();
  double Y();
  void Lat(double degrees) { SetGeographic(degrees, Lon()); }
  void Lon(double degrees) { SetGeographic(Lat(), degrees); }
  void x(double metres) { SetGrid(metres, Y()); }
  void Y(double metres) { SetGrid(x(), metres); }

 private:
  enum class Known { Geographic, Grid };
  void SetGeographic(double lat, double lon);
  void SetGrid(double x, double y);
  struct Series;
  void Forward(double lat, double lon, double& easting, double& northing) const;
  void Inverse(double easting, double northing, double& lat, double& lon) const;

  Known known_ = Known::Geographic;
  double lat_ = 0, lon_ = 0, x_ = 0, y_ = 0;
};

}  // namespace tesselink
