// SPDX-License-Identifier: MIT
// Areas made of lines, with the module that finds them.
#include "core/run/AreaBuilding.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/io/Module.h"
#include "core/run/Losses.h"
#include "support/Support.h"

namespace tesselink {
namespace {

class AreaBuildingTest : public testing::Test {
 protected:
  FilterOptions options{.dialect = Dialect::Standard, .labelLayers = {"NUM*"}};
  Losses losses;
  std::vector<tEntity> elements;

  void Line(double x1, double y1, double x2, double y2, const std::string& layer = "SECTION", double z = 0) {
    elements.push_back(Element(kLine, {{x1, y1, z}, {x2, y2, z}}, layer));
  }
  void Ring(double x, double y, double size, const std::string& layer = "SECTION") {
    elements.push_back(Element(kPolyline, {{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}}, layer));
    elements.back().Closed = true;
  }
  void Text(double x, double y, const std::string& text, double angle = 0) {
    elements.push_back(Element(kText, {{x, y}}, "Numbers"));
    elements.back().Text = text;
    elements.back().TextSize = 2;
    elements.back().TextAng = angle;
  }
  std::unique_ptr<AreaBuilding> Built(AreaPlace place = AreaPlace::Alone) {
    std::unique_ptr<Linework> linework(CreateByModule<Linework>(std::string(TESSELINK_DATA_FOLDER), "linework"));
    auto building = std::make_unique<AreaBuilding>(std::move(linework), options, place, losses);
    losses.Locate([&building] { return building->Where(); });
    for (const tEntity& element : elements) building->Takes(element, false);
    EXPECT_TRUE(building->Build([] { return false; }));
    return building;
  }
  // Each area as its layer, text and rings.
  std::vector<std::string> Areas() {
    std::vector<std::string> areas;
    const auto building = Built();
    tEntity area;
    while (building->Next(area)) {
      EXPECT_TRUE(area.IsArea && area.Closed && area.bType == kPolyline);
      std::string rings;
      for (std::size_t part = 0; part < area.PartCount(); ++part) {
        double twice = 0;
        const auto begin = area.PartBegin(part), last = area.PartEnd(part) - 1;
        EXPECT_TRUE(area.x(begin) == area.x(last) && area.Y(begin) == area.Y(last));
        for (auto i = begin; i < last; ++i) twice += area.x(i) * area.Y(i + 1) - area.x(i + 1) * area.Y(i);
        rings += " " + NumberText(-twice / 2);
      }
      areas.push_back(area.Layer + " " + area.Text + rings);
    }
    std::sort(areas.begin(), areas.end());
    losses.Locate(nullptr);
    return areas;
  }
  std::string Told() {
    Report report;
    losses.Tell(report, "out.shp");
    std::string told;
    for (const Warning& warning : report.Warnings())
      told += warning.kind + warning.text.substr(warning.text.rfind(": ")) + "; ";
    return told;
  }
  using Lists = std::vector<std::string>;
};

TEST_F(AreaBuildingTest, CellsOfCrossingLinesHaveTheLayerAndTheTextsInThem) {
  for (const double at : {0.0, 100.0, 200.0}) {
    Line(at, -10, at, 210);
    Line(-10, at, 210, at);
  }
  // A township line upon the corner's two sides, which are the section's as well.
  elements.insert(elements.begin(), Element(kPolyline, {{0, 200}, {0, 0}, {200, 0}}, "TOWNSHIP"));
  Text(10, 10, "16");
  Text(110, 10, "15");
  Text(90, 110, "10");
  Text(110, 150, "40 AC");
  Text(140, 160.5, "of 11");
  Text(110, 160, "NE/4");
  Text(300, 0, "T3N");
  EXPECT_EQ(Areas(),
            (Lists{"SECTION 10 10000", "SECTION 15 10000", "SECTION 16 10000", "SECTION NE/4 of 11 40 AC 10000"}));
  EXPECT_EQ(Told(),
            "loose ends: 12, the first at -10, 0; labels outside: 1, at 300, 0; labels joined: 1, at 100, 100; ");
}

TEST_F(AreaBuildingTest, IslandsAreHolesAndCutsBoundNothing) {
  Ring(0, 0, 100);
  Ring(40, 40, 20, "LAKE");
  Text(50, 50, "Lake");
  EXPECT_EQ(Areas(), (Lists{"LAKE Lake 400", "SECTION  10000 -400"}));
  Line(0, 0, 40, 40);
  Line(100, 100, 110, 110);
  losses.Reset();
  EXPECT_EQ(Areas(), (Lists{"LAKE Lake 400", "SECTION  10000 -400"}));
  EXPECT_EQ(Told(), "loose ends: 1, at 110, 110; cuts: 1, at 0, 0; areas without label: 1, at 100, 100; ");
}

TEST_F(AreaBuildingTest, CurvesAndHeightsBoundAreas) {
  options.tolerance = 1e-3;
  options.labelLayers.clear();
  Line(0, 0, 0, 100, "TRACT", 5);
  tEntity arc = Element(kArc, {{0, 50, 5}}, "TRACT");
  arc.Curve({50, 270, 90});
  elements.push_back(arc);
  tEntity half = Element(kPolyline, {{0, 100, 5}, {0, 0, 5}}, "TRACT");
  half.Bulges = {1};
  elements.push_back(half);
  const auto building = Built();
  tEntity area;
  std::vector<double> greatest;
  while (building->Next(area)) {
    double most = 0;
    for (tEntity::Index i = 0; i <= area.PointCount(); ++i) {
      EXPECT_EQ(area.Height(i), 5);
      most = std::max(most, std::fabs(area.x(i)));
    }
    greatest.push_back(most);
  }
  ASSERT_EQ(greatest.size(), 2U);
  EXPECT_NEAR(greatest[0], 50, 2e-3);
  EXPECT_NEAR(greatest[1], 50, 2e-3);
  EXPECT_EQ(Told(), "curves: 2, the first at 0, 0; ");
}

TEST_F(AreaBuildingTest, LinesMeetWithinRoundingAndFurtherWhereThatIsAsked) {
  options.labelLayers.clear();
  const double x = 1846215.37, y = 462108.64;
  const auto third = [](double from, double to) { return from + (to - from) / 3; };
  Line(x, y, x + 100, y + 31);
  Line(x + 100, y + 31, x + 70, y + 130);
  Line(x + 70, y + 130, x, y);
  // From a third of one side to that of another, which no number hits.
  Line(third(x, x + 100), third(y, y + 31), third(x + 70, x), third(y + 130, y));
  EXPECT_EQ(Areas().size(), 2U);
  EXPECT_EQ(Told(), "");
  elements.back().x(0, elements.back().x(0) + 0.004);
  elements.back().Y(0, elements.back().Y(0) + 0.004);
  EXPECT_EQ(Areas().size(), 1U);
  EXPECT_TRUE(Told().starts_with("loose ends: 1, at 1846248.7")) << Told();
  options.snap = 0.01;
  EXPECT_EQ(Areas().size(), 2U);
}

TEST_F(AreaBuildingTest, AccountsForWhatTheOutputGetsNothingElseOf) {
  Ring(0, 0, 10);
  Line(50, 0, 60, 0);
  Text(5, 5, "1");
  Text(55, 5, "2");
  elements.push_back(Element(kText, {{5, 5}}, "OTHER"));
  for (const AreaPlace place : {AreaPlace::Alone, AreaPlace::Beside}) {
    const auto building = Built(place);
    tEntity area;
    while (building->Next(area)) {
    }
    KindCounts into, skipped;
    building->Account(into, skipped);
    EXPECT_EQ(Row(into.Of("polyline"), into.Of("text"), skipped.Of("line"), skipped.Of("text"), skipped.Total()),
              place == AreaPlace::Alone ? "1 1 1 1 2" : "0 0 0 0 0");
    EXPECT_EQ(building->Takes(elements[0], false), place == AreaPlace::Alone);
    EXPECT_FALSE(building->Takes(elements.back(), false)) << "no label";
    EXPECT_FALSE(building->Takes(area, false)) << "an area already";
  }
}

TEST_F(AreaBuildingTest, TakesAnyCoordinates) {
  options.labelLayers.clear();
  EXPECT_EQ(Areas(), Lists{}) << "nothing at all";
  constexpr double kInf = std::numeric_limits<double>::infinity(), kNan = std::numeric_limits<double>::quiet_NaN();
  Line(0, 0, kInf, 0);
  Line(kNan, 0, 1, 0);
  Line(3, 3, 3, 3);
  tEntity circle = Element(kCircle, {{0, 0}});
  circle.Curve({kInf, 0, 0});
  elements.push_back(circle);
  elements.push_back(Element(kPolyline, {{5, 5}}));
  Ring(1846215.375, 462108.625, 0.25);
  Ring(1846215.375, 462108.625, 0.25);
  EXPECT_EQ(Areas(), Lists{"SECTION  0.0625"});
  EXPECT_TRUE(Holds(Told(), "wild lines: 3"));
  Ring(-1e300, -1e300, 1e300);
  Line(-1e308, -1e308, 1e308, 1e308);
  const std::string error = ErrorOf([this] { Areas(); });
  EXPECT_TRUE(error.empty() || error.starts_with("the areas that lines bound")) << error;
}

TEST_F(AreaBuildingTest, EndsWhenItIsCancelled) {
  std::unique_ptr<Linework> linework(CreateByModule<Linework>(std::string(TESSELINK_DATA_FOLDER), "linework"));
  for (int i = 0; i < 100; ++i) {
    const double at = i;
    linework->Add(std::vector<Vertex>{{at, 0}, {at, 100}});
    linework->Add(std::vector<Vertex>{{0, at}, {100, at}});
  }
  int asked = 0;
  EXPECT_FALSE(linework->Build(0, [&asked] { return ++asked == 2; }));
  EXPECT_EQ(asked, 2);
}

}  // namespace
}  // namespace tesselink
