// layers: the layers of a drawing with their entity codes, as a list to be edited and handed to --layer-codes.
#include <set>

#include "app/QtSettings.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Csv.h"
#include "cli/Exit.h"
#include "cli/Json.h"
#include "cli/Reading.h"
#include "core/io/Utf8.h"
#include "formats/cdf/CDFMap.h"

namespace tesselink {
namespace {

using LayerAndCode = std::pair<std::string, std::string>;

// The layers that the reader reported with what is proposed for them, then those that elements have besides, with the
// elements' own codes.
std::vector<LayerAndCode> Rows(const Reading& reading, const std::vector<LayerAndCode>& ofElements) {
  const std::vector<std::string>& reported = reading.interaction.ReportedLayers();
  const std::vector<std::string>& codes = reading.interaction.ProposedCodes();
  std::vector<LayerAndCode> rows;
  for (std::size_t i = 0; i < reported.size(); ++i) rows.emplace_back(reported[i], codes[i]);
  const std::set<std::string> known(reported.begin(), reported.end());
  for (const LayerAndCode& row : ofElements) {
    if (!known.contains(row.first)) rows.push_back(row);
  }
  return rows;
}

}  // namespace

int Run(const LayersCommand& command) {
  Reading reading(command.input, command.reading);
  reading.interaction.ProposeCodes();
  std::vector<LayerAndCode> ofElements;
  std::set<LayerAndCode> seen;
  const int exitCode = ReadThrough(reading, [&](const tEntity& entity) {
    if (!ofElements.empty() && ofElements.back().first == entity.Layer && ofElements.back().second == entity.CDFCode) {
      return;
    }
    if (seen.emplace(entity.Layer, entity.CDFCode).second) ofElements.emplace_back(entity.Layer, entity.CDFCode);
  });
  if (exitCode != kExitDone && exitCode != kExitEndedEarly) return exitCode;

  QtSettings settings;
  Report report;
  CDFMap types({reading.interaction, settings, report, FilterOptionsOf(command.reading)});
  types.Create();
  std::string list = "layer,code,description\n";
  for (const auto& [layer, code] : Rows(reading, ofElements)) {
    const std::int16_t type = code.empty() ? std::int16_t{0} : types.FindCode(code);
    list += CsvField(AsUtf8(layer)) + "," + CsvField(AsUtf8(code)) + "," +
            CsvField(type == 0 ? std::string() : types.DescriptionUtf8(type)) + "\n";
  }
  Print(list);
  return exitCode;
}

}  // namespace tesselink
