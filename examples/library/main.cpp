// SPDX-License-Identifier: MIT
// Converts a drawing and prints what came of it: convert-a-drawing INPUT OUTPUT
#include <cstdio>
#include <exception>
#include <string>

#include "core/io/Paths.h"
#include "core/run/ConversionRun.h"
#include "core/run/Nobody.h"
#include "formats/Formats.h"
#include "formats/cdf/CodeTables.h"

namespace {

// Where a run would look up what it remembers of earlier ones.
class NoMemory final : public tesselink::Settings {
 public:
  std::string Get(const std::string&, const std::string&, const std::string&, const std::string& whenAbsent) override {
    return whenAbsent;
  }
  void Set(const std::string&, const std::string&, const std::string&, const std::string&) override {}
  std::map<std::string, std::string> All(const std::string&, const std::string&) override { return {}; }
};

// The drop-down text of the first format with the extension of a path; empty when there is none.
template <typename Rows>
std::string FormatOf(const Rows& rows, const std::string& path) {
  for (const auto& row : rows) {
    if (row.Extension() == tesselink::ExtensionOf(path)) return row.entry;
  }
  return {};
}

int Convert(const std::string& input, const std::string& output) {
  const tesselink::FormatTable& formats = tesselink::AllFormats();
  tesselink::ConversionRequest request;
  request.inputs = {input};
  request.OutFile = output;
  request.InFormat = FormatOf(formats.Inputs(), input);
  request.OutFormat = FormatOf(formats.Outputs(), output);
  request.options.dialect = tesselink::Dialect::Standard;
  request.options.programFolder = DATA_FOLDER;
  request.options.moduleFolder = MODULE_FOLDER;
  if (request.InFormat.empty() || request.OutFormat.empty()) {
    std::fprintf(stderr, "a file's extension tells no format\n");
    return 2;
  }
  // A program with a person before it derives from Nobody and answers what it can.
  tesselink::Nobody nobody;
  NoMemory memory;
  const tesselink::RunSummary summary =
      tesselink::ConversionRun(formats, nobody, memory, tesselink::FillerFromCodeTables()).Run(request);
  for (const tesselink::Warning& warning : summary.report.Warnings()) {
    std::printf("warning: %s\n", warning.text.c_str());
  }
  if (summary.outcome != tesselink::RunOutcome::Done) {
    std::fprintf(stderr, "%s %s\n", summary.error.c_str(), summary.reason.c_str());
    return 1;
  }
  std::printf("%lld elements read, %lld written, %zu layers\n", static_cast<long long>(summary.read.Total()),
              static_cast<long long>(summary.written.Total()), summary.layers.size());
  return 0;
}

}  // namespace

int main(int count, char** values) {
  if (count != 3) {
    std::fprintf(stderr, "usage: convert-a-drawing INPUT OUTPUT\n");
    return 2;
  }
  try {
    return Convert(values[1], values[2]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
