// SPDX-License-Identifier: MIT
#include "app/DialectGain.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "app/DialectText.h"

namespace tesselink {
namespace {

// What a classic run warns of and a standard one has not lost, for the outputs with these keys; empty: for all.
struct Gain {
  WarningKind kind;
  std::string_view outputs = {};
};

constexpr std::string_view kFeatures = "shp geojson geojsonl geojsons gpkg";
constexpr std::string_view kShapefile = "shp";

constexpr std::array kGains{
    Gain{WarningKind::ClassicDialect},
    Gain{WarningKind::ShiftedRows},
    Gain{WarningKind::OutOfStep},
    Gain{WarningKind::PointFile},
    Gain{WarningKind::StrayVertices},
    Gain{WarningKind::LastLine},
    Gain{WarningKind::Overwritten},
    Gain{WarningKind::BlocksNotDrawn},
    Gain{WarningKind::RoundedNumbers},
    Gain{WarningKind::OriginVertices},
    Gain{WarningKind::AttributesNotCarried, "shp dxf"},
    Gain{WarningKind::ProjectionNotCarried, kShapefile},
    Gain{WarningKind::PartsSplit, kFeatures},
    Gain{WarningKind::Heights, kShapefile},
    Gain{WarningKind::LineTypes, kShapefile},
    Gain{WarningKind::Colours, kShapefile},
    Gain{WarningKind::TrueColours, kShapefile},
    Gain{WarningKind::Justifications, kShapefile},
    Gain{WarningKind::Bars, kShapefile},
    Gain{WarningKind::Baselines, "dxf"},
    Gain{WarningKind::HiddenLayers, "dxf"},
    Gain{WarningKind::ClosedMarks, "asc"},
    Gain{WarningKind::GeographicCircles, "asc"},
    Gain{WarningKind::CutNumbers, "cdf"},
    Gain{WarningKind::ClosedUnmarked, "cdf"},
};

bool Contains(std::string_view keys, std::string_view key) {
  for (std::size_t begin = 0; begin < keys.size();) {
    const std::size_t end = std::min(keys.find(' ', begin), keys.size());
    if (keys.substr(begin, end - begin) == key) return true;
    begin = end + 1;
  }
  return false;
}

}  // namespace

bool StandardKeepsMore(const RunSummary& summary, const OutputFormat& output) {
  if (summary.outcome != RunOutcome::Done && summary.outcome != RunOutcome::Limited) return false;
  const auto& unread = summary.report.UndeliveredTypes();
  if (std::any_of(unread.begin(), unread.end(), [](const auto& type) { return IsReadInStandardAlone(type.first); })) {
    return true;
  }
  if (output.key == "dxf" && summary.skipped.Of("arc") > 0) return true;
  return std::any_of(kGains.begin(), kGains.end(), [&](const Gain& gain) {
    return summary.report.Of(gain.kind) != nullptr && (gain.outputs.empty() || Contains(gain.outputs, output.key));
  });
}

}  // namespace tesselink
