// SPDX-License-Identifier: MIT
#include "cli/BatchPlan.h"

#include <algorithm>
#include <set>
#include <unordered_set>

#include "cli/Console.h"
#include "cli/Convert.h"
#include "cli/Reading.h"
#include "core/io/Errors.h"
#include "core/io/OutputPlace.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"
#include "core/run/Coordinates.h"
#include "core/run/WrittenFiles.h"
#include "formats/Formats.h"

namespace tesselink {
namespace {

// Files that options name, each once.
std::vector<std::string> FilesOfOptions(const ReadingOptions& options, const OutputFormat& output) {
  std::set<std::string> files;
  const auto add = [&](const Format& row) {
    for (const FormatOption& option : row.options) {
      if (option.kind == FormatOption::Kind::File) files.insert(options.own.Text(option.name));
    }
  };
  for (const InputFormat& row : AllFormats().Inputs()) add(row);
  add(output);
  files.insert(options.layerCodes);
  for (const std::string& file : SystemFiles(options.systems)) files.insert(file);
  files.erase("");
  return {files.begin(), files.end()};
}

std::string AsFolder(const std::string& named) {
  const std::string folder = named.starts_with('-') ? "./" + named : named;
  return folder.ends_with('/') ? folder : folder + "/";
}

}  // namespace

BatchPlan::BatchPlan(const BatchCommand& command, std::vector<BatchInput> inputs)
    : command_(command),
      inputs_(std::move(inputs)),
      format_(OutputFormatOf(command.conversion.to, "")),
      options_(FilterOptionsOf(command.conversion.reading)),
      into_(AsFolder(command.into)),
      optionFiles_(FilesOfOptions(command.conversion.reading, format_)) {
  CheckOptions();
}

ConvertCommand BatchPlan::ConversionOf(std::size_t i) const {
  ConvertCommand conversion = command_.conversion;
  conversion.inputs = {Input(i)};
  conversion.output = Output(i);
  return conversion;
}

// Which options go together depends on the formats, and these on extensions.
void BatchPlan::CheckOptions() const {
  if (command_.conversion.reading.lineEnds == LineEndsChoice::Copy) {
    throw UsageError("--line-ends copy= names one file; a batch repairs many: --line-ends replace");
  }
  std::set<std::string> seen;
  for (std::size_t i = 0; i < Size(); ++i) {
    if (seen.insert(ExtensionOf(Input(i))).second) CheckConversion(ConversionOf(i));
  }
}

std::string BatchPlan::Output(std::size_t i) const {
  const std::string kept = inputs_[i].Kept();
  return into_ + FolderOf(kept) + StripExtension(FileNameOf(kept)) + format_.Extension();
}

std::vector<std::string> BatchPlan::Read(std::size_t i) const {
  std::vector<std::string> files{Input(i)};
  const InputFormat& format = InputFormatOf(command_.conversion.reading, Input(i));
  for (const Companion& companion : format.companions) {
    if (std::string file = PartnerFile(Input(i), companion.extension); !file.empty()) files.push_back(std::move(file));
  }
  files.insert(files.end(), optionFiles_.begin(), optionFiles_.end());
  return files;
}

std::vector<std::string> BatchPlan::Existing(std::size_t i) const {
  return ReplacedFiles(Output(i), format_, options_);
}

void BatchPlan::TidyUp(std::size_t i) const noexcept {
  try {
    OutputOptions options{.overwrite = true, .readOnly = true};
    if (format_.parts) options.parts = format_.parts(options_.own);
    const OutputPlace place(Output(i), options);  // looks for what was left there
  } catch (const std::exception&) {
    // The next run to this output will say why.
  }
}

std::vector<std::size_t> BatchPlan::ByOutput(const std::function<std::string(const std::string&)>& key) const {
  std::vector<std::pair<std::string, std::size_t>> keys;
  for (std::size_t i = 0; i < Size(); ++i) keys.emplace_back(key(Output(i)), i);
  std::sort(keys.begin(), keys.end());
  std::vector<std::size_t> order;
  for (const auto& [text, i] : keys) order.push_back(i);
  return order;
}

std::vector<std::string> BatchPlan::AlikeOutputs() const {
  std::vector<std::string> lines;
  const std::vector<std::size_t> order = ByOutput([](const std::string& output) { return FoldedCase(output); });
  for (std::size_t k = 1; k < order.size(); ++k) {
    const std::string one = Output(order[k - 1]), other = Output(order[k]);
    if (one != other && FoldedCase(one) == FoldedCase(other)) {
      lines.push_back(one + " and " + other +
                      " differ in the case of letters alone: they are one file where that does not count");
    }
  }
  return lines;
}

std::vector<Obstacle> BatchPlan::Collisions() {
  std::vector<Obstacle> collisions;
  std::vector<bool> isTwice(Size());
  const std::vector<std::size_t> order = ByOutput([](const std::string& output) { return output; });
  for (std::size_t k = 1, first = 0; k < order.size(); ++k) {
    const std::size_t one = order[first], other = order[k];
    if (Output(one) != Output(other)) {
      first = k;
    } else if (SameFile(Input(one), Input(other)) && FileNameOf(Input(one)) == FileNameOf(Input(other))) {
      isTwice[other] = true;
    } else {
      collisions.push_back({other, Input(one) + " and " + Input(other) + " would both become " + Output(one)});
    }
  }
  for (Obstacle& collision : collisions) {
    const auto until = isTwice.begin() + static_cast<std::ptrdiff_t>(collision.input);
    collision.input -= static_cast<std::size_t>(std::count(isTwice.begin(), until, true));
  }
  std::size_t i = 0;
  std::erase_if(inputs_, [&](const BatchInput&) { return isTwice[i++]; });
  return collisions;
}

// The number of an input, and a file of its output. Most batches begin in an empty folder: each folder is listed once.
std::vector<std::pair<std::size_t, std::string>> BatchPlan::AllExisting() {
  std::vector<std::pair<std::size_t, std::string>> existing;
  std::unordered_set<std::string> stems;  // of the names in a folder, in small letters
  std::string listed;
  for (const std::size_t i : ByOutput([](const std::string& output) { return output; })) {
    const std::string output = Output(i), folder = FolderOf(output);
    if (folder != listed) {
      std::vector<std::string> names;
      sys::List(folder, "", names);
      stems.clear();
      for (const std::string& name : names) {
        stems.insert(LowerCase(StripExtension(name)));
        hasLeftovers_ = hasLeftovers_ || name.starts_with(".tesselink-");
      }
      listed = folder;
    }
    const std::vector<std::string> parts = format_.parts ? format_.parts(options_.own) : std::vector<std::string>{};
    const auto isThere = [&](const std::string& part) {
      return stems.count(LowerCase(StripExtension(FileNameOf(BehindStem(output, part))))) > 0;
    };
    if (!isThere("") && std::none_of(parts.begin(), parts.end(), isThere)) continue;
    for (std::string& file : Existing(i)) existing.emplace_back(i, std::move(file));
  }
  return existing;
}

std::vector<Obstacle> BatchPlan::Protected(const std::string& report, const MayReplace& mayReplace) {
  const auto existing = AllExisting();
  std::set<std::pair<std::uint64_t, std::uint64_t>> read;  // by device and number, since a file may have many names
  const auto numberOf = [](const std::string& file) {
    sys::Status status;
    sys::StatusOf(file, status);
    return std::make_pair(status.device, status.inode);
  };
  if (!report.empty()) read.insert(numberOf(report));
  for (std::size_t i = 0; i < Size() && !existing.empty(); ++i) {
    for (const std::string& file : Read(i)) read.insert(numberOf(file));
  }
  std::vector<Obstacle> obstacles;
  for (const auto& [i, file] : existing) {
    if (read.count(numberOf(file)) > 0) {
      obstacles.push_back(
          {i, file + ": is read by this batch or its report, and would be replaced by the output of " + Input(i)});
    } else if (!mayReplace(i, file)) {
      obstacles.push_back({i, file + ": exists already"});
    }
  }
  return obstacles;
}

}  // namespace tesselink
