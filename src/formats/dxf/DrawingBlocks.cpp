#include "formats/dxf/DrawingBlocks.h"

#include <algorithm>

#include "core/io/Text.h"
#include "formats/dxf/GroupScanner.h"

namespace tesselink {
namespace {

// Group 70 of a BLOCK: bound to another file, laid over it, taken from it, or found there.
constexpr std::int32_t kElsewhere = 4 | 8 | 16 | 32;
// Group 70 of an ATTDEF.
constexpr std::int32_t kConstant = 2;

// "*Model_Space", "*Paper_Space0", and "$MODEL_SPACE" as older drawings have it.
bool IsSpace(std::string_view name) {
  if (name.empty() || (name[0] != '*' && name[0] != '$')) return false;
  const std::string_view rest = name.substr(1);
  return EqualsIgnoringCase(rest.substr(0, 11), "MODEL_SPACE") || EqualsIgnoringCase(rest.substr(0, 11), "PAPER_SPACE");
}

}  // namespace

void DrawingBlocks::TakeGroup(const GroupScanner& scanner) {
  const int code = scanner.Code();
  if (code == 0) {
    BeginEntity(scanner.Keyword());
  } else if (code == 2 && part_ == Part::Head && block_ == kNone) {
    TakeName(scanner.Keyword());
  } else if (code == 2 && part_ == Part::Insert) {
    TakeInsert(scanner.Keyword());
    part_ = Part::Other;
  } else if (code == 70 && part_ == Part::Head) {
    elsewhere_ = (scanner.Integer().value_or(0) & kElsewhere) != 0;
  } else if (code == 70 && part_ == Part::AttributeDefinition) {
    if ((scanner.Integer().value_or(0) & kConstant) != 0) Draw();
    part_ = Part::Other;
  }
}

// The vertices of a polyline and the end of a list are parts of the entity before them.
void DrawingBlocks::BeginEntity(std::string_view type) {
  part_ = Part::Other;
  if (type == "BLOCK" || type == "ENDBLK" || type == "ENDSEC") {
    block_ = kNone;
    elsewhere_ = false;
    if (type == "BLOCK") part_ = Part::Head;
  } else if (block_ == kNone || elsewhere_ || type == "VERTEX" || type == "SEQEND") {
    return;
  } else if (type == "INSERT") {
    part_ = Part::Insert;
  } else if (type == "ATTDEF") {
    part_ = Part::AttributeDefinition;
  } else {
    Draw();
  }
}

void DrawingBlocks::TakeName(std::string_view name) {
  settled_ = false;
  if (IsSpace(name)) return;
  const std::size_t number = NumberOf(name);
  if (blocks_[number].defined) return;
  blocks_[number].defined = true;
  block_ = number;
}

void DrawingBlocks::TakeInsert(std::string_view name) {
  const std::size_t inner = NumberOf(name);
  if (blocks_[inner].drawn > 0) {
    Draw();
  } else if (!nested_.empty() && nested_.back().inner == inner && nested_.back().outer == block_) {
    ++nested_.back().count;
  } else {
    nested_.push_back({inner, block_, 1});
  }
}

const std::string& DrawingBlocks::Folded(std::string_view name) {
  folded_ = name;
  for (char& c : folded_) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return folded_;
}

std::size_t DrawingBlocks::NumberOf(std::string_view name) {
  const auto [known, isNew] = numbers_.try_emplace(Folded(name), blocks_.size());
  if (isNew) blocks_.emplace_back();
  return known->second;
}

// Each block that draws makes those that insert it draw, and each is looked at once: circles end by themselves.
void DrawingBlocks::SettleNested() {
  settled_ = true;
  const auto byInner = [](const Nested& a, const Nested& b) { return a.inner < b.inner; };
  std::sort(nested_.begin(), nested_.end(), byInner);
  std::vector<std::size_t> drawing;
  for (std::size_t i = 0; i < blocks_.size(); ++i) {
    if (blocks_[i].drawn > 0) drawing.push_back(i);
  }
  while (!drawing.empty()) {
    const Nested wanted{drawing.back(), 0, 0};
    drawing.pop_back();
    const auto [first, last] = std::equal_range(nested_.begin(), nested_.end(), wanted, byInner);
    for (auto nested = first; nested != last; ++nested) {
      Block& outer = blocks_[nested->outer];
      if (outer.drawn == 0) drawing.push_back(nested->outer);
      outer.drawn += nested->count;
      nested->count = 0;
    }
  }
  std::erase_if(nested_, [](const Nested& nested) { return nested.count == 0; });
}

std::int64_t DrawingBlocks::DrawnBy(std::string_view name) {
  if (settled_ && name == asked_) return answered_;
  if (!settled_) SettleNested();
  const auto known = numbers_.find(Folded(name));
  asked_ = name;
  answered_ = known == numbers_.end() ? 0 : blocks_[known->second].drawn;
  return answered_;
}

}  // namespace tesselink
