#include "core/run/FormatTable.h"

#include <gtest/gtest.h>

#include "formats/Formats.h"
#include "support/Support.h"

namespace tesselink {
namespace {

TEST(FormatTable, TheRowsInTheirOrder) {
  std::vector<std::string> inputs, outputs;
  for (const InputFormat& format : AllFormats().Inputs()) inputs.push_back(format.entry + " " + format.className);
  for (const OutputFormat& format : AllFormats().Outputs()) outputs.push_back(format.entry + " " + format.className);
  EXPECT_EQ(inputs, (std::vector<std::string>{
                        "ESRI Shapefile (*.shp) ESRIInFilt", "AutoCAD DXF File (*.dxf) DXFInFilter",
                        "WinPICS Map Overlay (*.mol) MolInFilter", "Landmark ASCII File (*.asc) AscInFilter",
                        "Geographix CDF File (*.cdf) CDFInFilter", "Multiple Shapefile Input (*.shp) ESRIInFilt"}));
  EXPECT_EQ(outputs, (std::vector<std::string>{
                         "ESRI Shapefile (*.shp) ESRIOutFilt", "AutoCAD DXF File (*.dxf) DXFOutFilter",
                         "Landmark ASCII File (*.asc) AscOutFilter", "Geographix CDF File (*.cdf) CDFOutFilter",
                         "T/R Digitizer Format (*.grd) TRDigOut"}));
}

TEST(FormatTable, UnknownTextsFallBack) {
  EXPECT_EQ(AllFormats().Input("no such entry").className, "MolInFilter");
  EXPECT_EQ(AllFormats().Input("").className, "MolInFilter");
  EXPECT_EQ(AllFormats().Output("no such entry").className, "DXFOutFilter");
  EXPECT_EQ(AllFormats().Input("AutoCAD DXF File (*.dxf)").className, "DXFInFilter");
  EXPECT_EQ(AllFormats().Output("T/R Digitizer Format (*.grd)").Extension(), ".grd");
}

TEST(FormatTable, EveryRowMakesAFilter) {
  Rig rig;
  for (const InputFormat& format : AllFormats().Inputs()) EXPECT_NE(format.create(rig.context), nullptr);
  for (const OutputFormat& format : AllFormats().Outputs()) EXPECT_NE(format.create(rig.context), nullptr);
}

}  // namespace
}  // namespace tesselink
