// The drop-down rows: which text stands for which reader or writer, and what an unknown text falls back to.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/run/Filters.h"

namespace tesselink {

/// What readers' and writers' rows have in common.
struct Format {
  std::string entry;  ///< the drop-down's text, ending in the pattern in parentheses, as in "AutoCAD DXF File (*.dxf)"
  std::string key;    ///< the command line's short name
  std::string className;  ///< of the filter
  bool fallBack = false;  ///< taken for a text that is no entry of this side

  /// The pattern between the entry's parentheses, as in "*.dxf".
  std::string Pattern() const;
  /// The extension of the pattern, as in ".dxf".
  std::string Extension() const { return Pattern().substr(1); }
  /// The entry without its pattern and the blank before it.
  std::string Name() const { return entry.substr(0, entry.size() - 8); }
};

struct InputFormat : Format {
  bool severalFiles = false;          ///< reads a list of files in one run
  bool hasAttributes = false;         ///< has an attribute table that may give layer and text
  std::vector<std::string> partners;  ///< extensions of the files that are read beside the input, as in "SHX"
  std::function<std::unique_ptr<InputFilter>(const FilterContext&)> create;
};

struct OutputFormat : Format {
  bool ignoresLayers = false;         ///< the reader's `Layered` is set false
  std::vector<std::string> partners;  ///< extensions of the files that are written beside the output, as in "SHX"
  std::function<std::unique_ptr<OutputFilter>(const FilterContext&)> create;
  std::vector<std::string> standardPartners = {};  ///< as `partners`; written in the standard dialect alone
};

class FormatTable {
 public:
  FormatTable(std::vector<InputFormat> inputs, std::vector<OutputFormat> outputs)
      : inputs_(std::move(inputs)), outputs_(std::move(outputs)) {}

  /// The rows in the order of the drop-downs.
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
