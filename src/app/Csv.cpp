// SPDX-License-Identifier: MIT
#include "app/Csv.h"

#include <algorithm>

#include "core/io/Errors.h"

namespace tesselink {

std::string CsvField(std::string_view value) {
  if (value.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(value);
  std::string quoted = "\"";
  for (const char c : value) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + "\"";
}

bool CsvReader::Read(std::vector<std::string>& record) {
  const auto atLineEnd = [this] { return rest_.starts_with('\n') || rest_.starts_with("\r\n"); };
  const auto skipLineEnd = [this] {
    rest_.remove_prefix(rest_.front() == '\r' ? 2 : 1);
    ++nextLine_;
  };
  while (atLineEnd()) skipLineEnd();
  line_ = nextLine_;
  record.clear();
  if (rest_.empty()) return false;
  for (;;) {
    record.push_back(rest_.starts_with('"') ? TakeQuoted() : TakePlain());
    if (!rest_.starts_with(',')) break;
    rest_.remove_prefix(1);
  }
  if (!rest_.empty()) skipLineEnd();
  return true;
}

std::string CsvReader::TakePlain() {
  const std::size_t lineEnd = std::min(rest_.find('\n'), rest_.size());
  std::size_t end = std::min(rest_.find(','), lineEnd);
  if (end == lineEnd && end < rest_.size() && end > 0 && rest_[end - 1] == '\r') --end;
  const std::string value(rest_.substr(0, end));
  rest_.remove_prefix(end);
  return value;
}

std::string CsvReader::TakeQuoted() {
  std::string value;
  do {
    rest_.remove_prefix(1);
    const std::size_t quote = rest_.find('"');
    if (quote == std::string_view::npos) throw Error("line " + std::to_string(line_) + ": a quote is not closed");
    value += rest_.substr(0, quote);
    rest_.remove_prefix(quote + 1);
    if (rest_.starts_with('"')) value += '"';
  } while (rest_.starts_with('"'));
  nextLine_ += static_cast<std::size_t>(std::count(value.begin(), value.end(), '\n'));
  // What stands between the closing quote and the next comma belongs to no value.
  if (!TakePlain().empty())
    throw Error("line " + std::to_string(line_) + ": a comma is expected behind a closing quote");
  return value;
}

}  // namespace tesselink
