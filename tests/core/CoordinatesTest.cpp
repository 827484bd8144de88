// SPDX-License-Identifier: MIT
#include "core/run/Coordinates.h"

#include "support/Support.h"

namespace tesselink {
namespace {

constexpr const char* kUtm = "EPSG:32614";  // central meridian 99 degrees west, at x = 500,000
constexpr const char* kTexasFeet = "EPSG:2277";
constexpr const char* kTexasMetres = "EPSG:32139";
constexpr double kFoot = 1200.0 / 3937;

class SurveyReader final : public InputFilter {
 public:
  SurveyReader(const FilterContext& context, std::string prj) : InputFilter(context), prj_(std::move(prj)) {
    filename_ = "in.x";
  }
  int FileNumber() const override { return 0; }
  std::int64_t Loc() const override { return 0; }
  double Progress() const override { return 0; }
  bool Eof() const override { return true; }
  std::string ProjectionPath() const override { return prj_; }

 private:
  void Open(const std::string&) override {}
  bool Next(tEntity&) override { return false; }
  std::string prj_;
};

class SurveyWriter final : public OutputFilter {
 public:
  SurveyWriter(const FilterContext& context, SystemWish wish) : OutputFilter(context), wish_(wish) {}
  SystemWish WishesSystem() const override { return wish_; }
  void SourceSystem(const CoordinateSystem& told) override { system = told; }
  CoordinateSystem system;

 private:
  void Create(const std::string&) override {}
  WriteResult Write(tEntity&) override { return WriteResult::Written; }
  void Complete() override {}
  void Drop() noexcept override {}
  SystemWish wish_;
};

class CoordinatesTest : public testing::Test {
 protected:
  CoordinatesTest() { rig.context.options.moduleFolder = TESSELINK_DATA_FOLDER; }

  Rig rig;
  std::string prj;  // beside the input
  SystemWish wish = SystemWish::None;
  Holding holding{.bulges = true, .curves = true};
  CoordinateSystem told;

  // The element as it reaches the writer.
  tEntity Placed(tEntity entity) {
    SurveyReader reader(rig.context, prj.empty() ? prj : rig.folder.Put("in.prj", prj));
    SurveyWriter writer(rig.context, wish);
    Coordinates coordinates(rig.context, holding);
    coordinates.Open(reader, writer);
    told = writer.system;
    const auto placed = coordinates.Place(entity, reader);
    drawn = placed == Coordinates::Placed::Drawn;
    return entity;
  }
  bool drawn = false;
};

TEST_F(CoordinatesTest, AWriterOfLongitudeAndLatitudeGetsThem) {
  wish = SystemWish::Wgs84;
  const tEntity point = Element(kPoint, {{500000, 3000000}});
  EXPECT_TRUE(Holds(ErrorOf([&] { Placed(point); }), "in.x: its coordinate system is not known"));
  prj = "Projection UTM";
  EXPECT_TRUE(Holds(ErrorOf([&] { Placed(point); }), "in.prj"));
  rig.context.options.systems.allowBallpark = true;
  EXPECT_EQ(Placed(point).x(0), 500000);
  EXPECT_FALSE(told.IsKnown());
  EXPECT_NE(rig.WarningOf("unknown coordinate system"), nullptr);
  prj = kUtm;
  const tEntity placed = Placed(point);
  EXPECT_NEAR(placed.x(0), -99, 1e-12);
  EXPECT_NEAR(placed.Y(0), 27.12, 0.01);
  EXPECT_TRUE(told.isWgs84 && told.isGeographic && told.epsg == 4326 && told.unit == "degree");
  rig.context.options.systems.to = kTexasFeet;
  EXPECT_TRUE(Holds(ErrorOf([&] { Placed(point); }), "WGS 84 alone"));
}

TEST_F(CoordinatesTest, CurvesStayWhereShapesDo) {
  rig.context.options.systems = {.from = kTexasFeet, .to = kTexasMetres};
  rig.context.options.tolerance = 1;
  tEntity chain = Element(kPolyline, {{3000000, 10000000}, {3001000, 10000000}}),
          circle = Element(kCircle, {{3000000, 10000000}});
  chain.Bulges = {1};
  circle.Curve({1000, 0, 0});
  EXPECT_EQ(Placed(chain).Bulges, std::vector<double>{1});
  EXPECT_NEAR(Placed(circle).Curve().radius, 1000 * kFoot, 1e-9);
  EXPECT_FALSE(drawn);
  EXPECT_NEAR(told.metres, 1, 0);
  holding.curves = false;
  const tEntity ring = Placed(circle);
  EXPECT_TRUE(drawn && ring.bType == kPolyline && ring.Closed);
  EXPECT_NEAR(static_cast<double>(ring.PointCount()), 71, 3) << "within a foot, not a metre";
  rig.context.options.systems.to = kUtm;
  EXPECT_GT(Placed(chain).PointCount(), 20);
  EXPECT_TRUE(drawn);
}

}  // namespace
}  // namespace tesselink
