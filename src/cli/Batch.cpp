// SPDX-License-Identifier: MIT
// batch: many conversions, and an account of them.
#include <cstdio>
#include <optional>

#include "app/ShellText.h"
#include "cli/BatchAccount.h"
#include "cli/BatchPlan.h"
#include "cli/BatchProgress.h"
#include "cli/BatchReport.h"
#include "cli/BatchRun.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Exit.h"
#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/Paths.h"
#include "core/io/Processes.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"

namespace tesselink {
namespace {

constexpr std::size_t kScreenful = 20;
// With less, libraries may take what they cannot load for what is not there, and go on otherwise.
constexpr std::uint64_t kLeastMemory = std::uint64_t{32} << 20;

// Tells what stands against a batch, as much as a screen holds. Throws Error where there is something.
void Refuse(const std::vector<Obstacle>& obstacles, const std::string& advice) {
  if (obstacles.empty()) return;
  for (std::size_t i = 0; i < obstacles.size() && i < kScreenful; ++i) PrintError(obstacles[i].text);
  if (obstacles.size() > kScreenful) {
    PrintError("and " + std::to_string(obstacles.size() - kScreenful) + " more like these");
  }
  throw Error("nothing was converted: " + advice);
}

void TellAlikeOutputs(const BatchCommand& command, const BatchPlan& plan) {
  if (command.conversion.reading.quiet) return;
  const std::vector<std::string> alike = plan.AlikeOutputs();
  for (std::size_t i = 0; i < alike.size() && i < kScreenful; ++i) PrintWarning(alike[i]);
  if (alike.size() > kScreenful) {
    PrintWarning("and " + std::to_string(alike.size() - kScreenful) + " more pairs of such names");
  }
}

// Each line works by itself, on whatever machine and in whatever order.
void PrintCommand(const BatchCommand& command, const BatchPlan& plan, std::size_t input, bool overwrite) {
  const std::string folder = FolderOf(plan.Output(input));
  std::string line =
      "mkdir -p " + ShellQuoted(folder.substr(0, folder.size() - 1)) + " && " + ShellQuoted(sys::OwnName());
  for (const std::string& argument : ConversionArguments(command, plan, input, overwrite)) {
    line += " " + ShellQuoted(argument);
  }
  if (line.find('\n') != std::string::npos) {
    throw Error(plan.Input(input) + ": its name has a line break, so its command is no line");
  }
  Print(line + "\n");
}

void RefuseCollisions(BatchPlan& plan) {
  Refuse(
      plan.Collisions(),
      "name such inputs in batches of their own, take one format by --from KEY, or leave files out by --exclude FILE");
}

// The inputs that an earlier run has not converted.
std::vector<std::size_t> ToDo(const BatchCommand& command, const BatchPlan& plan, const BatchReport* report) {
  std::vector<std::size_t> inputs;
  for (std::size_t i = 0; i < plan.Size(); ++i) {
    const bool isDone = report != nullptr && command.resume &&
                        report->IsDone(plan.Input(i), ConversionJson(command, plan, i), plan.Existing(i).size());
    if (!isDone) inputs.push_back(i);
  }
  return inputs;
}

// Which files the outputs of a batch may replace.
BatchPlan::MayReplace MayReplace(const BatchCommand& command, const BatchPlan& plan, const BatchReport* report,
                                 const std::vector<std::size_t>& inputs) {
  std::vector<bool> isToDo(plan.Size());
  for (const std::size_t i : inputs) isToDo[i] = true;
  return [&command, &plan, report, isToDo](std::size_t i, const std::string& file) {
    return !isToDo[i] || command.conversion.overwrite ||
           (command.resume && report != nullptr && report->IsOwn(plan.Input(i), file));
  };
}

void RefuseToReplace(const BatchCommand& command, BatchPlan& plan, const BatchReport* report,
                     const std::vector<std::size_t>& inputs) {
  Refuse(plan.Protected(command.report, MayReplace(command, plan, report, inputs)),
         "give -O (--overwrite) to replace outputs that exist, or another folder with --into; what is read is never "
         "replaced");
}

bool WasCancelled(const BatchAccount& account) {
  return Interrupted() && account.Ended() + account.PassedOver() < account.Files();
}

int ExitCode(const BatchAccount& account, bool areAllSearched) {
  if (WasCancelled(account)) return kExitCancelled;
  return account.AllConverted() && areAllSearched ? kExitDone : kExitEndedEarly;
}

void TellEnd(const BatchCommand& command, const BatchAccount& account, std::chrono::milliseconds elapsed) {
  account.PrintDetails(command.report);
  if (command.conversion.json) {
    Print(JsonText(account.AsJson(elapsed), 2) + "\n");
  } else if (!command.conversion.reading.quiet) {
    Print(Visible(account.Line(command.into, elapsed)) + "\n");
  }
  if (!WasCancelled(account)) return;
  PrintError(command.report.empty()
                 ? "cancelled; with --report FILE.jsonl a batch can be taken up where it was cancelled, by --resume"
                 : "cancelled; the same command with --resume goes on");
}

int Convert(const BatchCommand& command, BatchPlan& plan, const BatchInputs& found) {
  std::optional<BatchReport> report;
  if (!command.report.empty()) report.emplace(command.report, command.resume, command.conversion.overwrite);
  BatchReport* const reported = report ? &*report : nullptr;
  const std::vector<std::size_t> inputs = ToDo(command, plan, reported);
  RefuseToReplace(command, plan, reported, inputs);
  if (!MakeFolders(command.into)) throw Error(SystemReason(command.into, "could not be created"));
  if (report) report->Begin();
  TellAlikeOutputs(command, plan);
  BatchAccount account(plan.Size());
  for (std::size_t i = inputs.size(); i < plan.Size(); ++i) account.PassOver();
  BatchProgress progress(command.conversion);
  std::string trouble;
  try {
    BatchRun(command, plan, reported, account).Run(inputs, progress);
    if (report) report->Close();
  } catch (const Error& error) {
    trouble = error.what();
  }
  progress.Erase();
  for (const std::string& closed : found.closed) PrintError(closed);
  TellEnd(command, account, progress.Elapsed());
  if (trouble.empty()) return ExitCode(account, found.closed.empty());
  PrintError(trouble);
  return kExitEndedEarly;
}

std::vector<std::string> TextsOf(const std::vector<Obstacle>& obstacles) {
  std::vector<std::string> texts;
  for (const Obstacle& obstacle : obstacles) {
    if (texts.empty() || texts.back() != obstacle.text) texts.push_back(obstacle.text);
  }
  return texts;
}

// The same plan for programs: what stands against it is part of it.
int PrintPlan(const BatchCommand& command, BatchPlan& plan, const BatchInputs& found) {
  const std::vector<Obstacle> collisions = plan.Collisions();
  std::optional<BatchReport> report;
  if (!command.report.empty()) report.emplace(command.report, command.resume, command.conversion.overwrite);
  BatchReport* const reported = report ? &*report : nullptr;
  const std::vector<std::size_t> inputs = ToDo(command, plan, reported);
  const std::vector<Obstacle> existing = plan.Protected(command.report, MayReplace(command, plan, reported, inputs));
  std::vector<bool> isDone(plan.Size(), true);
  for (const std::size_t i : inputs) isDone[i] = false;
  Json files = Json::array();
  for (std::size_t i = 0; i < plan.Size(); ++i) {
    const bool done = isDone[i];
    files.push_back({{"input", AsUtf8(plan.Input(i))}, {"output", AsUtf8(plan.Output(i))}, {"done", done}});
  }
  for (const std::vector<Obstacle>* obstacles : {&existing, &collisions}) {
    for (const Obstacle& obstacle : *obstacles) files[obstacle.input]["against"] = AsUtf8(obstacle.text);
  }
  std::vector<std::string> notes = found.notes;
  for (const std::vector<std::string>& more : {found.closed, plan.AlikeOutputs()}) {
    notes.insert(notes.end(), more.begin(), more.end());
  }
  Print(JsonText({{"files", files},
                  {"collisions", TextsJson(TextsOf(collisions))},
                  {"existing", TextsJson(TextsOf(existing))},
                  {"notes", TextsJson(notes)}}) +
        "\n");
  return collisions.empty() && existing.empty() ? kExitDone : kExitFailed;
}

int PrintCommands(const BatchCommand& command, BatchPlan& plan, const BatchInputs& found) {
  RefuseToReplace(command, plan, nullptr, ToDo(command, plan, nullptr));
  TellAlikeOutputs(command, plan);
  for (const std::string& closed : found.closed) PrintError(closed);
  for (std::size_t i = 0; i < plan.Size(); ++i) PrintCommand(command, plan, i, command.conversion.overwrite);
  return found.closed.empty() ? kExitDone : kExitEndedEarly;
}

}  // namespace

int Run(const BatchCommand& command) {
  TakeFailedWritesAsErrors();
  if (command.resume && command.report.empty()) throw UsageError("--resume goes by a report; give --report as well");
  const bool isPlan = command.dryRun && command.conversion.json;
  if (command.dryRun && !isPlan && !command.report.empty()) {
    throw UsageError("--dry-run converts nothing, and writes no --report");
  }
  if (command.into.empty()) throw UsageError("--into: give the name of a folder");
  if (command.memory > 0 && command.memory < kLeastMemory) throw UsageError("--memory: give 32M or more");
  BatchInputs found = FindInputs(command);
  if (!command.conversion.reading.quiet && !isPlan) {
    for (const std::string& note : found.notes) PrintError(note);
  }
  BatchPlan plan(command, std::move(found.files));
  if (isPlan) return PrintPlan(command, plan, found);
  RefuseCollisions(plan);
  if (plan.Size() == 0) throw Error("nothing to convert: no drawings were found there");
  return command.dryRun ? PrintCommands(command, plan, found) : Convert(command, plan, found);
}

}  // namespace tesselink
