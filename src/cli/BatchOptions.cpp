// SPDX-License-Identifier: MIT
#include "cli/BatchOptions.h"

#include <algorithm>

namespace tesselink {
namespace {

constexpr const char* kBatchExamples =
    "Examples:\n"
    "  # every shapefile below a folder, as many at a time as there are cores\n"
    "  tesselink batch --dialect standard --from shp --to dxf --into drawings --report drawings.jsonl examples\n"
    "  # the same again passes over what is done\n"
    "  tesselink batch --dialect standard --from shp --to dxf --into drawings --report drawings.jsonl --resume "
    "examples\n"
    "  # the commands alone, for other programs to run\n"
    "  tesselink batch --dialect standard --to asc --into ascii --dry-run 'examples/*.shp'\n"
    "\n"
    "Exit codes: 0 done, 1 nothing was begun, 2 wrong usage, 3 some failed or ended early, 130 cancelled.";

constexpr const char* kBatch = "--part-of-batch";
constexpr const char* kMemory = "--memory-of-batch";
constexpr const char* kNothingLeft = "--nothing-left";
constexpr unsigned kMostJobs = 1024;
constexpr double kLongestTime = 1e9;

// Of the options that `convert` has too, those that say nothing of how a drawing is converted.
const std::vector<std::string> kNotHandedOn{"overwrite", "quiet", "json", "progress", "no-progress"};
const std::vector<std::string> kOwn{"exclude", "into",    "jobs",   "report", "resume",
                                    "dry-run", "timeout", "memory", "help"};

bool IsOneOf(const CLI::Option& option, const std::vector<std::string>& names) {
  return std::any_of(names.begin(), names.end(), [&](const std::string& name) { return option.check_lname(name); });
}

}  // namespace

void AddBatchOptions(CLI::App& command, BatchCommand& values, const CLI::Validator& size) {
  command.add_option("INPUT", values.inputs, "Files, folders and patterns")
      ->required()
      ->type_name("INPUT...")
      ->expected(-1);
  command
      .add_option("--exclude", values.exclude,
                  "Leave this file of a folder or a pattern out; may be\ngiven again for others")
      ->type_name("FILE")
      ->expected(1)
      ->take_all()
      ->allow_extra_args(false);
  command.add_option("--into", values.into, "Folder of the outputs; trees below input folders are kept")
      ->required()
      ->type_name("FOLDER");
  command.add_option("-j,--jobs", values.jobs, "How many at a time (default: one a core)")
      ->type_name("N")
      ->check(CLI::Range(1U, kMostJobs).description(""));
  command.add_option("--report", values.report, "Write a line of JSON for each file")->type_name("FILE.jsonl");
  command.add_flag("--resume", values.resume,
                   "Pass over what the report says is done, with the same\n"
                   "options and version, of inputs that have not changed");
  command.add_flag(
      "--dry-run", values.dryRun,
      "Print the commands, one a line, and make nothing;\nwith --json the plan, and what stands against it");
  command.add_option("--timeout", values.timeout, "End a conversion that takes longer")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.001, kLongestTime).description(""));
  command.add_option("--memory", values.memory, "End a conversion that takes more, as 500M or 2G")
      ->type_name("SIZE")
      ->transform(size);
  command.footer(kBatchExamples);
}

std::vector<std::string> ConversionOptionsGiven(const CLI::App& command) {
  std::vector<std::string> arguments;
  for (const CLI::Option* option : command.get_options()) {
    if (option->count() == 0 || option->get_lnames().empty()) continue;
    if (IsOneOf(*option, kNotHandedOn) || IsOneOf(*option, kOwn)) continue;
    const std::string name = "--" + option->get_lnames().front();
    if (option->get_items_expected_max() == 0) {
      arguments.push_back(name);
      continue;
    }
    for (const std::string& value : option->results()) {
      if (value.starts_with('-')) {
        arguments.push_back(name + "=" + value);
      } else {
        arguments.insert(arguments.end(), {name, value});
      }
    }
  }
  return arguments;
}

void AddPartOfBatch(CLI::App& command, ConvertCommand& values, const std::vector<std::string>& arguments) {
  if (std::count(arguments.begin(), arguments.end(), kBatch) == 0) return;
  command.add_option(kBatch, values.batch);
  command.add_option(kMemory, values.memoryOfBatch);
  command.add_flag(kNothingLeft, values.nothingLeft);
}

std::vector<std::string> PartOfBatch(int process, std::uint64_t memory, bool leftovers) {
  std::vector<std::string> arguments{kBatch, std::to_string(process)};
  if (memory > 0) arguments.insert(arguments.end(), {kMemory, std::to_string(memory)});
  if (!leftovers) arguments.emplace_back(kNothingLeft);
  return arguments;
}

}  // namespace tesselink
