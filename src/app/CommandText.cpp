// SPDX-License-Identifier: MIT
#include <algorithm>
#include <filesystem>

#include "app/ConversionOptions.h"
#include "app/ShellText.h"
#include "core/io/Paths.h"

namespace tesselink {
namespace {

std::string WholePath(const std::string& path) {
  std::error_code error;
  const std::filesystem::path whole = std::filesystem::absolute(path, error);
  return error ? path : whole.string();
}

// Whether the extension of a path tells this very row.
template <typename Row>
bool TellsRow(const std::vector<Row>& rows, const Row& row, const std::string& path) {
  const std::string extension = ExtensionOf(path);
  const auto found =
      std::find_if(rows.begin(), rows.end(), [&](const Row& other) { return other.Extension() == extension; });
  return found != rows.end() && found->key == row.key;
}

// An option that takes no value has one all the same, which says nothing.
bool IsFlag(const std::vector<ConversionOption>& options, const std::string& name) {
  return std::any_of(options.begin(), options.end(), [&](const ConversionOption& option) {
    return option.row.name == name && option.row.kind == FormatOption::Kind::Flag;
  });
}

}  // namespace

std::string CommandText(const FormatTable& formats, const ConversionRequest& request, const OptionValues& values,
                        const std::vector<Setting>& settings) {
  const InputFormat& input = formats.Input(request.InFormat);
  const OutputFormat& output = formats.Output(request.OutFormat);
  const std::vector<ConversionOption> options = OptionsOf(input, output);
  std::vector<std::string> words{"tesselink", "convert", "--dialect"};
  words.emplace_back(request.options.dialect == Dialect::Standard ? "standard" : "classic");
  const bool told = std::all_of(request.inputs.begin(), request.inputs.end(), [&](const std::string& path) {
    return request.inputs.size() > 1 ? input.hasAttributes : TellsRow(formats.Inputs(), input, path);
  });
  if (!told) words.push_back("--from=" + input.key);
  if (!TellsRow(formats.Outputs(), output, request.OutFile)) words.push_back("--to=" + output.key);
  for (const auto& [name, value] : values.All()) {
    const bool isPath = name == "layer-codes" || name == "cdf-map" || name == "lngsl" || name == "table";
    words.push_back("--" + name + (IsFlag(options, name) ? "" : "=" + (isPath ? WholePath(value) : value)));
  }
  for (const std::string& path : request.inputs) words.push_back(WholePath(path));
  words.push_back(WholePath(request.OutFile));
  std::string text;
  for (const ConversionOption& option : options) {
    const std::string& name = option.row.name;
    const Setting* const setting = SettingOf(settings, name);
    const bool holds = values.Has(name) || (name == "tolerance" && request.options.tolerance);
    if (setting != nullptr && !setting->value.empty() && !holds) text += VariableOf(name) + "= ";
  }
  for (const std::string& word : words) text += ShellQuotedAsUtf8(word) + " ";
  text.pop_back();
  return text;
}

}  // namespace tesselink
