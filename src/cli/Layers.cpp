// SPDX-License-Identifier: MIT
// layers: the layers of a drawing with their entity codes, as a list to be edited and handed to --layer-codes.
#include <algorithm>
#include <set>

#include "app/Csv.h"
#include "app/ProgramFolder.h"
#include "app/SettingsFiles.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Exit.h"
#include "cli/Json.h"
#include "cli/Reading.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"
#include "formats/cdf/CDFMap.h"

namespace tesselink {
namespace {

// The layers of elements that the reader did not report, each once.
class OtherLayers {
 public:
  explicit OtherLayers(const ConsoleInteraction& interaction) : interaction_(interaction) {}

  void Note(const std::string& layer) {
    if (seen_.empty()) seen_.insert(interaction_.ReportedLayers().begin(), interaction_.ReportedLayers().end());
    if (!seen_.empty() && layer == last_) return;
    last_ = layer;
    if (seen_.insert(layer).second) layers_.push_back(layer);
  }

  void Tell() const {
    constexpr std::size_t kMostNamed = 20;
    if (layers_.empty()) return;
    std::string names, cleaned;
    for (std::size_t i = 0; i < std::min(layers_.size(), kMostNamed); ++i) {
      names += (i == 0 ? "\"" : ", \"") + WithoutLineBreaks(AsUtf8(layers_[i]), cleaned) + "\"";
    }
    if (layers_.size() > kMostNamed) names += " and " + std::to_string(layers_.size() - kMostNamed) + " more";
    PrintWarning("elements have other layers, which are not matched: " + names);
  }

 private:
  const ConsoleInteraction& interaction_;
  std::set<std::string> seen_;
  std::string last_;
  std::vector<std::string> layers_;
};

}  // namespace

int Run(const LayersCommand& command) {
  Reading reading(command.input, command.reading, ShowsBar(command.reading));
  reading.interaction.ProposeCodes();
  OtherLayers others(reading.interaction);
  const int exitCode = ReadThrough(reading, [&](const tEntity& entity) { others.Note(entity.Layer); });
  if (exitCode != kExitDone && exitCode != kExitEndedEarly) return exitCode;

  SettingsFiles settings(RememberedFolder());
  Report report;
  CDFMap types({reading.interaction, settings, report, FilterOptionsOf(command.reading)});
  types.Create();
  PrintUnremembered(settings);
  std::string list = "layer,code,description\n";
  const std::vector<std::string>& layers = reading.interaction.ReportedLayers();
  for (std::size_t i = 0; i < layers.size(); ++i) {
    const std::string& code = reading.interaction.ProposedCodes()[i];
    const std::int16_t type = code.empty() ? std::int16_t{0} : types.FindCode(code);
    list += CsvField(AsUtf8(layers[i])) + "," + CsvField(AsUtf8(code)) + "," +
            CsvField(type == 0 ? std::string() : types.DescriptionUtf8(type)) + "\n";
  }
  Print(list);
  others.Tell();
  return exitCode;
}

}  // namespace tesselink
