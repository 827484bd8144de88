// SPDX-License-Identifier: MIT
#include "formats/dxf/ExtendedData.h"

#include "core/io/Text.h"
#include "formats/dxf/GroupScanner.h"

namespace tesselink {
namespace {

// An entity holds a quarter of it at most.
constexpr std::size_t kMostBytes = 65536;

}  // namespace

void ExtendedData::Begin() {
  isOwn_ = hasOther_ = false;
  integers_ = count_ = bytes_ = 0;
  handle_.clear();
}

// A text that begins with "=" goes on with the one before.
void ExtendedData::Take(const GroupScanner& scanner) {
  const std::string_view text = scanner.Text();
  if (scanner.Code() == 1001) {
    isOwn_ = text == kOwnData;
    hasOther_ = hasOther_ || !(isOwn_ || EqualsIgnoringCase(text.substr(0, 4), "ACAD"));
  }
  if (!isOwn_) return;
  switch (scanner.Code()) {
    case 1000:
      bytes_ += text.size() + 1;
      if (bytes_ > kMostBytes) return;
      if (text.starts_with('=') && count_ > 0) {
        texts_[count_ - 1] += text.substr(1);
        return;
      }
      if (count_ == texts_.size()) texts_.emplace_back();
      texts_[count_++] = text;
      return;
    case 1005:
      handle_ = text;
      return;
    case 1070:
    case 1071:
      if (integers_ < kOfRecord) numbers_[integers_++] = scanner.Integer().value_or(0);
      return;
    default:
      return;
  }
}

}  // namespace tesselink
