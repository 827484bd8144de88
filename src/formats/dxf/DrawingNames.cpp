// SPDX-License-Identifier: MIT
#include "formats/dxf/DrawingNames.h"

#include "core/io/Text.h"
#include "core/io/Utf8.h"

namespace tesselink {

DrawingNames::Entry& DrawingNames::Of(const std::string& name) {
  static const std::string kUnnamed = "0";
  const std::string& given = name.empty() && rule_ != Rule::AsGiven ? kUnnamed : name;
  const std::size_t number = numbers_.Of(given);
  if (number == byNumber_.size()) byNumber_.push_back(&Entered(given));
  return *byNumber_[number];
}

// The entry of a name that was not asked for yet.
DrawingNames::Entry& DrawingNames::Entered(const std::string& name) {
  if (rule_ != Rule::MergeCase) return Add(name);
  const std::size_t number = merged_.Of(UpperCase(name));
  return number == entries_.size() ? Add(name) : entries_[number];
}

std::string DrawingNames::Distinct(const std::string& like) {
  std::string name = like;
  int& number = written_[FoldedCase(like)];
  while (++number > 1) {
    name = like + "_" + std::to_string(number);
    if (written_.emplace(FoldedCase(name), 1).second) break;
  }
  return name;
}

DrawingNames::Entry& DrawingNames::Add(const std::string& name) {
  Entry entry;
  entry.given = name;
  if (rule_ == Rule::AsGiven) {
    entry.name = name;
  } else {
    entry.changed = !EncodeName(name, signs_, entry.name);
    const std::string distinct = Distinct(entry.name);
    entry.changed = entry.changed || entry.name != distinct;
    entry.name = distinct;
  }
  return entries_.emplace_back(std::move(entry));
}

}  // namespace tesselink
