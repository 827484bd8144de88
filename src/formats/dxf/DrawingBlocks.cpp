// SPDX-License-Identifier: MIT
#include "formats/dxf/DrawingBlocks.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <functional>
#include <limits>

#include "core/io/Text.h"
#include "core/io/Utf8.h"

namespace tesselink {
namespace {

// Group 70 of a BLOCK: bound to another file, laid over it, taken from it, or found there.
constexpr std::int32_t kElsewhere = 4 | 8 | 16 | 32;
// Group 70 of an ATTDEF.
constexpr std::int32_t kConstant = 2;
// Of a longer name only the beginning is kept, and a number that stands for the whole.
constexpr std::size_t kLongestName = 1024;
// Counts go no further: nobody converts as much.
constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max() * std::int64_t{1000};

// "*Model_Space", "*Paper_Space0", and "$MODEL_SPACE" as older drawings have it.
bool IsSpace(std::string_view name) {
  if (name.empty() || (name[0] != '*' && name[0] != '$')) return false;
  const std::string_view rest = name.substr(1);
  return EqualsIgnoringCase(rest.substr(0, 11), "MODEL_SPACE") || EqualsIgnoringCase(rest.substr(0, 11), "PAPER_SPACE");
}

std::int64_t Times(std::int64_t a, std::int64_t b) { return a != 0 && b > kMost / a ? kMost : a * b; }

}  // namespace

std::uint64_t HandleOf(std::string_view text) {
  std::uint64_t handle = 0;
  std::from_chars(text.data(), text.data() + text.size(), handle, 16);
  return handle;
}

void DrawingBlocks::TakeGroup(const GroupScanner& scanner) {
  const int code = scanner.Code();
  if (code == 0) return BeginEntity(scanner);
  const auto number = [&](double otherwise) { return std::isfinite(scanner.Number()) ? scanner.Number() : otherwise; };
  if (part_ == Part::Head) {
    if (code == 2) head_.name = scanner.Keyword();
    if (code == 70) head_.elsewhere = (scanner.Integer().value_or(0) & kElsewhere) != 0;
    if (code == 10) head_.base.x = number(0);
    if (code == 20) head_.base.y = number(0);
    if (code == 30) head_.base.z = number(0);
    if (code == 330) record_ = HandleOf(scanner.Keyword());
  } else if (part_ == Part::Insert) {
    if (code == 2 && inserted_ == kNone) inserted_ = NumberOf(scanner.Keyword());
    if (code == 70) columns_ = std::max(scanner.Integer().value_or(1), 1);
    if (code == 71) rows_ = std::max(scanner.Integer().value_or(1), 1);
  } else if (part_ == Part::AttributeDefinition) {
    if (code == 2) tag_ = scanner.Keyword();
    if (code == 70) isConstant_ = (scanner.Integer().value_or(0) & kConstant) != 0;
  }
}

// The vertices of a polyline and the end of a list are parts of the entity before them.
void DrawingBlocks::BeginEntity(const GroupScanner& scanner) {
  const std::string_view type = scanner.Keyword();
  if (part_ == Part::Head) EndHead(scanner);
  if (part_ == Part::Insert) EndInsert();
  if (part_ == Part::AttributeDefinition) EndAttributeDefinition();
  part_ = Part::Other;
  if (EndsBlock(type)) {
    block_ = kNone;
    head_ = {};
    record_ = 0;
    if (type == "BLOCK") part_ = Part::Head;
  } else if (block_ == kNone || type == "VERTEX" || type == "SEQEND") {
    return;
  } else if (type == "INSERT") {
    part_ = Part::Insert;
    inserted_ = kNone;
    columns_ = rows_ = 1;
  } else if (type == "ATTDEF") {
    part_ = Part::AttributeDefinition;
    tag_.clear();
    isConstant_ = false;
  } else {
    ++blocks_[block_].drawn;
  }
}

void DrawingBlocks::EndHead(const GroupScanner& scanner) {
  if (head_.name.empty() || IsSpace(head_.name)) return;
  const std::size_t number = NumberOf(head_.name);
  if (blocks_[number].defined) return;
  head_.defined = true;
  head_.contents = scanner.Mark();
  head_.name = CutUtf8(head_.name, kLongestName);
  blocks_[number] = head_;
  if (record_ != 0) byRecord_.emplace(record_, number);
  if (!head_.elsewhere) block_ = number;
}

void DrawingBlocks::EndInsert() {
  if (inserted_ == kNone) return;
  const std::int64_t count = Times(columns_, rows_);
  if (!nested_.empty() && nested_.back().inner == inserted_ && nested_.back().outer == block_) {
    nested_.back().count = Sum(nested_.back().count, count);
  } else {
    nested_.push_back({block_, inserted_, count});
  }
}

// A constant attribute is drawn with the block; inserts have none of it.
void DrawingBlocks::EndAttributeDefinition() {
  constexpr std::size_t kMostTags = 4096;
  if (isConstant_) {
    ++blocks_[block_].drawn;
  } else if (!tag_.empty() && tags_.size() < kMostTags && seenTags_.insert(tag_).second) {
    tags_.push_back(tag_);
  }
}

const std::string& DrawingBlocks::Folded(std::string_view name) {
  folded_ = Trimmed(name);
  for (char& c : folded_) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  if (folded_.size() > kLongestName) {
    const std::size_t whole = std::hash<std::string>()(folded_);
    folded_.resize(kLongestName);
    folded_.shrink_to_fit();
    folded_ += ' ' + std::to_string(whole);
  }
  return folded_;
}

std::size_t DrawingBlocks::NumberOf(std::string_view name) {
  const auto [known, isNew] = numbers_.try_emplace(Folded(name), blocks_.size());
  if (isNew) blocks_.emplace_back().name = CutUtf8(name, kLongestName);
  return known->second;
}

// Each block is counted once all that it inserts is. One that inserts itself by way of others adds nothing there.
// Blocks that were counted before stay as they are: the work is that of the inserts that are new.
void DrawingBlocks::CountNested() {
  std::sort(nested_.begin(), nested_.end(), [](const Nested& a, const Nested& b) { return a.outer < b.outer; });
  enum class Step : char { Waiting, Begun, Done };
  struct Holder {
    std::size_t block, next, end;  // its inserts, the next one to be counted first
    Step step = Step::Waiting;
  };
  std::vector<Holder> holders;
  for (std::size_t i = 0; i < nested_.size(); ++i) {
    if (i == 0 || nested_[i].outer != nested_[i - 1].outer) holders.push_back({nested_[i].outer, i, i});
    holders.back().end = i + 1;
  }
  const auto isWaiting = [&](std::size_t block, std::size_t& index) {
    const auto at = std::lower_bound(holders.begin(), holders.end(), block,
                                     [](const Holder& holder, std::size_t wanted) { return holder.block < wanted; });
    index = static_cast<std::size_t>(at - holders.begin());
    return at != holders.end() && at->block == block && at->step == Step::Waiting;
  };
  std::vector<std::size_t> stack;
  for (std::size_t root = 0; root < holders.size(); ++root) {
    if (holders[root].step == Step::Waiting) stack.push_back(root);
    while (!stack.empty()) {
      Holder& outer = holders[stack.back()];
      outer.step = Step::Begun;
      if (outer.next == outer.end) {
        outer.step = Step::Done;
        stack.pop_back();
        continue;
      }
      const Nested& nested = nested_[outer.next];
      if (std::size_t inner = 0; isWaiting(nested.inner, inner)) {
        stack.push_back(inner);
        continue;
      }
      ++outer.next;
      std::int64_t& drawn = blocks_[outer.block].drawn;
      drawn = Sum(drawn, Times(nested.count, blocks_[nested.inner].drawn));
    }
  }
  nested_.clear();
}

std::size_t DrawingBlocks::Find(std::string_view name) {
  if (name == asked_ && answered_ != kNone) return answered_;
  const auto known = numbers_.find(Folded(name));
  asked_ = name;
  answered_ = known == numbers_.end() ? kNone : known->second;
  return answered_;
}

std::size_t DrawingBlocks::FindRecord(std::uint64_t handle) const {
  const auto known = byRecord_.find(handle);
  return known == byRecord_.end() ? kNone : known->second;
}

const DrawingBlock& DrawingBlocks::Block(std::size_t number) {
  if (!nested_.empty()) CountNested();
  return blocks_[number];
}

std::int64_t DrawingBlocks::DrawnBy(std::size_t number, std::int64_t inserts) {
  return Times(inserts, Block(number).drawn);
}

std::int64_t DrawingBlocks::Sum(std::int64_t a, std::int64_t b) { return std::min(a + b, kMost); }

}  // namespace tesselink
