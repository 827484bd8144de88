#include "formats/dxf/DrawingNames.h"

#include "core/io/Text.h"
#include "core/io/Utf8.h"

namespace tesselink {

DrawingNames::Entry& DrawingNames::Of(const std::string& name) {
  if (last_ == nullptr || name != lastName_) {
    last_ = &Find(name);
    lastName_ = name;
  }
  return *last_;
}

DrawingNames::Entry& DrawingNames::Find(const std::string& name) {
  const bool unnamed = name.empty() && rule_ != Rule::AsGiven;
  const auto added = byName_.emplace(unnamed ? "0" : rule_ == Rule::MergeCase ? UpperCase(name) : name, nullptr);
  if (added.second) {
    Add(unnamed ? added.first->first : name);
    added.first->second = &entries_.back();
  }
  return *added.first->second;
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

void DrawingNames::Add(const std::string& name) {
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
  entries_.push_back(std::move(entry));
}

}  // namespace tesselink
