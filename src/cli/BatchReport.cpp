// SPDX-License-Identifier: MIT
#include "cli/BatchReport.h"

#include <algorithm>
#include <functional>

#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/Utf8.h"

namespace tesselink {
namespace {

constexpr std::size_t kBlock = 1 << 16;
constexpr std::string_view kBegin = "{\"input\":";  // of every line

// Instead of a text that is compared only: ten thousand of them are long.
std::uint64_t Mark(const Json& json) { return std::hash<std::string>()(json.dump()) | 1; }

Json StateOf(const std::string& file) {
  sys::Status status;
  if (!sys::StatusOf(file, status) || !status.Exists()) return nullptr;
  return {{"file", AsUtf8(file)}, {"size", status.size}, {"modified", status.modified}};
}

// Hands over each line that has an end. The bytes up to the end of the last one.
std::int64_t ForEachLine(const sys::Descriptor& file,
                         const std::function<void(const std::string& line, std::int64_t at)>& take) {
  std::string text(kBlock, '\0'), line;
  std::int64_t at = 0, end = 0;
  for (;;) {
    const std::int64_t got = sys::ReadAt(file, text.data(), text.size(), at);
    if (got <= 0) return got < 0 ? got : end;
    at += got;
    std::string_view rest(text.data(), static_cast<std::size_t>(got));
    for (std::size_t newline; (newline = rest.find('\n')) != std::string_view::npos; rest.remove_prefix(newline + 1)) {
      line += rest.substr(0, newline);
      take(line, end);
      end += static_cast<std::int64_t>(line.size()) + 1;
      line.clear();
    }
    line += rest;
  }
}

// All of a line, or nothing.
void AppendLine(const sys::Descriptor& file, const std::string& path, const std::string& text) {
  sys::Status before;
  const std::string line = text + "\n";
  const bool isKnown = sys::StatusOf(file, before);
  if (isKnown && sys::Write(file, line.data(), line.size())) return;
  const Error error(SystemReason(path, "could not be written"));
  if (isKnown) sys::Truncate(file, before.size);
  throw error;
}

}  // namespace

Json StatesOf(const std::vector<std::string>& files) {
  Json states = Json::array();
  for (const std::string& file : files) {
    if (Json state = StateOf(file); !state.is_null()) states.push_back(std::move(state));
  }
  return states;
}

BatchReport::BatchReport(const std::string& path, bool resume, bool overwrite)
    : path_(path), begunPath_(path + ".begun"), resume_(resume) {
  sys::Status status;
  if (sys::StatusOf(path, status) && status.Exists() && !resume && !overwrite) {
    throw Error(path + ": exists already; give --resume to go on where it ends, or -O (--overwrite) to begin anew");
  }
  file_ = sys::Open(path, sys::Access::Append);
  if (!file_) throw Error(SystemReason(path, "could not be written"));
  if (sys::TryLock(file_) == sys::Locking::Busy) throw Error(path + ": is being written by another batch");
  RefuseOtherFiles();
  if (!resume) return;
  ReadLines();
  ReadBegun();
}

BatchReport::~BatchReport() {
  sys::Status status;
  if (!begun_ && sys::StatusOf(file_, status) && status.size == 0) sys::Unlink(path_);
}

void BatchReport::Begin() {
  begun_ = sys::Open(begunPath_, sys::Access::Append);
  if (!begun_ || (!resume_ && !sys::Truncate(begun_, 0))) throw Error(SystemReason(begunPath_, "could not be written"));
  if (!resume_ && !sys::Truncate(file_, 0)) throw Error(SystemReason(path_, "could not be written"));
}

// Whatever else a slip of the hand names must not be cut or replaced.
void BatchReport::RefuseOtherFiles() const {
  std::string begin(kBegin.size(), '\0');
  const std::int64_t got = sys::ReadAt(file_, begin.data(), begin.size(), 0);
  if (got < 0) throw Error(SystemReason(path_, "could not be read"));
  begin.resize(static_cast<std::size_t>(got));
  if (!kBegin.starts_with(begin)) throw Error(path_ + ": is no report of a batch; give the name of a new file");
}

// A line that a killed run has left half written goes.
void BatchReport::ReadLines() {
  const auto take = [this](const std::string& line, std::int64_t at) { ReadLine(line, at); };
  const std::int64_t end = ForEachLine(file_, take);
  if (end < 0) throw Error(SystemReason(path_, "could not be read"));
  if (!sys::Truncate(file_, end)) throw Error(SystemReason(path_, "could not be written"));
}

void BatchReport::ReadLine(const std::string& text, std::int64_t at) {
  const Json line = Json::parse(text, nullptr, false);
  if (!line.is_object() || !line.contains("input") || !line["input"].is_string()) {
    throw Error(path_ + ": is no report of a batch; it holds \"" + text.substr(0, 60) + "\"");
  }
  Entry& entry = entries_[line["input"].get<std::string>()];
  entry = {at, 0, {}};
  const auto exit = line.find("exit"), conversion = line.find(kConversion), written = line.find(kWritten);
  const bool isWhole = exit != line.end() && *exit == 0 && conversion != line.end();
  if (isWhole) entry.conversion = Mark(*conversion);
  if (written == line.end() || !written->is_array()) return;
  for (const Json& state : *written) entry.written.push_back(Mark(state));
}

void BatchReport::ReadBegun() {
  const sys::Descriptor file = sys::Open(begunPath_, sys::Access::Read);
  if (!file) return;
  ForEachLine(file, [this](const std::string& text, std::int64_t) {
    const Json line = Json::parse(text, nullptr, false);
    if (line.is_array() && line.size() == 2 && line[0].is_string() && line[1].is_number_integer()) {
      begunBefore_[line[0].get<std::string>()] = line[1].get<std::int64_t>();
    }
  });
}

bool BatchReport::IsDone(const std::string& input, const Json& conversion, std::size_t outputs) const {
  const auto entry = entries_.find(AsUtf8(input));
  return entry != entries_.end() && entry->second.conversion == Mark(conversion) && outputs > 0 &&
         outputs >= entry->second.written.size();
}

bool BatchReport::IsOwn(const std::string& input, const std::string& file) const {
  const std::string name = AsUtf8(input);
  const auto entry = entries_.find(name);
  const bool isKnown = entry != entries_.end();
  const auto begun = begunBefore_.find(name);
  if (begun != begunBefore_.end() && (!isKnown || entry->second.at < begun->second)) return true;
  if (!isKnown) return false;
  const std::vector<std::uint64_t>& written = entry->second.written;
  return std::count(written.begin(), written.end(), Mark(StateOf(file))) > 0;
}

void BatchReport::NoteBegun(const std::string& input) {
  sys::Status report;
  if (!sys::StatusOf(file_, report)) throw Error(SystemReason(path_, "could not be read"));
  AppendLine(begun_, begunPath_, JsonText(Json::array({AsUtf8(input), report.size})));
}

void BatchReport::Append(const Json& line) { AppendLine(file_, path_, JsonText(line)); }

void BatchReport::Close() { sys::Unlink(begunPath_); }

}  // namespace tesselink
