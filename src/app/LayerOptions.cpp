// SPDX-License-Identifier: MIT
#include "app/LayerOptions.h"

#include <algorithm>
#include <unordered_set>

#include "app/Csv.h"
#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"
#include "core/run/Filters.h"
#include "core/run/Report.h"
#include "formats/cdf/LayerMatching.h"

namespace tesselink {
namespace {

constexpr std::size_t kCodeLength = 7;
constexpr std::int64_t kLargestFile = std::int64_t{64} << 20;

std::string WholeFile(const std::string& path) {
  BinaryFile file(path);
  if (file.Size() > kLargestFile) throw Error(path + ": is larger than any list of layers");
  std::string text(static_cast<std::size_t>(file.Size()), '\0');
  text.resize(file.ReadAt(0, text.data(), text.size()));
  if (constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF"; text.starts_with(kByteOrderMark)) {
    text.erase(0, kByteOrderMark.size());
  }
  return text;
}

std::size_t ColumnOf(const std::vector<std::string>& names, std::string_view wanted) {
  const auto column = std::find_if(names.begin(), names.end(),
                                   [&](const std::string& name) { return EqualsIgnoringCase(Trimmed(name), wanted); });
  if (column != names.end()) return static_cast<std::size_t>(column - names.begin());
  throw Error("line 1: a column named \"" + std::string(wanted) +
              "\" is expected; \"tesselink layers INPUT\" prints such a list");
}

// Notes the layers in the order of the list.
CodesByLayer CodesIn(const std::string& text, std::vector<std::string>& layers) {
  CodesByLayer codes;
  CsvReader csv(text);
  std::vector<std::string> record;
  csv.Read(record);
  const std::size_t layer = ColumnOf(record, "layer"), code = ColumnOf(record, "code");
  while (csv.Read(record)) {
    const std::string line = "line " + std::to_string(csv.Line()) + ": ";
    if (record.size() <= std::max(layer, code)) throw Error(line + "has fewer columns than the first line");
    if (record[code].size() > kCodeLength) {
      throw Error(line + "\"" + record[code] + "\" is longer than the 7 characters of an entity code");
    }
    const auto [known, isNew] = codes.emplace(record[layer], record[code]);
    if (isNew) layers.push_back(record[layer]);
    if (known->second != record[code]) {
      throw Error(line + "layer \"" + record[layer] + "\" has another code further up");
    }
  }
  return codes;
}

// What was typed or cut short on the way through another program, as by a spreadsheet that drops a leading zero.
void WarnOfShortCodes(const std::vector<std::string>& layers, const std::vector<std::string>& codes, Report& report) {
  for (std::size_t i = 0; i < codes.size(); ++i) {
    if (codes[i].empty() || codes[i].size() == kCodeLength) continue;
    report.Warn(WarningKind::ShortCodes, "layer \"" + layers[i] + "\": the code \"" + codes[i] + "\" has " +
                                             Counted(static_cast<std::int64_t>(codes[i].size()), "character") +
                                             " where 7 are usual; it is used as it stands");
  }
}

std::vector<std::string> RememberedAndGuessed(const LayerMatchingQuestion& question, bool guess) {
  LayerMatching matching(question.context);
  matching.Create(question.layers, question.heading, question.application, false, LayerMatching::kNoLimit);
  if (matching.Types().empty()) {
    question.context.report.Warn(WarningKind::EmptyList,
                                 "the entity-type list holds no entity type, so no code is proposed");
  }
  if (!guess) return matching.Codes();
  const auto remembered = matching.Rows();
  matching.SmartAssign();
  for (std::size_t i = 0; i < remembered.size(); ++i) {
    if (!remembered[i].type.empty()) matching.Choose(i, remembered[i].type);
  }
  return matching.Codes();
}

}  // namespace

LayerOptions::LayerOptions(std::string file, bool guess)
    : fromFile_(!file.empty()), guess_(guess), file_(std::move(file)) {
  if (!fromFile_) return;
  const std::string text = WholeFile(file_);
  try {
    codes_ = CodesIn(text, listed_);
  } catch (const Error& error) {
    throw Error(file_ + ", " + error.what());
  }
}

std::vector<std::string> LayerOptions::Codes(const LayerMatchingQuestion& question) const {
  const std::vector<std::string> codes = FromFileOr(
      guess_ ? RememberedAndGuessed(question, true) : std::vector<std::string>(question.layers.size()), question);
  for (std::size_t i = 0; i < codes.size(); ++i) {
    if (!codes[i].empty()) continue;
    question.context.report.Warn(WarningKind::WithoutACode, "layer \"" + question.layers[i] + "\" has no entity code");
  }
  return codes;
}

std::vector<std::string> LayerOptions::Proposal(const LayerMatchingQuestion& question) const {
  return FromFileOr(RememberedAndGuessed(question, guess_), question);
}

std::vector<std::string> LayerOptions::FromFileOr(std::vector<std::string> codes,
                                                  const LayerMatchingQuestion& question) const {
  for (std::size_t i = 0; i < codes.size(); ++i) {
    const auto given = codes_.find(AsUtf8(question.layers[i]));
    if (given != codes_.end()) codes[i] = given->second;
  }
  WarnOfUnknownLayers(question);
  WarnOfShortCodes(question.layers, codes, question.context.report);
  return codes;
}

// As of a name that was misspelt, or whose layer is no longer there.
void LayerOptions::WarnOfUnknownLayers(const LayerMatchingQuestion& question) const {
  std::unordered_set<std::string> known;
  for (const std::string& layer : question.layers) known.insert(AsUtf8(layer));
  for (const std::string& layer : listed_) {
    if (known.contains(layer)) continue;
    question.context.report.Warn(WarningKind::UnknownLayers,
                                 file_ + ": \"" + layer + "\" is no layer of the input that can be matched");
  }
}

}  // namespace tesselink
