#include "formats/dxf/DrawingBlocks.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/io/Text.h"

namespace tesselink {
namespace {

// Group 70 of a BLOCK: bound to another file, laid over it, taken from it, or found there.
constexpr std::int32_t kElsewhere = 4 | 8 | 16 | 32;
// Group 70 of an ATTDEF.
constexpr std::int32_t kConstant = 2;
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
  } else if (part_ == Part::Insert) {
    if (code == 2 && inserted_ == kNone) inserted_ = NumberOf(scanner.Keyword());
    if (code == 70) columns_ = std::max(scanner.Integer().value_or(1), 1);
    if (code == 71) rows_ = std::max(scanner.Integer().value_or(1), 1);
  } else if (part_ == Part::AttributeDefinition && code == 70) {
    if ((scanner.Integer().value_or(0) & kConstant) != 0) ++blocks_[block_].drawn;
    part_ = Part::Other;
  }
}

// The vertices of a polyline and the end of a list are parts of the entity before them.
void DrawingBlocks::BeginEntity(const GroupScanner& scanner) {
  const std::string_view type = scanner.Keyword();
  if (part_ == Part::Head) EndHead(scanner);
  if (part_ == Part::Insert) EndInsert();
  part_ = Part::Other;
  if (type == "BLOCK" || type == "ENDBLK" || type == "ENDSEC") {
    block_ = kNone;
    head_ = {};
    if (type == "BLOCK") part_ = Part::Head;
  } else if (block_ == kNone || type == "VERTEX" || type == "SEQEND") {
    return;
  } else if (type == "INSERT") {
    part_ = Part::Insert;
    inserted_ = kNone;
    columns_ = rows_ = 1;
  } else if (type == "ATTDEF") {
    part_ = Part::AttributeDefinition;
  } else {
    ++blocks_[block_].drawn;
  }
}

void DrawingBlocks::EndHead(const GroupScanner& scanner) {
  counted_ = false;
  if (head_.name.empty() || IsSpace(head_.name)) return;
  const std::size_t number = NumberOf(head_.name);
  if (blocks_[number].defined) return;
  head_.defined = true;
  head_.contents = scanner.Mark();
  blocks_[number] = head_;
  if (!head_.elsewhere) block_ = number;
}

void DrawingBlocks::EndInsert() {
  if (inserted_ == kNone) return;
  const std::int64_t count = Times(columns_, rows_);
  if (!nested_.empty() && nested_.back().inner == inserted_ && nested_.back().outer == block_) {
    nested_.back().count = std::min(nested_.back().count + count, kMost);
  } else {
    nested_.push_back({block_, inserted_, count});
  }
}

const std::string& DrawingBlocks::Folded(std::string_view name) {
  folded_ = Trimmed(name);
  for (char& c : folded_) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return folded_;
}

std::size_t DrawingBlocks::NumberOf(std::string_view name) {
  const auto [known, isNew] = numbers_.try_emplace(Folded(name), blocks_.size());
  if (isNew) blocks_.emplace_back().name = name;
  return known->second;
}

// Each block is counted once all that it inserts is. One that inserts itself by way of others adds nothing there.
void DrawingBlocks::CountNested() {
  counted_ = true;
  std::sort(nested_.begin(), nested_.end(), [](const Nested& a, const Nested& b) { return a.outer < b.outer; });
  std::vector<std::size_t> next(blocks_.size() + 1);  // the next insert to be counted, by the block that holds it
  for (const Nested& nested : nested_) ++next[nested.outer + 1];
  for (std::size_t i = 1; i < next.size(); ++i) next[i] += next[i - 1];
  const std::vector<std::size_t> ends(next.begin() + 1, next.end());
  enum class Step : char { Waiting, Begun, Done };
  std::vector<Step> steps(blocks_.size());
  std::vector<std::size_t> stack;
  for (std::size_t root = 0; root < blocks_.size(); ++root) {
    if (steps[root] == Step::Waiting) stack.push_back(root);
    while (!stack.empty()) {
      const std::size_t outer = stack.back();
      steps[outer] = Step::Begun;
      if (next[outer] == ends[outer]) {
        steps[outer] = Step::Done;
        stack.pop_back();
        continue;
      }
      const Nested& nested = nested_[next[outer]];
      if (steps[nested.inner] == Step::Waiting) {
        stack.push_back(nested.inner);
        continue;
      }
      ++next[outer];
      std::int64_t& drawn = blocks_[outer].drawn;
      drawn = std::min(drawn + Times(nested.count, blocks_[nested.inner].drawn), kMost);
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

const DrawingBlock& DrawingBlocks::Block(std::size_t number) {
  if (!counted_) CountNested();
  return blocks_[number];
}

}  // namespace tesselink
