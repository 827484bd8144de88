// SPDX-License-Identifier: MIT
#include "manual/Roff.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace tesselink {
namespace {

// The end of an option or of a page's name within a word: "--to", "tesselink-convert(1)".
std::size_t EndOfName(std::string_view word) {
  if (word.starts_with("tesselink") && word.find('(') != std::string_view::npos) return word.find('(');
  if (word.size() < 2 || word[0] != '-' || word == "--") return 0;
  const auto end =
      std::find_if(word.begin(), word.end(), [](unsigned char c) { return c != '-' && std::isalnum(c) == 0; });
  return static_cast<std::size_t>(end - word.begin());
}

std::string Word(std::string_view word) {
  const std::size_t begin = std::min(word.find_first_not_of("(\"'"), word.size());
  const std::string before = ManualPage::Plain(word.substr(0, begin));
  word.remove_prefix(begin);
  const std::size_t end = EndOfName(word);
  // Names are not hyphenated: somebody copies them.
  const std::string name = end == 0 ? std::string() : "\\%" + ManualPage::Bold(word.substr(0, end));
  return before + name + ManualPage::Plain(word.substr(end));
}

// Lines of 78 columns, and one for each sentence, as such sources are kept.
std::string Filled(std::string_view text) {
  std::string filled, line;
  std::istringstream words{std::string(text)};
  for (std::string word; words >> word;) {
    const std::string set = Word(word);
    if (!line.empty() && line.size() + 1 + set.size() > 78) {
      filled += line + "\n";
      line.clear();
    }
    // What stands first in a line and begins with a period would be a command.
    line += (!line.empty() ? " " : set.starts_with('.') ? "\\&" : "") + set;
    if (word.ends_with('.')) {
      filled += line + "\n";
      line.clear();
    }
  }
  return line.empty() ? filled : filled + line + "\n";
}

}  // namespace

ManualPage::ManualPage(const std::string& title, int section, const std::string& date) {
  std::string capitals = title;
  std::transform(capitals.begin(), capitals.end(), capitals.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  Line(".TH " + Plain(capitals) + " " + std::to_string(section) + " " + date +
       " \"tesselink " TESSELINK_VERSION "\" \"Tesselink\"");
}

void ManualPage::Heading(const std::string& heading) {
  Line(heading);
  afterHeading_ = true;
}

void ManualPage::Section(std::string_view heading) { Heading(".SH " + std::string(heading)); }
void ManualPage::Subsection(std::string_view heading) { Heading(".SS " + Plain(heading)); }

void ManualPage::Paragraph(std::string_view text) {
  if (!afterHeading_) Line(".PP");
  afterHeading_ = false;
  text_ += Filled(text);
}

void ManualPage::Term(const std::string& term, std::string_view text) {
  Line(".TP");
  Line(term);
  afterHeading_ = false;
  text_ += Filled(text);
}

void ManualPage::Code(const std::vector<std::string>& lines) {
  if (!afterHeading_) Line(".PP");
  afterHeading_ = false;
  Line(".RS 4");
  Line(".nf");
  for (const std::string& line : lines) Line(Plain(line));
  Line(".fi");
  Line(".RE");
}

std::string ManualPage::Bold(std::string_view text) { return "\\fB" + Plain(text) + "\\fR"; }
std::string ManualPage::Italic(std::string_view text) { return "\\fI" + Plain(text) + "\\fR"; }

std::string ManualPage::Plain(std::string_view text) {
  std::string plain;
  for (const char c : text) {
    switch (c) {
      case '\\':
        plain += "\\e";
        break;
      case '-':
        plain += "\\-";
        break;
      case '\'':
        plain += "\\(aq";
        break;
      case '`':
        plain += "\\(ga";
        break;
      case '^':
        plain += "\\(ha";
        break;
      case '~':
        plain += "\\(ti";
        break;
      default:
        plain += c;
    }
  }
  return plain;
}

}  // namespace tesselink
