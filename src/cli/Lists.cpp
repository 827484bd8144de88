// SPDX-License-Identifier: MIT
// table and formats: an attribute table as CSV, and the list of formats.
#include "app/Csv.h"
#include "app/SummaryText.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Exit.h"
#include "cli/Json.h"
#include "cli/Reading.h"
#include "core/io/Errors.h"
#include "core/io/Paths.h"
#include "core/io/Utf8.h"
#include "core/run/EncodingOption.h"
#include "core/run/Report.h"
#include "formats/Formats.h"
#include "formats/shape/DBFInFilter.h"

namespace tesselink {

int Run(const TableCommand& command) {
  const FilterOptions options = FilterOptionsOf(command.reading);
  Report report;
  DBFInFilter table(options.dialect, &report, ChosenPage(options));
  table.OpenExisting(command.file);
  std::string line;
  for (int i = 0; i <= table.NumFields(); ++i) line += (i > 0 ? "," : "") + CsvField(AsUtf8(table.GetFieldName(i)));
  Print(line + "\n");
  const std::int64_t records = table.NumRecs();
  for (std::int64_t record = 0; record < records && !Interrupted(); ++record) {
    if (options.dialect == Dialect::Standard && table.IsDeleted(record)) {
      report.Warn(WarningKind::Deleted, command.file + ", row " + std::to_string(record + 1) +
                                            ": was left out, because it is marked as deleted");
      continue;
    }
    line.clear();
    for (int i = 0; i <= table.NumFields(); ++i) {
      if (i > 0) line += ',';
      line += CsvField(AsUtf8(std::string(table.GetFieldData(i, record))));
    }
    Print(line += '\n');
  }
  table.WarnOfEncoding();
  FlushOutput();
  for (const Warning& warning : report.Warnings()) PrintWarning(WarningText(warning));
  return Interrupted() ? kExitCancelled : kExitDone;
}

int Run(const FormatsCommand& command) {
  Json list{{"input", Json::array()}, {"output", Json::array()}};
  const auto add = [](Json& rows, const auto& formats) {
    for (const auto& format : formats) {
      rows.push_back({{"key", format.key}, {"extension", format.Extension()}, {"name", format.Name()}});
    }
  };
  add(list["input"], AllFormats().Inputs());
  add(list["output"], AllFormats().Outputs());
  if (command.json) {
    Print(JsonText(list, 2) + "\n");
    return kExitDone;
  }
  for (const auto& [side, rows] : list.items()) {
    Print(side + "\n");
    for (const Json& row : rows) {
      std::string key = row["key"], extension = row["extension"];
      key.resize(10, ' ');
      extension.resize(11, ' ');
      Print("  " + key.append(extension).append(row["name"].get<std::string>()) + "\n");
    }
  }
  return kExitDone;
}

}  // namespace tesselink
