// SPDX-License-Identifier: MIT
#include "core/io/ChildProcess.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace tesselink {
namespace {

constexpr std::size_t kMostErrors = std::size_t{1} << 16;

}  // namespace

bool ChildNotStarted::MayPass() const {
  return reason == EAGAIN || reason == ENOMEM || reason == EMFILE || reason == ENFILE;
}

ChildProcess::ChildProcess(const std::string& program, const std::vector<std::string>& arguments,
                           std::size_t mostOutput)
    : mostOutput_(mostOutput) {
  sys::Descriptor output, errors;
  if (sys::MakePipe(output_.file, output) && sys::MakePipe(errors_.file, errors)) {
    process_ = sys::Start(program, arguments, output, errors);
  }
  if (process_ < 0) throw ChildNotStarted{errno};
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : mostOutput_(other.mostOutput_),
      output_(std::move(other.output_)),
      errors_(std::move(other.errors_)),
      process_(std::exchange(other.process_, -1)),
      ending_(other.ending_) {}

ChildProcess::~ChildProcess() {
  if (process_ < 0) return;
  Stop(sys::StopSignal::Kill);
  sys::WaitFor(process_, ending_);
}

// Until nothing is there, or the stream has ended and is closed.
void ChildProcess::Stream::Take(std::size_t most) {
  char block[1 << 14];
  while (file) {
    const std::int64_t got = sys::ReadSome(file, block, sizeof block);
    if (got > 0) {
      text.append(block, std::min(static_cast<std::size_t>(got), most - std::min(most, text.size())));
      continue;
    }
    if (got < 0 && errno == EAGAIN) return;
    sys::Close(file);
  }
}

bool ChildProcess::HasEnded() {
  const bool hasEnded = process_ < 0 || sys::Collect(process_, ending_) != sys::Collected::Running;
  if (hasEnded) process_ = -1;
  output_.Take(mostOutput_);
  errors_.Take(kMostErrors);
  return hasEnded;
}

void ChildProcess::AddTo(std::vector<const sys::Descriptor*>& files) const {
  for (const Stream* stream : {&output_, &errors_}) {
    if (stream->file) files.push_back(&stream->file);
  }
}

void ChildProcess::Stop(sys::StopSignal signal) const {
  if (process_ >= 0) sys::Send(process_, signal);
}

}  // namespace tesselink
