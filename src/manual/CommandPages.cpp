// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cctype>

#include "manual/Pages.h"
#include "manual/Prose.h"
#include "manual/Roff.h"

namespace tesselink {
namespace {

using Page = ManualPage;

// What a command is for, as it stands behind its name.
std::string Title(const CommandText& command) {
  std::string text = command.summary.substr(0, command.summary.find_first_of(",;:"));
  text[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[0])));
  return text;
}

// "tesselink convert [OPTIONS] INPUT... OUTPUT" with its own words bold and what stands for others in italics.
std::string Synopsis(const CommandText& command) {
  std::string text = Page::Bold("tesselink " + command.name) + " [" + Page::Italic("OPTIONS") + "]";
  for (const ValueText& operand : command.operands) {
    std::string set;
    for (std::size_t begin = 0; begin < operand.name.size();) {
      const bool isName = std::isupper(static_cast<unsigned char>(operand.name[begin])) != 0;
      const auto end = std::find_if(operand.name.begin() + static_cast<std::ptrdiff_t>(begin), operand.name.end(),
                                    [&](unsigned char c) { return (std::isupper(c) != 0) != isName; });
      const std::string part(operand.name.begin() + static_cast<std::ptrdiff_t>(begin), end);
      set += isName ? Page::Italic(part) : Page::Plain(part);
      begin += part.size();
    }
    text += " " + set;
  }
  return text;
}

void AddOptions(Page& page, const CommandText& command) {
  std::vector<std::string> groups;
  for (const OptionText& option : command.options) {
    if (std::find(groups.begin(), groups.end(), option.group) == groups.end()) groups.push_back(option.group);
  }
  page.Section("OPTIONS");
  for (const std::string& group : groups) {
    if (groups.size() > 1) page.Subsection(group == groups.front() ? "General" : group);
    for (const OptionText& option : command.options) {
      if (option.group != group) continue;
      std::string term = Joined(option.names, ", ", Page::Bold);
      if (!option.value.name.empty()) term += " " + Page::Italic(option.value.name);
      page.Term(term, HelpAndChoices(option.help, option.value.name, option.value.words));
    }
  }
}

void AddTerms(Page& page, const char* heading, const std::vector<TermText>& terms) {
  page.Section(heading);
  for (const auto& [term, text] : terms) page.Term(Page::Bold(term), text);
}

// The commands of --help, each below what it is for.
void AddExamples(Page& page, const CommandText& command) {
  if (command.examples.empty()) return;
  page.Section("EXAMPLES");
  for (std::string line : command.examples) {
    if (line.starts_with("# ")) {
      line[2] = static_cast<char>(std::toupper(static_cast<unsigned char>(line[2])));
      page.Paragraph(line.substr(2) + ":");
    } else {
      page.Code({line});
    }
  }
}

void AddSeeAlso(Page& page, std::vector<std::string> names) {
  page.Section("SEE ALSO");
  names.push_back("tesselink-formats(5)");
  for (const std::string& name : names) {
    const std::size_t open = name.find('(');
    page.Line(".BR \\%" + Page::Plain(name.substr(0, open)) + " " + name.substr(open) +
              (name == names.back() ? "" : " ,"));
  }
}

}  // namespace

std::string ProgramPage(const ProgramText& text, const std::string& date) {
  Page page("tesselink", 1, date);
  page.Section("NAME");
  page.Line("tesselink \\- convert vector drawings of surveying and oil\\-and\\-gas mapping");
  page.Section("SYNOPSIS");
  page.Line(Page::Bold("tesselink") + " " + Page::Italic("COMMAND") + " [" + Page::Italic("OPTIONS") + "] ...");
  page.Section("DESCRIPTION");
  for (const std::string& paragraph : DescriptionOf("")) page.Paragraph(paragraph);
  page.Section("COMMANDS");
  std::vector<std::string> pages;
  for (const CommandText& command : text.commands) {
    page.Term(Page::Bold(command.name), command.summary + ".");
    pages.push_back("tesselink-" + command.name + "(1)");
  }
  AddOptions(page, text.program);
  AddTerms(page, "EXIT STATUS", ExitCodeTexts());
  AddTerms(page, "ENVIRONMENT", EnvironmentTexts());
  AddTerms(page, "FILES", FileTexts());
  AddExamples(page, text.program);
  AddSeeAlso(page, pages);
  return page.Text();
}

std::string CommandPage(const ProgramText& text, const CommandText& command, const std::string& date) {
  const std::string name = "tesselink-" + command.name;
  Page page(name, 1, date);
  page.Section("NAME");
  page.Line(Page::Plain(name) + " \\- " + Page::Plain(Title(command)));
  page.Section("SYNOPSIS");
  page.Line(Synopsis(command));
  page.Section("DESCRIPTION");
  const auto paragraphs = DescriptionOf(command.name);
  for (const std::string& paragraph : paragraphs) page.Paragraph(paragraph);
  if (paragraphs.empty()) page.Paragraph(command.summary + ".");
  AddOptions(page, command);
  AddTerms(page, "EXIT STATUS", ExitCodeTexts());
  AddTerms(page, "ENVIRONMENT", EnvironmentTexts());
  AddExamples(page, command);
  std::vector<std::string> others{"tesselink(1)"};
  for (const CommandText& other : text.commands) {
    if (other.name != command.name) others.push_back("tesselink-" + other.name + "(1)");
  }
  AddSeeAlso(page, others);
  return page.Text();
}

}  // namespace tesselink
