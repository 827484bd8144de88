// SPDX-License-Identifier: MIT
#include "formats/grid/TRDigOut.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "core/io/Errors.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "core/run/Report.h"

namespace tesselink {
namespace {

// Of a table that is none, the header announces any number of fields.
constexpr int kMostNamed = 40;
constexpr const char* kAdvice = "; name a dBase table of townships, ranges and sections";

bool SteersLines(char c) { return static_cast<unsigned char>(c) < ' '; }

// What would break a line, or be taken for the quotes that these files do not have.
bool Breaks(char c) { return c == ',' || c == '"' || SteersLines(c); }

bool SameName(std::string_view a, std::string_view b) { return EqualsIgnoringCase(Trimmed(a), Trimmed(b)); }

}  // namespace

std::vector<FormatOption> TRDigOut::Options() {
  return {{.name = "township",
           .help = "Field of the townships, for a T/R Digitizer output",
           .value = "NAME",
           .strict = true},
          {.name = "range", .help = "Field of the ranges", .value = "NAME", .strict = true},
          {.name = "section", .help = "Field of the sections", .value = "NAME", .strict = true},
          {.name = "table",
           .help = "Table with these three fields (the shapefile's own)",
           .value = "FILE.dbf",
           .kind = FormatOption::Kind::File,
           .strict = true}};
}

void TRDigOut::Create(const std::string& path) {
  path_ = path;
  created_ = asked_ = ownTables_ = tableReady_ = false;
  records_ = recordsBefore_ = chains_ = 0;
  // What is there already may be the table that is still to be named.
  if (std::error_code ignored; std::filesystem::exists(path, ignored)) {
    CheckCreatable(path, false);
  } else {
    CreateFile();
  }
}

void TRDigOut::CreateFile() {
  file_ = FileWriter(path_);
  created_ = true;
}

void TRDigOut::SourceOpened(InputFilter& source) {
  recordsBefore_ += records_;
  records_ = source.Records();
  source_ = source.filename();
  ownTable_ = source.AttributesPath();
  if (ownTables_) tableReady_ = false;
}

std::vector<std::string> TRDigOut::Outputs() const {
  return created_ ? OutputFilter::Outputs() : std::vector<std::string>();
}

void TRDigOut::PrepareTable() {
  if (!asked_) {
    asked_ = true;
    answer_ = interaction().LocateFields(
        {"a table of townships, ranges and sections", {"township", "range", "section"}, ownTable_});
    ownTables_ = answer_.table == ownTable_ || SameFile(answer_.table, ownTable_);
  }
  OpenTable(ownTables_ ? ownTable_ : answer_.table);
  tableReady_ = true;
}

void TRDigOut::OpenTable(const std::string& path) {
  if (path.empty()) {
    throw Error(source_ + ": has no table beside it that tells townships, ranges and sections; name one");
  }
  if (const std::string reason = WhyNotReadable(path); !reason.empty()) throw Error(reason + kAdvice);
  if (SameFile(path, path_)) throw Error(path + ": is the table to be read; give the output another name");
  try {
    table_.filename(path);
    rows_ = table_.NumRecs();
    // Names that cannot be read are those of a file that is no table.
    for (int i = 0; i <= table_.NumFields(); ++i) table_.GetFieldName(i);
  } catch (const Error& error) {
    throw Error(error.what() + std::string(kAdvice));
  }
  fields_ = {FieldOf(answer_.fields.at(0), "township"), FieldOf(answer_.fields.at(1), "range"),
             FieldOf(answer_.fields.at(2), "section")};
}

// The table itself takes an unknown name for its first field, which would be the wrong township without a word.
int TRDigOut::FieldOf(const std::string& name, const char* meaning) const {
  for (int i = 0; i <= table_.NumFields(); ++i) {
    if (SameName(table_.GetFieldName(i), name)) return i;
  }
  throw Error(table_.filename() + ": has no field \"" + name + "\" for the " + meaning + "; " + FieldNames());
}

std::string TRDigOut::FieldNames() const {
  std::string names;
  const int last = table_.NumFields();
  for (int i = 0; i <= std::min(last, kMostNamed - 1); ++i) {
    std::string name = table_.GetFieldName(i);
    std::replace_if(name.begin(), name.end(), SteersLines, ' ');
    names += (i == 0 ? "its fields are " : ", ") + name;
  }
  if (last >= kMostNamed) names += " and " + std::to_string(last + 1 - kMostNamed) + " more";
  return names.empty() ? "it has no fields at all" : names;
}

WriteResult TRDigOut::Write(tEntity& entity) {
  if (!IsChain(entity.bType)) return WriteResult::Skipped;
  if (!tableReady_) PrepareTable();
  if (!created_) CreateFile();
  WriteChain(entity, RowOf(entity));
  ++chains_;
  if (entity.HasHeight()) Lost(WarningKind::Heights);
  return WriteResult::Written;
}

// Counted from 0.
std::int64_t TRDigOut::RowOf(const tEntity& entity) const {
  if (entity.Record == 0) return chains_;
  return entity.Record - 1 + (ownTables_ ? 0 : recordsBefore_);
}

void TRDigOut::WriteHead(std::int64_t row, std::size_t vertices) {
  if (row >= rows_) {
    report().Warn(WarningKind::NoRow, table_.filename() + ": has " + Counted(rows_, "row") + "; for row " +
                                          std::to_string(row + 1) + " township, range and section were left empty");
  }
  file_.Write("SEC");
  for (const int field : fields_) file_.Write(",").Write(Value(field, row));
  file_.Write(",").Integer(static_cast<std::int64_t>(vertices)).EndLine();
}

std::string_view TRDigOut::Value(int field, std::int64_t row) {
  if (row >= rows_) return {};
  const std::string_view value = table_.GetFieldData(field, row);
  if (std::none_of(value.begin(), value.end(), Breaks)) return value;
  report().Warn(WarningKind::Characters, table_.filename() + ", row " + std::to_string(row + 1) +
                                             ": a comma, a quote or a control character became a blank");
  cleaned_ = value;
  std::replace_if(cleaned_.begin(), cleaned_.end(), Breaks, ' ');
  return cleaned_;
}

void TRDigOut::WriteChain(const tEntity& entity, std::int64_t row) {
  const tEntity::Index last = entity.PointCount();
  const bool closes = entity.LacksClosingVertex();
  WriteHead(row, static_cast<std::size_t>(last) + (closes ? 2 : 1));
  for (tEntity::Index i = 0; i <= last; ++i) file_.Number(entity.x(i)).Write(",").Number(entity.Y(i)).EndLine();
  if (closes) file_.Number(entity.x(0)).Write(",").Number(entity.Y(0)).EndLine();
}

// Where a table was asked for and none came of it, there is nothing to complete, and the name may be the table's.
void TRDigOut::Complete() {
  if (asked_ && chains_ == 0) return Drop();
  if (!created_) CreateFile();
  file_.Close();
}

void TRDigOut::Drop() noexcept {
  file_.Discard();
  if (created_) RemoveWritten(path_);
  created_ = false;
}

}  // namespace tesselink
