// SPDX-License-Identifier: MIT
#include "formats/Formats.h"

#include "core/run/EncodingOption.h"
#include "formats/cdf/CDFInFilter.h"
#include "formats/cdf/CDFOutFilter.h"
#include "formats/dxf/DXFInFilter.h"
#include "formats/dxf/DXFOutFilter.h"
#include "formats/geojson/GeoJSONOutFilter.h"
#include "formats/gpkg/GPKGOutFilter.h"
#include "formats/grid/TRDigOut.h"
#include "formats/landmark/AscInFilter.h"
#include "formats/landmark/AscOutFilter.h"
#include "formats/landmark/MolInFilter.h"
#include "formats/shape/ESRIInFilt.h"
#include "formats/shape/ESRIOutFilt.h"
#include "formats/shape/ShapesByKind.h"

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

std::vector<InputFormat> Inputs() {
  return {
      {{.entry = "ESRI Shapefile (*.shp)",
        .key = "shp",
        .className = "ESRIInFilt",
        .hasAttributes = true,
        .companions = ESRIInFilt::Companions(),
        .options = {EncodingOption()}},
       kReader<ESRIInFilt>},
      {{.entry = "AutoCAD DXF File (*.dxf)",
        .key = "dxf",
        .className = "DXFInFilter",
        .hasRecords = true,
        .streams = true,
        .options = DXFInFilter::Options()},
       kReader<DXFInFilter>},
      {{.entry = "WinPICS Map Overlay (*.mol)", .key = "mol", .className = "MolInFilter", .fallBack = true},
       kReader<MolInFilter>},
      {{.entry = "Landmark ASCII File (*.asc)",
        .key = "asc",
        .className = "AscInFilter",
        .asksLineEnds = true,
        .streams = true},
       kReader<AscInFilter>},
      {{.entry = "Geographix CDF File (*.cdf)",
        .key = "cdf",
        .className = "CDFInFilter",
        .asksLineEnds = true,
        .streams = true,
        .options = CDFInFilter::Options()},
       kReader<CDFInFilter>},
      {{.entry = "Multiple Shapefile Input (*.shp)",
        .key = "multishp",
        .className = "ESRIInFilt",
        .severalFiles = true,
        .hasAttributes = true,
        .companions = ESRIInFilt::Companions(),
        .options = {EncodingOption()}},
       kReader<ESRIInFilt>},
  };
}

std::vector<OutputFormat> Outputs() {
  return {
      {{.entry = "ESRI Shapefile (*.shp)",
        .key = "shp",
        .className = "ESRIOutFilt",
        .companions = ESRIOutFilt::Companions(),
        .options = ESRIOutFilt::Options()},
       ShapesByKind::Writer,
       ShapesByKind::Parts,
       ShapesByKind::PlaceOfAreas,
       ShapesByKind::LeftOut},
      {{.entry = "AutoCAD DXF File (*.dxf)",
        .key = "dxf",
        .className = "DXFOutFilter",
        .fallBack = true,
        .streams = true,
        .options = DXFOutFilter::Options()},
       DXFOutFilter::Writer,
       {},
       DXFOutFilter::PlaceOfAreas},
      {{.entry = "Landmark ASCII File (*.asc)",
        .key = "asc",
        .className = "AscOutFilter",
        .streams = true,
        .options = AscOutFilter::Options()},
       kWriter<AscOutFilter>,
       {},
       {},
       AscOutFilter::LeftOut},
      {{.entry = "Geographix CDF File (*.cdf)",
        .key = "cdf",
        .className = "CDFOutFilter",
        .streams = true,
        .companions = CDFOutFilter::Companions(),
        .options = CDFOutFilter::Options()},
       kWriter<CDFOutFilter>,
       {},
       {},
       CDFOutFilter::LeftOut},
      {{.entry = "T/R Digitizer Format (*.grd)",
        .key = "grd",
        .className = "TRDigOut",
        .ignoresLayers = true,
        .options = TRDigOut::Options()},
       kWriter<TRDigOut>,
       {},
       {},
       TRDigOut::LeftOut},
      {{.entry = "GeoJSON (*.geojson)",
        .key = "geojson",
        .className = "GeoJSONOutFilter",
        .inDropDown = false,
        .streams = true},
       GeoJSONOutFilter::Writer<GeoJSONLayout::Collection>,
       {},
       FeatureOutFilter::PlaceOfAreas},
      {{.entry = "GeoJSON Lines (*.geojsonl)",
        .key = "geojsonl",
        .className = "GeoJSONOutFilter",
        .inDropDown = false,
        .streams = true},
       GeoJSONOutFilter::Writer<GeoJSONLayout::Lines>,
       {},
       FeatureOutFilter::PlaceOfAreas},
      {{.entry = "GeoJSON Text Sequence (*.geojsons)",
        .key = "geojsons",
        .className = "GeoJSONOutFilter",
        .inDropDown = false,
        .streams = true},
       GeoJSONOutFilter::Writer<GeoJSONLayout::Sequence>,
       {},
       FeatureOutFilter::PlaceOfAreas},
      {{.entry = "GeoPackage (*.gpkg)", .key = "gpkg", .className = "GPKGOutFilter", .inDropDown = false},
       kWriter<GPKGOutFilter>,
       {},
       FeatureOutFilter::PlaceOfAreas},
  };
}

}  // namespace

const FormatTable& AllFormats() {
  static const FormatTable kTable(Inputs(), Outputs());
  return kTable;
}

}  // namespace tesselink
