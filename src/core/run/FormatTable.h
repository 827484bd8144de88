// SPDX-License-Identifier: MIT
// The drop-down rows: which text stands for which reader or writer, and what an unknown text falls back to.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/run/Filters.h"
#include "core/run/WarningKind.h"

namespace tesselink {

/// The pattern in the last parentheses of a drop-down's text, as in "*.shp"; empty when there is none.
std::string PatternOf(std::string_view entry);

/// A file beside another one, from which it differs by its extension.
struct Companion {
  std::string extension;      ///< without the period and in capitals, as in "SHX"
  bool standardOnly = false;  ///< of outputs: written in the standard dialect alone
  /// Of outputs: told where one from before stays, since the new output has none.
  std::optional<WarningKind> whenOlder = std::nullopt;
  bool namesSystem = false;  ///< of outputs: written wherever a person has named a coordinate system
};

/// What becomes of lines and the areas that are made of them in an output.
enum class AreaPlace {
  None,    ///< it holds no areas
  Beside,  ///< areas stand beside their lines
  Alone,   ///< it holds nothing but areas
};

/// What rows of either side hold. All that faces, tests and help texts know of a format stands here.
struct Format {
  std::string entry = {};  ///< the drop-down's text, ending in the pattern in parentheses: "AutoCAD DXF File (*.dxf)"
  std::string key = {};    ///< the command line's short name
  std::string className = {};              ///< of the filter
  bool inDropDown = true;                  ///< otherwise the command line alone has it
  bool fallBack = false;                   ///< taken for a text that is no entry of this side
  bool severalFiles = false;               ///< of inputs: reads a list of files in one run
  bool hasAttributes = false;              ///< of inputs: has an attribute table that may give layer and text
  bool ignoresLayers = false;              ///< of outputs: the reader's `Layered` is set false
  bool makesNoFile = false;                ///< of outputs: its name is none of a file
  bool hasRecords = false;                 ///< of inputs: elements may bring attributes of their own
  bool asksLineEnds = false;               ///< of inputs: asks what to do with bare line feeds
  bool streams = false;                    ///< goes through pipes: one file, from its beginning to its end
  std::vector<Companion> companions = {};  ///< read beside an input, written beside an output
  std::vector<FormatOption> options = {};

  /// The pattern between the entry's parentheses, as in "*.dxf".
  std::string Pattern() const { return PatternOf(entry); }
  /// The extension of the pattern, as in ".dxf".
  std::string Extension() const { return Pattern().substr(1); }
  /// The entry without its pattern and the blank before it.
  std::string Name() const { return entry.substr(0, entry.rfind(" (")); }
};

struct InputFormat : Format {
  std::function<std::unique_ptr<InputFilter>(const FilterContext&)> create;
};
struct OutputFormat : Format {
  std::function<std::unique_ptr<OutputFilter>(const FilterContext&)> create;
  /// What stands behind the output's stem in the names of the files that are made instead of it, as "-points"; null or
  /// empty: it is made itself.
  std::function<std::vector<std::string>(const OptionValues&)> parts = {};
  /// Where areas that are made of lines go; null: it holds none.
  std::function<AreaPlace(const OptionValues&)> areas = {};

  /// Kinds that it leaves out, as far as the values of its options say so; null: none.
  std::function<KindSet(const OptionValues&)> leftOut = {};

  AreaPlace PlaceOfAreas(const OptionValues& values) const { return areas ? areas(values) : AreaPlace::None; }
  KindSet LeftOut(const OptionValues& values) const { return leftOut ? leftOut(values) : KindSet{0}; }
};

class FormatTable {
 public:
  FormatTable(std::vector<InputFormat> inputs, std::vector<OutputFormat> outputs)
      : inputs_(std::move(inputs)), outputs_(std::move(outputs)) {}

  /// All rows, those of the drop-downs in their order.
  const std::vector<InputFormat>& Inputs() const { return inputs_; }
  const std::vector<OutputFormat>& Outputs() const { return outputs_; }

  /// The row of a drop-down text; for any other text the fall-back row of that side.
  const InputFormat& Input(std::string_view entry) const;
  const OutputFormat& Output(std::string_view entry) const;

 private:
  std::vector<InputFormat> inputs_;
  std::vector<OutputFormat> outputs_;
};

}  // namespace tesselink
