// SPDX-License-Identifier: MIT
// The conversion run: validate, pump every element from a reader to a writer, finish. Window and command line drive
// this very loop through Interaction.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "core/element/Extents.h"
#include "core/run/Coordinates.h"
#include "core/run/FieldSelection.h"
#include "core/run/FormatTable.h"
#include "core/run/Interaction.h"
#include "core/run/Report.h"
#include "core/run/Settings.h"

namespace tesselink {

/// What the person chose.
struct ConversionRequest {
  std::vector<std::string> inputs;  ///< whole paths: one, or several for a format that reads several files in a run
  std::string OutFile;
  std::string InFormat;   ///< a drop-down text
  std::string OutFormat;  ///< a drop-down text
  /// False: a shapefile's attribute table is left alone and nothing is asked about it.
  bool useAttributes = true;
  FilterOptions options = {};
  std::vector<std::string> alsoRead = {};  ///< what the face itself reads for this run, as a list of codes
  bool overwrite = false;  ///< an old output may be replaced; else the run refuses what appears meanwhile
  bool sync = false;       ///< the run ends when the output is on the disk
  bool leftovers = true;   ///< killed runs to this output may have left something, which goes
  /// How many bytes the run may write; 0: the greater of 1 GiB and 200 times what it reads.
  std::int64_t maxOutput = 0;
};

enum class RunOutcome {
  Done,
  Refused,    ///< a validation failed; nothing was created
  Failed,     ///< an error ended the run
  Cancelled,  ///< the person ended the run
  Limited,    ///< the output has grown to its limit; it holds what was converted before
};

/// What came of a run.
struct RunSummary {
  RunOutcome outcome = RunOutcome::Done;
  std::string error;    ///< why it was refused or failed; empty where a reader has told the person itself
  std::string subject;  ///< the file for which it was refused; empty where none was named
  std::string reason;   ///< why that file was refused, with its name, as in "plat.asc: does not exist"; may be empty
  KindCounts read, written, converted, skipped;
  KindCounts leftOut;                   ///< for their layer, as the person wished
  KindCounts clipped;                   ///< left out because they do not touch the clip window
  std::int64_t areasBuilt = 0;          ///< areas made of lines, which were not read
  KindCounts intoAreas;                 ///< what the output has nothing else of than areas and their labels
  std::string skippedHint;              ///< how to write what was skipped too; empty where there is no such way
  std::vector<std::string> layers;      ///< of the elements read, in order of first appearance
  std::vector<LayerState> layerStates;  ///< of those that an input does not simply show
  Extents extents;                      ///< of the elements read, in the system of their input
  SystemsUsed systems;
  std::vector<std::string> outputs;  ///< the files that exist now
  bool oldKept = false;              ///< the run failed: an old output stays, `outputs` lie beside it
  Report report;
};

/// Fills the layer, as its reader delivers texts, and the colours of an element that has a code but no layer.
using LayerFiller = std::function<void(tEntity&, const FilterContext&, const TextEncoding&)>;

class ConversionRun {
 public:
  ConversionRun(const FormatTable& formats, Interaction& interaction, Settings& settings, LayerFiller fillLayer = {});

  /// Runs one conversion from start to end. Errors are shown as messages and told in the summary, never thrown.
  RunSummary Run(const ConversionRequest& request);

 private:
  struct State;

  bool Validate(State& state);
  std::string OutputThatIsRead(State& state) const;
  void CreateFilters(State& state);
  void ConvertFiles(State& state);
  void OpenInput(State& state, bool first);
  void MatchLayers(State& state);
  void TellWhatIsNotCarried(State& state);
  WriteResult HandOverReduced(State& state, tEntity& entity);
  void PumpElements(State& state);
  void TellUnfoundLayers(State& state);
  void EndAtLimit(State& state, const std::string& reason);
  bool IsWanted(State& state);
  void ConvertElement(State& state);
  void WriteElement(State& state, tEntity& entity, bool isFilled);
  void CreateAreas(State& state, AreaPlace place);
  void WriteAreas(State& state);
  bool HasEnded(State& state);
  void EndAtSize(State& state);
  void RefuseToReplaceByNothing(const State& state) const;
  void Finish(State& state);
  void Deliver(State& state);
  void Refuse(State& state, const std::string& text, const std::string& file, const std::string& reason = "");
  void Fail(State& state, const std::string& text);

  const FormatTable& formats_;
  Interaction& interaction_;
  Settings& settings_;
  LayerFiller fillLayer_;
};

/// The first 10 characters of a number's text, as the progress window shows an extent.
std::string ExtentLabel(double value);

}  // namespace tesselink
