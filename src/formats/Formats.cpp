#include "formats/Formats.h"

#include "formats/cdf/CDFInFilter.h"
#include "formats/cdf/CDFOutFilter.h"
#include "formats/dxf/DXFInFilter.h"
#include "formats/dxf/DXFOutFilter.h"
#include "formats/grid/TRDigOut.h"
#include "formats/landmark/AscInFilter.h"
#include "formats/landmark/AscOutFilter.h"
#include "formats/landmark/MolInFilter.h"
#include "formats/shape/ESRIInFilt.h"
#include "formats/shape/ESRIOutFilt.h"

namespace tesselink {
namespace {

template <typename Filter, typename Base>
std::unique_ptr<Base> Make(const FilterContext& context) {
  return std::make_unique<Filter>(context);
}

template <typename Filter>
constexpr auto kReader = &Make<Filter, InputFilter>;
template <typename Filter>
constexpr auto kWriter = &Make<Filter, OutputFilter>;

}  // namespace

const FormatTable& AllFormats() {
  static const FormatTable kTable(
      {
          {{"ESRI Shapefile (*.shp)", "shp", "ESRIInFilt"}, false, true, {"SHX", "DBF"}, kReader<ESRIInFilt>},
          {{"AutoCAD DXF File (*.dxf)", "dxf", "DXFInFilter"}, false, false, {}, kReader<DXFInFilter>},
          {{"WinPICS Map Overlay (*.mol)", "mol", "MolInFilter", true}, false, false, {}, kReader<MolInFilter>},
          {{"Landmark ASCII File (*.asc)", "asc", "AscInFilter"}, false, false, {}, kReader<AscInFilter>},
          {{"Geographix CDF File (*.cdf)", "cdf", "CDFInFilter"}, false, false, {}, kReader<CDFInFilter>},
          {{"Multiple Shapefile Input (*.shp)", "multishp", "ESRIInFilt"},
           true,
           true,
           {"SHX", "DBF"},
           kReader<ESRIInFilt>},
      },
      {
          {{"ESRI Shapefile (*.shp)", "shp", "ESRIOutFilt"},
           false,
           {"SHX", "DBF"},
           kWriter<ESRIOutFilt>,
           {"CPG", "PRJ"}},
          {{"AutoCAD DXF File (*.dxf)", "dxf", "DXFOutFilter", true}, false, {}, kWriter<DXFOutFilter>},
          {{"Landmark ASCII File (*.asc)", "asc", "AscOutFilter"}, false, {}, kWriter<AscOutFilter>},
          {{"Geographix CDF File (*.cdf)", "cdf", "CDFOutFilter"}, false, {"PTS"}, kWriter<CDFOutFilter>},
          {{"T/R Digitizer Format (*.grd)", "grd", "TRDigOut"}, true, {}, kWriter<TRDigOut>},
      });
  return kTable;
}

}  // namespace tesselink
