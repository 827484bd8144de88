// SPDX-License-Identifier: MIT
#include "picture/Picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <tuple>

#include "core/element/ColourNames.h"
#include "picture/LinePattern.h"
#include "picture/PictureColours.h"
#include "picture/PicturePick.h"
#include "picture/PictureView.h"
#include "picture/PreviewReading.h"
#include "support/Support.h"

namespace tesselink {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

std::vector<PicturePoint> AllOf(std::span<const PicturePoint> places) { return {places.begin(), places.end()}; }

TEST(Picture, ASmallDrawingIsKeptAsItIs) {
  Picture picture;
  picture.Add(Element(kPoint, {{1, 2}, {3, 4}}));
  picture.Add(Element(kLine, {{0, 0}, {5, 5}, {5, 5}}, "B"));
  tEntity closed = Element(kPolyline, {{0, 0}, {4, 0}, {4, 4}});
  closed.Closed = true;
  picture.Add(closed);
  tEntity arc = Element(kArc, {{10, 10}}, "C");
  arc.Rad = 2;
  arc.AngStart = 270;
  arc.AngEnd = 90;
  picture.Add(arc);
  tEntity text = Element(kText, {{7, 8}}, "B");
  text.Text = "WELL 1";
  text.TextSize = 3;
  picture.Add(text);
  picture.Add(Element(kPoint, {{0, 0}}));  // counts as without a vertex
  picture.Add(Element(5, {{90, 90}}));

  ASSERT_EQ(picture.MarkCount(), 5U);
  EXPECT_EQ(AllOf(picture.Vertices(1)), (std::vector<PicturePoint>{{3, 4}}));
  EXPECT_EQ(picture.Mark(1).kind, MarkKind::Point);
  EXPECT_EQ(AllOf(picture.Vertices(2)), (std::vector<PicturePoint>{{0, 0}, {5, 5}, {5, 5}}));
  EXPECT_EQ(AllOf(picture.Vertices(3)), (std::vector<PicturePoint>{{0, 0}, {4, 0}, {4, 4}, {0, 0}}));
  const auto curve = picture.Vertices(4);
  EXPECT_NEAR(curve.front().y, 8, 1e-9);
  EXPECT_NEAR(curve.back().y, 12, 1e-9);
  for (const PicturePoint at : curve) {
    EXPECT_NEAR(std::hypot(at.x - 10, at.y - 10), 2, 1e-9);
    EXPECT_GE(at.x, 10 - 1e-9) << "counter-clockwise from 270 to 90 degrees";
  }
  ASSERT_EQ(picture.Texts().size(), 1U);
  EXPECT_EQ(picture.Texts()[0].text, "WELL 1");
  EXPECT_EQ(picture.Elements(), 5);
  ASSERT_EQ(picture.Layers().size(), 3U);
  EXPECT_EQ(picture.Layers()[1].elements, 2);
  EXPECT_EQ(picture.Bounds().maxX, 12);
  EXPECT_EQ(picture.Cell(), 0);
}

TEST(Picture, CountsWhatPeopleCall) {
  Picture picture;
  tEntity ring = Element(kPolyline, {{1, 1}, {5, 1}, {5, 5}});
  ring.Closed = true;
  for (const std::int64_t record : {7, 7, 8}) {
    tEntity classic = ring;
    classic.Record = record;
    if (picture.Counts().areas == 0) classic.Lost = kLostArea;
    picture.Add(classic);
  }
  ring.IsArea = true;
  picture.Add(ring);
  picture.Add(Element(kPoint, {{1, 1}}, "B"));
  picture.Add(Element(kText, {{1, 1}}));
  EXPECT_EQ(picture.Counts(), (PictureCounts{6, 2, 2, 1, 1})) << "the ring of record 8 is no part of an area";
}

TEST(Picture, LayersAndTextsBeyondTheMost) {
  Picture picture({1024, 3});
  for (int i = 0; i < 300; ++i) picture.Add(Element(kPoint, {{1.0 + i, 1}}, "L" + std::to_string(i)));
  picture.Add(Element(kPoint, {{1, 1}}, std::string(100'000, 'x')));
  picture.Add(Element(kPoint, {{1, 1}}, "L7"));
  ASSERT_EQ(picture.Layers().size(), PictureStyles::kMostLayers + 1);
  EXPECT_EQ(picture.Layers()[7].elements, 2);
  EXPECT_EQ(picture.Layers().back().name, "other layers");
  EXPECT_EQ(picture.Layers().back().elements, 101);
  tEntity text = Element(kText, {{1, 1}});
  text.Text = std::string(249, 'x') + "\xC3\xA9";
  for (int i = 0; i < 5; ++i) picture.Add(text);
  EXPECT_EQ(picture.Texts().size(), 3U);
  EXPECT_EQ(picture.Texts()[0].text.size(), 249U) << "cut at the end of a character";
  EXPECT_EQ(picture.MarkCount(), 304U) << "the other texts are points";
}

// What a thinned picture promises: it holds vertices of the drawing alone, and of every chain and point something
// within a cell, segment by segment.
void ExpectFaithful(const Picture& picture, const std::vector<tEntity>& drawing) {
  using Segment = std::tuple<std::uint8_t, PicturePoint, PicturePoint, bool>;
  std::vector<Segment> drawn, given;
  for (std::size_t i = 0; i < picture.MarkCount(); ++i) {
    const auto places = picture.Vertices(i);
    const PictureMark& mark = picture.Mark(i);
    for (std::size_t v = 0; v < places.size(); ++v) {
      drawn.emplace_back(picture.Styles().LayerOf(mark.style), places[v > 0 ? v - 1 : 0], places[v],
                         mark.kind == MarkKind::Point);
    }
  }
  std::vector<std::pair<double, double>> known;
  for (const tEntity& entity : drawing) {
    const auto layer = static_cast<std::uint8_t>(entity.Layer[0] - 'A');
    for (tEntity::Index i = 0; i <= entity.PointCount(); ++i) {
      known.emplace_back(entity.x(i), entity.Y(i));
      const tEntity::Index before = entity.bType == kPoint || i == 0 ? i : i - 1;
      given.emplace_back(layer, PicturePoint{entity.x(before), entity.Y(before)},
                         PicturePoint{entity.x(i), entity.Y(i)}, entity.bType == kPoint);
    }
  }
  std::sort(known.begin(), known.end());
  for (const auto& [layer, from, to, point] : drawn) {
    ASSERT_TRUE(std::binary_search(known.begin(), known.end(), std::pair(to.x, to.y)));
  }
  const double cell = picture.Cell();
  const auto isNear = [cell](PicturePoint a, PicturePoint b) {
    return std::abs(a.x - b.x) <= cell && std::abs(a.y - b.y) <= cell;
  };
  std::size_t missing = 0;
  for (const auto& [layer, from, to, point] : given) {
    const bool within = isNear(from, to);  // may have no segment of its own
    bool found = false;
    for (const auto& [l, a, b, p] : drawn) {
      if (l != layer || p != point) continue;
      found = within ? isNear(to, a) || isNear(to, b)
                     : (isNear(from, a) && isNear(to, b)) || (isNear(from, b) && isNear(to, a));
      if (found) break;
    }
    if (!found) ++missing;
  }
  EXPECT_EQ(missing, 0U) << "of " << given.size() << " with cells of " << cell;
}

class Thinning : public testing::Test {
 protected:
  std::mt19937 random{1};
  std::vector<tEntity> drawing;

  double Upto(double most) { return std::uniform_real_distribution<double>(0, most)(random); }
  void AddWalk(PicturePoint at, int count, double step, const std::string& layer) {
    VertexChain places{{at.x, at.y}};
    for (int i = 1; i < count; ++i) {
      places.push_back({places.back().x + Upto(2 * step) - step, places.back().y + Upto(2 * step) - step});
    }
    drawing.push_back(Element(kPolyline, places, layer));
  }
  void ExpectThinned() {
    Picture picture({2000, 10});
    for (const tEntity& entity : drawing) {
      picture.Add(entity);
      ASSERT_LE(picture.VertexCount(), 2000U);
    }
    EXPECT_GT(picture.Cell(), 0);
    EXPECT_GT(picture.Generation(), 0);
    ExpectFaithful(picture, drawing);
  }
};

TEST_F(Thinning, OfChainsAndPoints) {
  for (int i = 0; i < 60; ++i) AddWalk({Upto(1e6), 4e6 + Upto(1e6)}, 100, 3000, i % 2 == 0 ? "A" : "B");
  for (int i = 0; i < 4000; ++i) drawing.push_back(Element(kPoint, {{Upto(1e6), 4e6 + Upto(1e6)}}, "C"));
  ExpectThinned();
}

TEST_F(Thinning, ShowsWhatWasThereUntilItIsDone) {
  const auto tour = [this](Picture& picture, bool gradually) {
    std::vector<std::size_t> counts;
    random.seed(1);
    for (int i = 0; i < 150'000; ++i) {
      while (gradually && picture.IsFull()) {
        counts.push_back(picture.MarkCount());
        picture.ThinOn();
      }
      picture.Add(Element(kPoint, {{Upto(1e6), Upto(1e6)}}, "A"));
    }
    return counts;
  };
  Picture gradual({100'000, 10}), atOnce({100'000, 10});
  const std::vector<std::size_t> counts = tour(gradual, true);
  tour(atOnce, false);
  ASSERT_GT(counts.size(), 3U) << "several parts";
  EXPECT_EQ(counts[0], counts[2]) << "nothing is missing between the parts";
  EXPECT_LT(gradual.MarkCount(), counts[0]);
  EXPECT_GT(gradual.MarkCount(), atOnce.MarkCount() / 2);
  EXPECT_EQ(gradual.Cell(), atOnce.Cell());
}

TEST_F(Thinning, OfADrawingThatGrows) {
  for (int power = 0; power < 7; ++power) {
    const double side = std::pow(10, power);
    for (int i = 0; i < 10; ++i) AddWalk({5e6 - Upto(side), Upto(side)}, 100, side / 10, "A");
  }
  ExpectThinned();
}

TEST_F(Thinning, OfAChainThatGoesBackAndForth) {
  VertexChain places;
  for (int i = 0; i < 8000; ++i) places.push_back({i % 2 == 0 ? -1.0 : 1.0, i % 3 == 0 ? -1.0 : 1.0});
  drawing = {Element(kLine, places, "A"), Element(kPoint, places, "B")};
  Picture picture({2000, 10});
  for (const tEntity& entity : drawing) picture.Add(entity);
  EXPECT_LT(picture.VertexCount(), 50U) << "what lies on top of each other is drawn once";
  ExpectFaithful(picture, drawing);
}

TEST_F(Thinning, KeepsAreasWholeWithTheirHoles) {
  Picture picture({2000, 10});
  const auto ring = [](double x, double y, double side, bool clockwise) {
    VertexChain square{{x, y}, {x, y + side}, {x + side, y + side}, {x + side, y}, {x, y}};
    if (!clockwise) std::reverse(square.begin(), square.end());
    return square;
  };
  // A classic reader's areas, ring by ring: each large one with a large hole, and many beyond telling apart.
  for (int i = 1; i <= 600; ++i) {
    const double x = i % 30 * 1000.0, y = i / 30 * 1000.0, side = i % 50 == 0 ? 900 : 3;
    tEntity outer = Element(kPolyline, ring(x, y, side, true), "A"), hole = outer;
    outer.Record = i;
    outer.Lost = kLostArea;
    picture.Add(outer, static_cast<std::uint32_t>(2 * i));
    hole = Element(kPolyline, ring(x + side / 4, y + side / 4, side / 2, false), "A");
    hole.Record = i;
    picture.Add(hole, static_cast<std::uint32_t>(2 * i + 1));
  }
  EXPECT_GT(picture.Cell(), 3);
  int whole = 0;
  for (std::size_t i = 1; i < picture.MarkCount(); ++i) {
    const bool pair = picture.Mark(i).kind == MarkKind::Ring && picture.Mark(i - 1).kind == MarkKind::Ring &&
                      picture.Mark(i).element == picture.Mark(i - 1).element;
    if (!pair || picture.Mark(i).element % 100 != 0) continue;
    ++whole;
    EXPECT_EQ(picture.Vertices(i).front(), picture.Vertices(i).back());
    EXPECT_EQ(picture.Vertices(i).size(), 5U);
  }
  EXPECT_EQ(whole, 12) << "the large ones";
}

TEST(Picture, WildValuesDoNotRuinTheView) {
  Picture plat;
  VertexChain places;
  for (int i = 0; i < 50; ++i) places.push_back({1.8e6 + i * 100, 4.6e5 + (i % 7) * 100});
  plat.Add(Element(kPolyline, places));
  plat.Add(Element(kLine, {{kNan, 1}, {1.8e6, 4.6e5}, {1, kInfinity}, {1.8e6, 4.605e5}}));
  EXPECT_EQ(plat.LeftOut(), 2);
  const Extents whole = plat.View();
  EXPECT_FALSE(plat.LeavesOutOfView());
  EXPECT_EQ(std::tuple(whole.minX, whole.maxX, whole.minY, whole.maxY), std::tuple(1.8e6, 1.8049e6, 4.6e5, 4.606e5));
  for (const double wild : {99999999.0, 1e20, 1e308}) {
    Picture picture = plat;
    picture.Add(Element(kLine, {{wild, wild}, {-wild, 1}}));
    EXPECT_EQ(picture.Bounds().maxX, wild);
    const Extents view = picture.View();
    EXPECT_EQ(std::tuple(view.minX, view.maxX, view.minY, view.maxY),
              std::tuple(whole.minX, whole.maxX, whole.minY, whole.maxY));
    EXPECT_TRUE(picture.LeavesOutOfView());
  }
  for (const PicturePoint far : {PicturePoint{1e9, 4.6e5}, {-1e9, 4.6e5}, {1.8e6, 1e9}, {1.8e6, -1e9}}) {
    Picture picture = plat;
    picture.Add(Element(kPoint, {{far.x, far.y}}));
    EXPECT_TRUE(picture.LeavesOutOfView()) << "to any side";
  }
}

TEST(PictureColours, OfElementsOfNamesAndOfThePalette) {
  Picture picture;
  tEntity red = Element(kPoint, {{1, 1}}, "A");
  picture.Add(red);
  EXPECT_EQ(picture.Layers()[0].colour, PaletteColour(0));
  red.RGB = 0x0000FF;
  picture.Add(red);
  red.RGB = 0xFF0000;
  picture.Add(red);
  EXPECT_EQ(picture.Layers()[0].colour, 0x0000FF) << "that of the first element that has one";
  picture.Add(Element(kPoint, {{1, 1}}, " Blue "));
  EXPECT_EQ(picture.Layers()[1].colour, 0xFF0000);
}

TEST(PictureStyles, AreThoseOfTheElements) {
  Picture picture;
  picture.Define({{"Fence", "", {3, -1}}, {"Plain", "", {}}});
  const std::vector<std::tuple<std::int32_t, std::string, std::size_t>> looks{
      {0x0000FF, "", 0}, {0x00FF00, "FENCE", 2}, {0, "CONTINUOUS", 0}, {0, "Center2", 4}, {0, "Plain", 0}};
  for (std::size_t i = 0; i < looks.size(); ++i) {
    tEntity line = Element(kLine, {{1, 1}, {2, 2}}, "A");
    std::tie(line.RGB, line.LineStyle) = std::tie(std::get<0>(looks[i]), std::get<1>(looks[i]));
    picture.Add(line);
    const std::size_t style = picture.Mark(i).style;
    EXPECT_EQ(picture.Styles().ColourOf(style), line.RGB == 0 ? 0x0000FF : line.RGB) << "its own, or that of its layer";
    EXPECT_EQ(DashesOnScreen(picture.Styles().LineTypeOf(style), 1).size(), std::get<2>(looks[i])) << line.LineStyle;
  }
  EXPECT_EQ(DashesOnScreen({"", "", {3, -1}}, 4), (std::vector<double>{12, 4}));
  EXPECT_EQ(DashesOnScreen({"", "", {3, -1}}, 1e-9), (std::vector<double>{3.75, 1.25})) << "not too short to be seen";
  EXPECT_EQ(DashesOnScreen({"", "", {-1, 3}}, 1e9), (std::vector<double>{18, 6}));
}

TEST(PicturePick, FindsTheNearestOrWhatSurrounds) {
  Picture picture;
  tEntity area =
      Element(kPolyline, {{0, 1}, {0, 100}, {100, 100}, {100, 0}, {0, 1}, {40, 40}, {60, 40}, {60, 60}, {40, 40}});
  area.Parts = {5};
  area.IsArea = true;
  picture.Add(area, 11);
  picture.Add(Element(kLine, {{10, 10}, {30, 10}}, "B"), 12);
  picture.Add(Element(kPoint, {{20, 12}}, "C"), 13);
  const auto at = [&](double x, double y) { return ElementAt(picture, {}, {x, y}, 5).value_or(0); };
  EXPECT_EQ(Row(at(28, 11), at(20, 12.5), at(80, 80), at(55, 50), at(300, 300)), "12 13 11 11 0")
      << "the hole is near its ring";
  EXPECT_EQ(ElementAt(picture, {}, {55, 46}, 0.5), std::nullopt) << "in the hole";
  EXPECT_EQ(ElementAt(picture, {false, false, true}, {20, 12.5}, 5), 12U);
}

TEST(PreviewUnit, IsThatOfTheWholeSystem) {
  EXPECT_EQ(UnitOfProjection(R"(PROJCS["x",GEOGCS["y",UNIT["Degree",0.017]],UNIT["Foot_US",0.3048]])"), "ft (US)");
  EXPECT_EQ(UnitOfProjection(R"(GEOGCS["y",UNIT["Degree",0.017]],VERTCS["z",UNIT["Meter",1]])"), "\u00B0");
  EXPECT_EQ(UnitOfProjection("UNIT[\"Link"), "Link");
  EXPECT_EQ(UnitOfProjection("x"), "");
}

TEST(PictureColours, AreLegibleOnAnyPaper) {
  for (const std::int32_t paper : {0xFFFFFF, 0x000000, 0x1E1E1E, 0xEFEFEF, 0x808080}) {
    for (const NamedColour& n : kColourNames) {
      const std::int32_t colour = n.red | n.green << 8 | n.blue << 16;
      EXPECT_GE(Contrast(Legible(colour, paper), paper), 3) << n.name << " on " << paper;
      EXPECT_TRUE(Contrast(colour, paper) < 3 || Legible(colour, paper) == colour) << n.name << " on " << paper;
    }
  }
  EXPECT_EQ(Legible(0xFFFFFF, 0xFFFFFF), 0x000000);
  EXPECT_EQ(Legible(0x000000, 0x1E1E1E), 0xFFFFFF);
  EXPECT_NEAR(Contrast(0x000000, 0xFFFFFF), 21, 1e-9);
}

TEST(PictureView, FitsZoomsAndPans) {
  Extents box;
  box.Add(1000, 2000, 0);
  box.Add(1100, 2400, 0);
  PictureView view = PictureView::Fit(box, 800, 600, 100);
  EXPECT_EQ(view.scale, 1);
  EXPECT_EQ(view.ToScreen({1050, 2400}).y, 100) << "north is up";
  const ScreenPoint pointer{123, 456};
  const PicturePoint under = view.ToDrawing(pointer);
  view.ZoomAbout(pointer, 8);
  view.Pan(10, -20);
  EXPECT_EQ(view.scale, 8);
  EXPECT_NEAR(view.ToScreen(under).x, 133, 1e-9);
  EXPECT_NEAR(view.ToScreen(under).y, 436, 1e-9);
  for (int i = 0; i < 1000; ++i) view.ZoomAbout(pointer, 10);
  EXPECT_LT(view.scale, 1e12) << "ends where numbers no longer tell places apart";
  EXPECT_EQ(PictureView::Fit(Extents(), 800, 600, 10).scale, 1);
  Extents place;
  place.Add(5, 5, 0);
  EXPECT_EQ(PictureView::Fit(place, 800, 600, 10).ToScreen({5, 5}).x, 400);
}

TEST(ChainTracer, DeliversThePiecesThatAreSeen) {
  PictureView view;
  view.width = view.height = 100;  // from -50 to 50 both ways
  const auto traced = [&](const std::vector<PicturePoint>& chain) {
    std::string text;
    ChainTracer(view, 0.5, 0).Trace(chain, [&](std::span<const ScreenPoint> piece) {
      for (const ScreenPoint at : piece) {
        text += std::to_string(std::lround(at.x)) + "," + std::to_string(std::lround(at.y)) + " ";
      }
      text += "| ";
    });
    return text;
  };
  EXPECT_EQ(traced({}), "");
  EXPECT_EQ(traced({{0, 0}}), "50,50 | ");
  EXPECT_EQ(traced({{0, 60}}), "");
  EXPECT_EQ(traced({{-20, 0}, {20, 0}, {20, 30}}), "30,50 70,50 70,20 | ");
  EXPECT_EQ(traced({{0, 0}, {0.1, 0}, {0.2, 0}, {30, 0}}), "50,50 80,50 | ");
  EXPECT_EQ(traced({{0, 0}, {0.1, 0}}), "50,50 50,50 | ") << "what is smaller than a pixel is seen all the same";
  EXPECT_EQ(traced({{-100, 0}, {100, 0}}), "0,50 100,50 | ");
  EXPECT_EQ(traced({{-100, 100}, {100, 100}, {100, -100}}), "");
  EXPECT_EQ(traced({{0, 0}, {0, 100}, {20, 100}, {20, 0}}), "50,50 50,0 | 70,0 70,50 | ");
  EXPECT_EQ(traced({{-1e300, 0}, {1e300, 0}}), "0,50 100,50 | ");
  EXPECT_EQ(traced({{20, 90}, {90, 20}}), "") << "past a corner";
}

TEST(PictureText, IsPlacedAndNotTooHigh) {
  EXPECT_EQ(Row(AnchorOf(33).across, AnchorOf(33).down, AnchorOf(50).across, AnchorOf(50).down), "1 1 2 2");
  EXPECT_EQ(Row(AnchorOf(16).across, AnchorOf(16).down, AnchorOf(7).across), "0 0 0");
  Extents box;
  box.Add(0, 0, 0);
  box.Add(4000, 10, 0);
  PictureText text;
  text.size = 20;
  EXPECT_EQ(TextHeight(text, box), 20);
  text.size = 1000;
  EXPECT_EQ(TextHeight(text, box), 1000) << "as drawn";
  text.ofTable = true;
  EXPECT_EQ(TextHeight(text, box), 100);
}

}  // namespace
}  // namespace tesselink
