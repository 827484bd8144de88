// SPDX-License-Identifier: MIT
// The options of a conversion from one format into another, as values by their names: which there are, what may be
// said, and what that means to a run.
#pragma once

#include <string>
#include <vector>

#include "app/StandingSettings.h"
#include "core/run/ConversionRun.h"
#include "core/run/FormatTable.h"

namespace tesselink {

/// What an option is about.
enum class OptionGroup { Input, Labels, Layers, Systems, Areas, Output };

/// What a value names, where a face can help to find it.
enum class OptionValue { Anything, Field, FieldOrNumber, Template, LayerList, System, Box };

struct ConversionOption {
  FormatOption row;  ///< of a format, or one that belongs to none
  OptionGroup group = OptionGroup::Input;
  OptionValue names = OptionValue::Anything;
  bool ofOneDrawing = false;  ///< says nothing about another one
};

/// What decides besides the formats what can be said.
struct OptionSituation {
  const OutputFormat& output;
  Dialect dialect = Dialect::Classic;
  const OptionValues& values;
};

/// Why an option counts for nothing as things are.
enum class OptionRest {
  Counts,
  NeedsStandard,    ///< the standard dialect
  NeedsAreas,       ///< an output that holds areas
  NeedsBuildAreas,  ///< areas that are built
  NeedsText,        ///< a field of texts
};

/// The options of the two rows, then those that every format has as far as they can say something here, by group.
std::vector<ConversionOption> OptionsOf(const InputFormat& input, const OutputFormat& output);
OptionRest RestOf(const ConversionOption& option, const OptionSituation& situation);
/// Why a value is no good; empty where it is. Looks for files that it names.
std::string WrongWith(const ConversionOption& option, const std::string& value, Dialect dialect);
/// The values of those options that count.
OptionValues ValuesThatCount(const std::vector<ConversionOption>& options, const OptionSituation& situation);
/// Puts values that are good and count into a request.
void ApplyOptions(const OptionValues& values, ConversionRequest& request);

/// The command line that does what the request and the values say, quoted for a shell, with whole paths. What of the
/// settings would say something else is taken back in front of it.
std::string CommandText(const FormatTable& formats, const ConversionRequest& request, const OptionValues& values,
                        const std::vector<Setting>& settings = {});

}  // namespace tesselink
