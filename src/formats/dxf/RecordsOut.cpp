// SPDX-License-Identifier: MIT
#include "formats/dxf/RecordsOut.h"

#include <algorithm>
#include <array>

#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"
#include "core/run/AttributeTable.h"
#include "formats/dxf/DrawingEncoding.h"
#include "formats/dxf/ExtendedData.h"

namespace tesselink {
namespace {

// The bytes of extended data that an entity holds for all applications, and of a text in them.
constexpr std::size_t kMostBytes = 16000, kLongestPiece = 250;
// That a text takes besides its letters.
constexpr std::size_t kOverhead = 4;
constexpr int kTextLength = 254;
constexpr std::array<std::string_view, 5> kForms{"any", "points", "groups", "chains", "areas"};
constexpr std::string_view kHeights = "-z", kMeasures = "-m", kDrawing = "-drawing";

// The most that a letter takes in a drawing: letters that its code page lacks are codes, as "\U+4E95".
std::size_t Cost(std::string_view letter) { return letter.size() == 1 ? 1 : letter.size() == 4 ? 14 : 7; }

// Appends a text in pieces and returns what they take.
std::size_t AppendPieces(TextList& pieces, std::string_view text) {
  std::size_t bytes = kOverhead, used = 0;
  std::string* piece = &pieces.Add();
  while (!text.empty()) {
    const std::string_view letter = text.substr(0, std::max<std::size_t>(Utf8Length(text), 1));
    if (used + Cost(letter) > kLongestPiece) {
      piece = &pieces.Add();
      *piece = '=';
      bytes += kOverhead + 1;
      used = 1;
    }
    *piece += letter;
    used += Cost(letter);
    bytes += Cost(letter);
    text.remove_prefix(letter.size());
  }
  return bytes;
}

// The name in front of a value, in which "=" has to be another thing.
std::string EncodedName(const std::string& name) {
  std::string encoded, safe;
  EncodeValue(name, encoded);
  for (const char c : encoded) {
    if (c == '=') {
      AppendUnicodeCode(safe, static_cast<std::uint32_t>(c));
    } else {
      safe += c;
    }
  }
  return safe;
}

}  // namespace

std::string schema::WordOf(const ElementForm& form) {
  std::string word(kForms[static_cast<std::size_t>(form.shape)]);
  if (form.heights || form.measures) word += form.heights ? kHeights : kMeasures;
  if (form.isDrawing) word += kDrawing;
  return word;
}

ElementForm schema::FormOf(std::string_view word) {
  const auto has = [word](std::string_view part) { return word.find(part) != std::string_view::npos; };
  ElementForm form{.heights = has(kHeights), .measures = has(kMeasures), .isDrawing = has(kDrawing)};
  const auto found = std::find(kForms.begin(), kForms.end(), word.substr(0, word.find('-')));
  if (found != kForms.end()) form.shape = static_cast<ElementForm::Shape>(found - kForms.begin());
  return form;
}

void RecordsOut::Reset() { *this = {}; }

std::string RecordsOut::Begin(InputFilter& source) {
  std::string leftOut;
  table_ = source.Attributes();
  form_ = source.Form();
  const bool arePoints = form_.shape == ElementForm::Shape::Points;  // one each, so that nothing has to be joined
  hasRecords_ = table_ != nullptr || (source.Records() > 0 && !arePoints);
  record_ = 0;
  tag_ = {};
  fields_.clear();
  if (!hasRecords_) return leftOut;
  ++tables_;
  form_.isDrawing = form_.isDrawing && !source.AttributesAreAll();
  EncodeValue(std::string(schema::kTable) + ' ' + schema::WordOf(form_) + ' ' + FileNameOf(source.filename()),
              encoded_);
  schemaBytes_ += AppendPieces(schema_, encoded_);
  for (int i = 0; table_ != nullptr && i <= table_->NumFields(); ++i) {
    if (Declare(*table_, i)) continue;
    leftOut += (leftOut.empty() ? "" : ", ") + table_->GetFieldName(i);
  }
  return leftOut;
}

// Values of other types than those of text are there as text.
bool RecordsOut::Declare(AttributeTable& table, int field) {
  const char type = table.FieldType(field);
  const bool isText = IsTextType(type);
  const int length = isText ? table.FieldWidth(field) : kTextLength;
  const int decimals = isText ? table.FieldDecimals(field) : 0;
  const std::string name = table.GetFieldName(field);
  EncodeValue(std::string(schema::kField) + ' ' + (isText ? type : 'C') + ' ' + std::to_string(length) + ' ' +
                  std::to_string(decimals) + ' ' + name,
              encoded_);
  const std::size_t before = schema_.Count();
  const std::size_t bytes = AppendPieces(schema_, encoded_);
  if (schemaBytes_ + bytes > kMostBytes) {
    schema_.Truncate(before);
    return false;
  }
  schemaBytes_ += bytes;
  fields_.push_back({field, EncodedName(name)});
  return true;
}

// The parts of a record follow one another; its label is none.
bool RecordsOut::Take(const tEntity& entity) {
  if (!hasRecords_ || entity.Record == 0) return false;
  const bool isLabel = entity.IsLabel;
  if (record_ != entity.Record) {
    record_ = entity.Record;
    tag_ = {.table = tables_, .record = static_cast<std::int32_t>(record_), .part = -1};
    TakeValues(record_ - 1);
  }
  if (!isLabel) ++tag_.part;
  role_.Clear();
  if (isLabel) {
    EncodeValue(entity.Text, encoded_);
    AppendPieces(role_, text_.assign(role::kLabel).append(encoded_));
  } else {
    role_.Add() = RoleOf(entity);
  }
  return true;
}

void RecordsOut::TakeValues(std::int64_t row) {
  constexpr std::size_t kOfTag = 2000;  // application, numbers, role and label
  std::size_t all = kOfTag;
  values_.Clear();
  for (const Field& field : fields_) {
    const std::string_view value = table_->GetFieldData(field.number, row);
    if (value.empty()) continue;
    EncodeValue(value, encoded_);
    const std::size_t before = values_.Count();
    const std::size_t bytes = AppendPieces(values_, text_.assign(field.name).append(1, '=').append(encoded_));
    if (all + bytes > kMostBytes) {
      values_.Truncate(before);
      ++tag_.leftOut;
    } else {
      all += bytes;
    }
  }
}

std::string_view RecordsOut::RoleOf(const tEntity& entity) const {
  const bool isGroup = form_.shape == ElementForm::Shape::PointGroups || entity.PointCount() > 0;
  if (IsPointOrText(entity.bType)) return isGroup ? role::kOfGroup : role::kPoint;
  return entity.IsArea || entity.WasArea ? role::kRing : role::kChain;
}

}  // namespace tesselink
