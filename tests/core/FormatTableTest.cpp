// SPDX-License-Identifier: MIT
#include "core/run/FormatTable.h"

#include <gtest/gtest.h>

#include "formats/Formats.h"
#include "support/Support.h"

namespace tesselink {
namespace {

TEST(FormatTable, UnknownTextsFallBack) {
  EXPECT_EQ(AllFormats().Input("no such entry").className, "MolInFilter");
  EXPECT_EQ(AllFormats().Input("").className, "MolInFilter");
  EXPECT_EQ(AllFormats().Output("no such entry").className, "DXFOutFilter");
  EXPECT_EQ(AllFormats().Input("AutoCAD DXF File (*.dxf)").className, "DXFInFilter");
  EXPECT_EQ(AllFormats().Output("T/R Digitizer Format (*.grd)").Extension(), ".grd");
}

}  // namespace
}  // namespace tesselink
