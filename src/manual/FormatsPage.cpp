// SPDX-License-Identifier: MIT
#include <algorithm>
#include <map>

#include "formats/Formats.h"
#include "manual/CommandTexts.h"
#include "manual/Pages.h"
#include "manual/Roff.h"

namespace tesselink {
namespace {

using Page = ManualPage;

// The rows of both sides by their key, in the order of the lists.
struct FormatRows {
  std::string key;
  const InputFormat* input = nullptr;
  const OutputFormat* output = nullptr;
};

std::vector<FormatRows> AllRows() {
  std::vector<FormatRows> all;
  const auto place = [&all](const std::string& key) -> FormatRows& {
    const auto found = std::find_if(all.begin(), all.end(), [&](const FormatRows& rows) { return rows.key == key; });
    return found != all.end() ? *found : all.emplace_back(FormatRows{key});
  };
  for (const InputFormat& row : AllFormats().Inputs()) place(row.key).input = &row;
  for (const OutputFormat& row : AllFormats().Outputs()) place(row.key).output = &row;
  return all;
}

std::string CompanionText(const Companion& companion) {
  return "." + companion.extension + (companion.standardOnly ? " (in the standard dialect)" : "");
}

std::string AboutInput(const InputFormat& row) {
  std::string text = "Read";
  if (!row.companions.empty()) text += ", with the files beside it: " + Joined(row.companions, ", ", CompanionText);
  text += ".";
  if (row.severalFiles) text += " Takes several files in one run; convert chooses it by itself for several inputs.";
  if (row.hasAttributes) text += " Its attribute table may give layers, texts and colours.";
  if (row.streams) text += " Comes through pipes too.";
  return text;
}

std::string AboutOutput(const OutputFormat& row) {
  std::string text = "Written";
  if (!row.companions.empty()) text += ", with files beside it: " + Joined(row.companions, ", ", CompanionText);
  text += ".";
  if (row.ignoresLayers) text += " Holds neither layers nor texts.";
  if (row.streams) text += " Goes through pipes too.";
  return text;
}

// The options of both sides, each once, with the words of its help.
void AddOptions(Page& page, const FormatRows& rows) {
  std::vector<std::string> done;
  for (const Format* row : {static_cast<const Format*>(rows.input), static_cast<const Format*>(rows.output)}) {
    if (row == nullptr) continue;
    for (const FormatOption& option : row->options) {
      if (std::find(done.begin(), done.end(), option.name) != done.end()) continue;
      done.push_back(option.name);
      const std::string value = option.value.empty() ? "" : " " + Page::Italic(option.value);
      page.Term(Page::Bold("--" + option.name) + value, HelpAndChoices(option.help, option.value, option.choices));
    }
  }
}

}  // namespace

std::string FormatsPage(const std::string& date) {
  Page page("tesselink-formats", 5, date);
  page.Section("NAME");
  page.Line("tesselink\\-formats \\- file formats that tesselink reads and writes");
  page.Section("DESCRIPTION");
  page.Paragraph(
      "A format is chosen by the extension of a file, in small or capital letters, or by its key: --from KEY for an "
      "input and --to KEY for an output. Where two formats share an extension, the one that is listed first is taken. "
      "The options below each format concern it alone.");
  for (const FormatRows& rows : AllRows()) {
    const Format& row = rows.input != nullptr ? static_cast<const Format&>(*rows.input) : *rows.output;
    page.Section("\"" + Page::Plain(row.Name()) + "\"");
    page.Paragraph("Key " + rows.key + ", extension " + row.Extension() + ".");
    if (rows.input != nullptr) page.Paragraph(AboutInput(*rows.input));
    if (rows.output != nullptr) page.Paragraph(AboutOutput(*rows.output));
    AddOptions(page, rows);
  }
  page.Section("SEE ALSO");
  page.Line(".BR tesselink (1),");
  page.Line(".BR tesselink\\-convert (1)");
  return page.Text();
}

}  // namespace tesselink
