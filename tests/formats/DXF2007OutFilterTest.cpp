// SPDX-License-Identifier: MIT
// Drawings of release 2007: what comes back, and what else readers of that release go by.
#include "formats/dxf/DXF2007OutFilter.h"

#include <gtest/gtest.h>

#include <set>

#include "core/run/Losses.h"
#include "formats/dxf/DXFInFilter.h"
#include "support/Support.h"

namespace tesselink {
namespace {

class DXF2007OutFilterTest : public testing::Test {
 protected:
  Rig rig;
  DXF2007OutFilter writer;
  const std::string path = rig.folder.Path("out.dxf");

  DXF2007OutFilterTest() : writer(Context()) { writer.filename(path); }
  const FilterContext& Context() {
    rig.context.options = {.programFolder = TESSELINK_DATA_FOLDER, .dialect = Dialect::Standard};
    return rig.context;
  }

  void Write(tEntity entity) { EXPECT_NE(writer.WriteEntity(entity), WriteResult::Skipped); }
  std::vector<tEntity> ReadBack() {
    writer.Release();
    DXFInFilter reader(rig.context);
    reader.filename(path);
    return rig.ReadAll(reader);
  }
  // Codes and values, without the blanks before the codes.
  std::vector<std::pair<int, std::string>> Groups() {
    writer.Release();
    std::vector<std::pair<int, std::string>> groups;
    std::istringstream file(Folder::Get(path));
    for (std::string code, value; std::getline(file, code) && std::getline(file, value);) {
      groups.emplace_back(std::stoi(code), value.substr(0, value.size() - 1));
    }
    return groups;
  }
  // The entities as "0 HATCH|5 100|", from the first of a type on.
  std::string From(const std::string& type) {
    std::string text;
    for (const auto& [code, value] : Groups()) {
      if (text.empty() && (code != 0 || value != type)) continue;
      if (value == "ENDSEC") break;
      text += std::to_string(code) + " " + value + "|";
    }
    return text;
  }
  static tEntity Area(const std::vector<VertexChain>& rings) {
    tEntity area = Element(kPolyline, {}, "Lease");
    tEntity::Index at = 0;
    for (const VertexChain& ring : rings) {
      if (at > 0) area.Parts.push_back(at);
      for (const Vertex& v : ring) {
        area.x(at, v.x);
        area.Y(at, v.y);
        area.Height(at++, v.z);
      }
    }
    area.IsArea = true;
    return area;
  }
};

TEST_F(DXF2007OutFilterTest, EveryHandleIsOfOneObjectAndEveryOwnerIsThere) {
  for (const char* layer : {"A", "B"}) {
    Write(Element(kPolyline, {{0, 0, 1}, {1, 0, 2}, {1, 1, 3}}, layer));
    Write(Area({{{0, 0, 0}, {0, 9, 0}, {9, 9, 0}, {0, 0, 0}}, {{2, 5, 0}, {3, 5, 0}, {3, 6, 0}, {2, 5, 0}}}));
    Write(Element(kText, {{1, 2, 3}}, layer));
  }
  std::set<std::uint64_t> handles;
  std::uint64_t seed = 0;
  std::vector<std::uint64_t> named;
  std::string variable;
  for (const auto& [code, value] : Groups()) {
    if (code == 9) variable = value;
    const auto number = [&given = value] { return std::stoull(given, nullptr, 16); };
    if (code == 5 && seed == 0 && variable == "$HANDSEED") {
      seed = number();
    } else if (code == 5 || code == 105) {
      EXPECT_TRUE(handles.insert(number()).second) << value;
    } else if (code == 330 || code == 340 || code == 350 || code == 390) {
      named.push_back(number());
    }
  }
  EXPECT_EQ(seed, *handles.rbegin() + 1);
  handles.insert(0);
  for (const std::uint64_t handle : named) EXPECT_TRUE(handles.count(handle) == 1) << handle;
  EXPECT_GT(named.size(), 40u);
}

TEST_F(DXF2007OutFilterTest, AnAreaIsAHatchAndItsBoundaries) {
  tEntity area = Area({{{0, 0, 5}, {0, 9, 5}, {9, 9, 5}, {0, 0, 5}}, {{2, 5, 5}, {3, 5, 5}, {2, 5, 5}}, {{7, 7, 5}}});
  area.Bulges = {0, 0, 0, 0, 1, 1};
  area.Colour = 3;
  Write(area);
  const std::string head = "|330 1F|100 AcDbEntity|8 Lease|6 CONTINUOUS|62 3|";
  EXPECT_EQ(From("HATCH"), "0 HATCH|5 100" + head +
                               "440 33554508|100 AcDbHatch|10 0|20 0|30 5|210 0|220 0|230 1|2 SOLID|70 1|71 1|91 2|"
                               "92 7|72 0|73 1|93 3|10 0|20 0|10 0|20 9|10 9|20 9|97 1|330 101|"
                               "92 7|72 1|73 1|93 2|10 2|20 5|42 1|10 3|20 5|42 1|97 1|330 102|75 0|76 1|98 0|"
                               "0 LWPOLYLINE|5 101|102 {ACAD_REACTORS|330 100|102 }" +
                               head +
                               "100 AcDbPolyline|90 3|70 1|38 5|10 0|20 0|10 0|20 9|10 9|20 9|"
                               "1001 TESSELINK|1005 100|0 LWPOLYLINE|5 102|102 {ACAD_REACTORS|330 100|102 }" +
                               head +
                               "100 AcDbPolyline|90 2|70 1|38 5|10 2|20 5|42 1|10 3|20 5|42 1|"
                               "1001 TESSELINK|1005 100|0 POINT|5 103" +
                               head + "100 AcDbPoint|10 7|20 7|30 5|");
  writer.filename(path);
  Write(Area({{{0, 0, 0}, {0, 9, 0}, {0, 0, 0}}}));
  EXPECT_TRUE(From("LWPOLYLINE").starts_with("0 LWPOLYLINE|5 100|330 1F|")) << "nothing to fill";
  EXPECT_NE(rig.WarningOf("areas"), nullptr);
  const Reduction reduction(writer.Holds(), writer.losses(), CurveTolerance::Standard());
  EXPECT_TRUE(reduction.Fits(area));
  area.Height(1, 6);
  EXPECT_FALSE(reduction.Fits(area)) << "a HATCH is level";
  area.IsArea = false;
  area.Height(1, 5);
  EXPECT_FALSE(reduction.Fits(area)) << "a chain has one part";
}

TEST_F(DXF2007OutFilterTest, ElementsComeBackAsTheyWere) {
  std::vector<tEntity> elements;
  const auto add = [&](std::int16_t kind, const VertexChain& vertices) -> tEntity& {
    tEntity& entity = elements.emplace_back(Element(kind, vertices, "\xC3\x96l \xD0\x96 (\xE6\x96\x87) + 5%"));
    entity.LineStyle = "CONTINUOUS";
    entity.CDFCode = "0900000";
    entity.Colour = 1;
    entity.RGB = 0x0000FF;
    return entity;
  };
  tEntity& bulging = add(kPolyline, {{0, 0, 4}, {10, 0, 4}, {10, 10, 4}, {0, 0, 4}});
  bulging.Closed = true;
  bulging.Bulges = {0, 1};
  bulging.Colour = 149;  // the nearest number
  bulging.RGB = 0x302010;
  add(kPolyline, {{0, 0, 1}, {5, 5, 2}, {9, 9, 3}, {0, 0, 1}}).Closed = true;
  tEntity& text = add(kText, {{1, 2, 3}});
  text.Text = "\xD0\x96\xF0\x9F\x98\x80 %%d ^J \\U+0041 \xC3\xA9";
  text.TextSize = 2.5;
  text.TextAng = 30;
  text.TextJust = 0x32;
  text.Lost = kLostHiding;
  add(kLine, {{0, 0, 1.5}, {1, 1, 1}});
  add(kPoint, {{0, 1, 0}});
  add(kCircle, {{3, 4, 0}}).Curve({2.0000000001, 0, 0});
  add(kArc, {{3, 4, 0}}).Curve({0.1, 350, 370});
  for (const tEntity& element : elements) Write(element);
  const auto back = ReadBack();
  ASSERT_EQ(back.size(), elements.size());
  const auto row = [](const tEntity& e) {
    const CurveNumbers curve = IsCurve(e.bType) ? e.Curve() : CurveNumbers{};
    std::string bulges;
    for (const double bulge : e.Bulges) bulges += NumberText(bulge) + " ";
    return Row(e.bType, e.Layer, e.Colour, e.RGB, e.LineStyle, e.Closed, XY(e), e.Height(0), e.Height(e.PointCount()),
               e.Text, e.TextSize, e.TextAng, e.TextJust, curve.radius, curve.start, curve.end, bulges,
               std::int64_t{e.Lost});
  };
  for (std::size_t i = 0; i < back.size(); ++i) EXPECT_EQ(row(back[i]), row(elements[i]));
  EXPECT_EQ(rig.report.Warnings().size(), 0u);
  EXPECT_TRUE(Holds(Folder::Get(path), "$DWGCODEPAGE\r\n  3\r\nANSI_65001\r\n"));
}

TEST_F(DXF2007OutFilterTest, ABoundaryIsReadOnlyWhereItsHatchIsGone) {
  Write(Area({{{0, 0, 5}, {0, 9, 5}, {9, 9, 5}, {0, 0, 5}}, {{1, 7, 5}, {1, 6, 5}, {2, 6, 5}, {1, 7, 5}}}));
  const auto back = ReadBack();
  ASSERT_EQ(back.size(), 1u);
  EXPECT_TRUE(back[0].IsArea && back[0].PartCount() == 2);
  std::string drawing = Folder::Get(path);
  drawing.replace(drawing.find("\r\nHATCH"), 7, "\r\nOTHER");
  rig.folder.Put("out.dxf", drawing);
  EXPECT_EQ(ReadBack().size(), 2u);
}

TEST_F(DXF2007OutFilterTest, LayersHaveTheirTrueColoursAndNamesTheirSigns) {
  tEntity point = Element(kPoint, {{1, 2, 3}}, "a/b");
  point.ColourFrom = StyleSource::Layer;
  point.Colour = 169;
  point.RGB = 0x302010;
  Write(point);
  point.RGB = 0x302011;  // as by layer in another input
  Write(point);
  for (const char* name : {"a,b", "A_B", " c\t", "(d) & e.f", "\xC3\x96", "\xC3\xB6"})
    Write(Element(kPoint, {{1, 2, 3}}, name));
  const auto back = ReadBack();
  const auto layers = [&] {
    std::string names;
    for (const tEntity& element : back) names += element.Layer + "|";
    return names;
  };
  EXPECT_EQ(layers(), "a_b|a_b|a_b_2|A_B_3|_c_|(d) & e.f|\xC3\x96|\xC3\xB6_2|");
  EXPECT_EQ(back[0].RGB, 0x302010);
  EXPECT_EQ(back[0].ColourFrom, StyleSource::Layer);
  EXPECT_EQ(back[1].RGB, 0x302011);
  EXPECT_EQ(back[1].ColourFrom, StyleSource::Own);
  EXPECT_EQ(rig.WarningOf("names")->count, 5);
}

}  // namespace
}  // namespace tesselink
