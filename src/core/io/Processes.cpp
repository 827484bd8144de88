// SPDX-License-Identifier: MIT
#include "core/io/Processes.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <string.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "core/io/SystemCall.h"

namespace tesselink::sys {
namespace {

constexpr const char* kSelf = "/proc/self/exe";

// What a program that is started inherits, and what is waited with.
sigset_t signalsBefore;
bool areSignalsHeld = false;

sigset_t HeldSignals() {
  sigset_t held;
  sigemptyset(&held);
  for (const int signal : {SIGCHLD, SIGINT, SIGTERM, SIGHUP}) sigaddset(&held, signal);
  return held;
}

void Ignore(int) {}

// What a child is given: nothing to read, the two pipes, and no signal held.
class SpawnSettings {
 public:
  SpawnSettings(const Descriptor& output, const Descriptor& errors) {
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&files, output.Number(), 1);
    posix_spawn_file_actions_adddup2(&files, errors.Number(), 2);
    posix_spawnattr_init(&attributes);
    if (!areSignalsHeld) return;
    posix_spawnattr_setsigmask(&attributes, &signalsBefore);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;
  ~SpawnSettings() {
    posix_spawn_file_actions_destroy(&files);
    posix_spawnattr_destroy(&attributes);
  }

  posix_spawn_file_actions_t files;
  posix_spawnattr_t attributes;
};

Ending EndingOf(int status) {
  return WIFSIGNALED(status) ? Ending{-1, WTERMSIG(status)} : Ending{WEXITSTATUS(status), 0};
}

}  // namespace

bool MakePipe(Descriptor& toRead, Descriptor& toWrite) {
  int ends[2];
  if (!Done(Call::Pipe, [&] { return pipe2(ends, O_CLOEXEC); })) return false;
  toRead = Descriptor(ends[0]);
  toWrite = Descriptor(ends[1]);
  return Done(Call::Pipe, [&] { return fcntl(ends[0], F_SETFL, O_NONBLOCK); });
}

std::int64_t ReadSome(const Descriptor& file, void* into, std::size_t most) {
  return Made(
      Call::Read, [&](std::size_t count) { return read(file.Number(), into, count); }, most);
}

int Start(const std::string& program, const std::vector<std::string>& arguments, const Descriptor& output,
          const Descriptor& errors) {
  std::vector<char*> texts;
  for (const std::string& argument : arguments) texts.push_back(const_cast<char*>(argument.c_str()));
  texts.push_back(nullptr);
  const SpawnSettings settings(output, errors);
  pid_t process = -1;
  const auto spawn = [&] {
    errno = posix_spawn(&process, program.c_str(), &settings.files, &settings.attributes, texts.data(), environ);
    return errno == 0 ? 0 : -1;
  };
  return Done(Call::Spawn, spawn) ? process : -1;
}

Collected Collect(int process, Ending& ending) {
  int status = 0;
  const std::int64_t ended = Made(Call::Wait, [&](std::size_t) { return waitpid(process, &status, WNOHANG); });
  if (ended == 0) return Collected::Running;
  if (ended < 0) return Collected::Failed;
  ending = EndingOf(status);
  return Collected::Ended;
}

bool WaitFor(int process, Ending& ending) {
  int status = 0;
  if (Made(Call::Wait, [&](std::size_t) { return waitpid(process, &status, 0); }) < 0) return false;
  ending = EndingOf(status);
  return true;
}

bool Send(int process, StopSignal signal) {
  return Done(Call::Signal, [&] { return kill(process, signal == StopSignal::Kill ? SIGKILL : SIGTERM); });
}

std::string NameOf(int signal) {
  const char* words = sigdescr_np(signal);
  return (words == nullptr ? std::string("signal ") : std::string(words) + " (signal ") + std::to_string(signal) +
         (words == nullptr ? "" : ")");
}

SignalsHeld::SignalsHeld() {
  struct sigaction ended {};
  ended.sa_handler = Ignore;  // the signal is to end waiting, which an ignored one does not
  sigaction(SIGCHLD, &ended, nullptr);
  const sigset_t held = HeldSignals();
  sigprocmask(SIG_BLOCK, &held, &signalsBefore);
  sigdelset(&signalsBefore, SIGCHLD);
  areSignalsHeld = true;
}

SignalsHeld::~SignalsHeld() {
  areSignalsHeld = false;
  sigprocmask(SIG_SETMASK, &signalsBefore, nullptr);
}

bool IsAskedToEnd() {
  sigset_t pending;
  sigemptyset(&pending);
  sigpending(&pending);
  return sigismember(&pending, SIGINT) == 1 || sigismember(&pending, SIGTERM) == 1 ||
         sigismember(&pending, SIGHUP) == 1;
}

void WaitForAny(const std::vector<const Descriptor*>& files, std::int64_t milliseconds) {
  std::vector<pollfd> polled;
  for (const Descriptor* file : files) polled.push_back({file->Number(), POLLIN, 0});
  const timespec time{milliseconds / 1000, milliseconds % 1000 * 1'000'000};
  ppoll(polled.data(), polled.size(), &time, areSignalsHeld ? &signalsBefore : nullptr);
}

std::string OwnProgram() {
  Status status;
  return StatusOf(kSelf, status) && status.Exists() ? kSelf : OwnName();
}

std::string OwnName() { return program_invocation_name; }

bool EndWith(int parent) {
  prctl(PR_SET_NAME, program_invocation_short_name);  // where it was started as /proc/self/exe
  if (!Done(Call::Signal, [] { return prctl(PR_SET_PDEATHSIG, SIGTERM); })) return false;
  if (getppid() != parent) raise(SIGTERM);
  return true;
}

bool LimitMemory(std::uint64_t bytes) {
  const rlimit limit{bytes, bytes};
  return Done(Call::Limit, [&] { return setrlimit(RLIMIT_DATA, &limit); });
}

int OwnProcess() { return getpid(); }

}  // namespace tesselink::sys
