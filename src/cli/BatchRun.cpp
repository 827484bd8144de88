// SPDX-License-Identifier: MIT
#include "cli/BatchRun.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <thread>

#include "cli/BatchOptions.h"
#include "cli/Console.h"
#include "cli/Exit.h"
#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/Numbers.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"

namespace tesselink {
namespace {

constexpr std::chrono::seconds kGrace{5};   // from being asked to end to being killed
constexpr std::int64_t kLongestWait = 200;  // milliseconds
constexpr int kSignalBase = 128;            // as shells have it
constexpr std::uint32_t kAnybody = 0777;

// The last thing that a program said of itself, without its name before it.
std::string LastMessage(const std::string& errors) {
  constexpr std::string_view kPrefix = "tesselink: ", kWarning = "warning: ";
  std::string message;
  for (std::size_t begin = 0, end; begin < errors.size(); begin = end + 1) {
    end = std::min(errors.find('\n', begin), errors.size());
    const std::string_view line = std::string_view(errors).substr(begin, end - begin);
    if (!line.starts_with(kPrefix)) continue;
    const std::string_view said = line.substr(kPrefix.size());
    if (message.empty() || !said.starts_with(kWarning)) message = said;
  }
  return message;
}

bool IsOfMemory(const std::string& reason) {
  return reason.find("not enough memory") != std::string::npos || reason.find("std::bad_alloc") != std::string::npos;
}

std::string SizeText(std::uint64_t bytes) {
  const char* unit = " bytes";
  for (const char* next : {"K", "M", "G"}) {
    if (bytes % 1024 != 0) break;
    bytes /= 1024;
    unit = next;
  }
  return std::to_string(bytes) + unit;
}

bool IsOfPeople(int signal) { return signal == SIGTERM || signal == SIGINT || signal == SIGHUP; }

std::string WarningOf(const Json& summary, std::string_view kind) {
  for (const Json& warning : summary.value("warnings", Json::array())) {
    if (warning.value("kind", "") == kind) return warning.value("text", "");
  }
  return {};
}

const char* NameOf(BatchOutcome outcome) {
  switch (outcome) {
    case BatchOutcome::Converted:
      return "converted";
    case BatchOutcome::Incomplete:
      return "incomplete";
    case BatchOutcome::Failed:
    case BatchOutcome::Cancelled:
      break;
  }
  return "failed";
}

}  // namespace

bool MakeFolders(const std::string& path) {
  for (std::size_t slash = path.find('/', 1);; slash = path.find('/', slash + 1)) {
    const std::string folder = path.substr(0, slash);
    if (!folder.empty() && !sys::MakeFolder(folder, kAnybody)) {
      const int reason = errno == EEXIST ? ENOTDIR : errno;
      sys::Status status;  // an existing folder may be refused for another reason, as on a disk that is read only
      const bool isThere = sys::StatusOf(folder, status) && status.kind == sys::FileKind::Folder;
      errno = reason;
      if (!isThere) return false;
    }
    if (slash == std::string::npos) return true;
  }
}

Json ConversionJson(const BatchCommand& command, const BatchPlan& plan, std::size_t input) {
  return {{"version", TESSELINK_VERSION},
          {"dialect", command.conversion.reading.dialect == Dialect::Standard ? "standard" : "classic"},
          {"options", TextsJson(command.options)},
          {"read", StatesOf(plan.Read(input))}};
}

std::vector<std::string> ConversionArguments(const BatchCommand& command, const BatchPlan& plan, std::size_t input,
                                             bool overwrite) {
  std::vector<std::string> arguments{"convert"};
  arguments.insert(arguments.end(), command.options.begin(), command.options.end());
  if (overwrite) arguments.emplace_back("--overwrite");
  arguments.insert(arguments.end(), {plan.Input(input), plan.Output(input)});
  return arguments;
}

BatchRun::BatchRun(const BatchCommand& command, const BatchPlan& plan, BatchReport* report, BatchAccount& account)
    : command_(command),
      plan_(plan),
      report_(report),
      account_(account),
      program_(sys::OwnProgram()),
      mostJobs_(command.jobs > 0 ? command.jobs : std::max(1U, std::thread::hardware_concurrency())) {}

void BatchRun::Run(const std::vector<std::size_t>& inputs, BatchProgress& progress) {
  const sys::SignalsHeld held;
  waiting_.assign(inputs.rbegin(), inputs.rend());
  try {
    while (!jobs_.empty() || !(waiting_.empty() || isStopping_)) {
      if (Interrupted() && !isStopping_) AskAll();
      while (!isStopping_ && !waiting_.empty() && jobs_.size() < mostJobs_) StartNext();
      if (!jobs_.empty()) Wait();
      CollectEnded();
      EndLate();
      progress.Show(account_);
    }
  } catch (const Error&) {
    AskAll();
    while (std::any_of(jobs_.begin(), jobs_.end(), [](Job& job) { return !job.process.HasEnded(); })) {
      Wait();
      EndLate();
    }
    throw;
  }
}

// Where no process can be made now, the next try comes when one has ended.
void BatchRun::StartNext() {
  const std::size_t input = waiting_.back();
  waiting_.pop_back();
  if (Start(input)) return;
  waiting_.push_back(input);
  Wait();
  CollectEnded();
}

// False: another time there may be room.
bool BatchRun::Start(std::size_t input) {
  const std::string output = plan_.Output(input);
  if (const std::string folder = FolderOf(output); !MakeFolders(folder.substr(0, folder.find_last_not_of('/') + 1))) {
    Fail(input, SystemReason(folder, "could not be created"));
    return true;
  }
  std::vector<std::string> arguments = ConversionArguments(command_, plan_, input, MayReplace(input));
  arguments.insert(arguments.begin(), "tesselink");
  for (std::string& own : PartOfBatch(sys::OwnProcess(), command_.memory, plan_.HasLeftovers()))
    arguments.push_back(std::move(own));
  arguments.insert(arguments.end(), {"--json", "--no-progress"});
  Json conversion = ConversionJson(command_, plan_, input);
  if (report_ != nullptr) report_->NoteBegun(plan_.Input(input));
  try {
    const auto now = Clock::now();
    const auto until =
        command_.timeout > 0
            ? now + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(command_.timeout))
            : Clock::time_point::max();
    jobs_.push_back({input, std::move(conversion), ChildProcess(program_, arguments), now, until});
  } catch (const ChildNotStarted& failure) {
    if (failure.MayPass() && !jobs_.empty()) return false;
    errno = failure.reason;
    Fail(input, SystemReason(program_, "no process could be started"));
  }
  return true;
}

bool BatchRun::MayReplace(std::size_t input) const {
  if (command_.conversion.overwrite || report_ == nullptr || !command_.resume) return command_.conversion.overwrite;
  const std::vector<std::string> existing = plan_.Existing(input);
  return !existing.empty() && std::all_of(existing.begin(), existing.end(), [&](const std::string& file) {
    return report_->IsOwn(plan_.Input(input), file);
  });
}

// What was not even begun.
void BatchRun::Fail(std::size_t input, const std::string& reason) {
  const std::string& path = plan_.Input(input);
  if (report_ != nullptr) {
    report_->Append({{"input", AsUtf8(path)},
                     {"output", AsUtf8(plan_.Output(input))},
                     {"outputs", Json::array()},
                     {"result", "failed"},
                     {"exit", nullptr},
                     {"seconds", 0},
                     {"reason", AsUtf8(reason)},
                     {"summary", nullptr}});
  }
  account_.Add({input, path, BatchOutcome::Failed, reason});
}

void BatchRun::Wait() const {
  std::vector<const sys::Descriptor*> files;
  std::int64_t longest = kLongestWait;
  const auto now = Clock::now();
  for (const Job& job : jobs_) {
    job.process.AddTo(files);
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(job.until - now).count() + 1;
    longest = std::clamp<std::int64_t>(left, 0, longest);
  }
  sys::WaitForAny(files, longest);
}

// Asks those whose time is up to end, and kills those that did not heed that.
void BatchRun::EndLate() {
  const auto now = Clock::now();
  for (Job& job : jobs_) {
    if (now < job.until) continue;
    job.isLate = job.isLate || !job.isAsked;
    job.process.Stop(job.isAsked ? sys::StopSignal::Kill : sys::StopSignal::Ask);
    job.until = now + kGrace;
    job.isAsked = true;
  }
}

void BatchRun::AskAll() {
  isStopping_ = true;
  for (Job& job : jobs_) {
    if (job.isAsked) continue;
    job.process.Stop(sys::StopSignal::Ask);
    job.isAsked = true;
    job.until = Clock::now() + kGrace;
  }
}

void BatchRun::CollectEnded() {
  for (auto job = jobs_.begin(); job != jobs_.end();) {
    if (!job->process.HasEnded()) {
      ++job;
      continue;
    }
    const auto ended = job++;
    Job taken = std::move(*ended);
    jobs_.erase(ended);
    TellOf(taken);
  }
}

void BatchRun::TellOf(const Job& job) {
  const sys::Ending& ending = job.process.HowEnded();
  if (ending.signal != 0) plan_.TidyUp(job.input);
  const BatchResult result = ResultOf(job);
  account_.Add(result);
  if (report_ == nullptr || result.outcome == BatchOutcome::Cancelled) return;
  std::vector<std::string> outputs;
  for (const Json& file : result.summary.is_object() ? result.summary.value("outputs", Json::array()) : Json::array()) {
    outputs.push_back(file.get<std::string>());
  }
  const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - job.began).count();
  Json line{{"input", AsUtf8(result.input)},
            {"output", AsUtf8(plan_.Output(job.input))},
            {"outputs", TextsJson(outputs)},
            {"result", NameOf(result.outcome)},
            {"exit", ending.signal != 0 ? kSignalBase + ending.signal : ending.exitCode},
            {"seconds", static_cast<double>(time) / 1000}};
  if (!result.reason.empty()) line["reason"] = AsUtf8(result.reason);
  line["summary"] = result.summary;
  line[BatchReport::kConversion] = job.conversion;
  line[BatchReport::kWritten] = StatesOf(outputs);
  report_->Append(line);
}

// Ctrl-C on a terminal comes to the conversions as well, and may end one before it is asked to.
bool BatchRun::IsCancelled(const Job& job) const {
  if (job.isLate || !(job.isAsked || Interrupted() || sys::IsAskedToEnd())) return false;
  const sys::Ending& ending = job.process.HowEnded();
  return ending.exitCode == kExitCancelled || IsOfPeople(ending.signal) || (job.isAsked && ending.signal == SIGKILL);
}

BatchResult BatchRun::ResultOf(const Job& job) const {
  BatchResult result{job.input, plan_.Input(job.input)};
  const sys::Ending& ending = job.process.HowEnded();
  if (ending.signal == 0 && ending.exitCode >= 0) {
    result.summary = Json::parse(job.process.Output(), nullptr, false);
    if (!result.summary.is_object()) result.summary = nullptr;
  }
  if (ending.exitCode == kExitDone) return result;
  result.outcome = ending.exitCode == kExitEndedEarly ? BatchOutcome::Incomplete : BatchOutcome::Failed;
  if (IsCancelled(job)) {
    result.outcome = BatchOutcome::Cancelled;
    return result;
  }
  result.reason = ReasonOf(job, result.summary);
  return result;
}

std::string BatchRun::ReasonOf(const Job& job, const Json& summary) const {
  const sys::Ending& ending = job.process.HowEnded();
  if (job.isLate) return "took longer than the " + NumberText(command_.timeout) + " s of --timeout";
  if (ending.signal != 0) return ReasonOfSignal(ending.signal);
  std::string reason;
  if (summary.is_object()) {
    for (const char* key : {"reason", "error"}) {
      if (reason.empty()) reason = summary.value(key, "");
    }
    if (reason.empty()) reason = WarningOf(summary, "endless");
  }
  if (reason.empty()) reason = LastMessage(job.process.Errors());
  if (reason.empty()) reason = "ended with exit code " + std::to_string(ending.exitCode);
  if (command_.memory > 0 && IsOfMemory(reason)) {
    return "takes more than the " + SizeText(command_.memory) + " of --memory";
  }
  return reason;
}

std::string BatchRun::ReasonOfSignal(int signal) const {
  const std::string name = sys::NameOf(signal);
  if (signal == SIGKILL) return "was ended by the system or by somebody: " + name + "; memory may have run out";
  if (IsOfPeople(signal)) return "was ended by somebody: " + name;
  return "crashed: " + name;
}

}  // namespace tesselink
