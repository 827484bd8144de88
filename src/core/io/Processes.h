// SPDX-License-Identifier: MIT
// The calls to the system by which one program starts others, listens to them and learns of their end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/io/System.h"

namespace tesselink::sys {

/// How a process has ended: with an exit code, or by a signal.
struct Ending {
  int exitCode = -1;
  int signal = 0;
};

enum class Collected { Ended, Running, Failed };
enum class StopSignal { Ask, Kill };

/// A pipe that no program inherits. Reading from it does not wait.
bool MakePipe(Descriptor& toRead, Descriptor& toWrite);
/// Reads what is there, so many bytes at most: 0 at the end, -1 with EAGAIN where nothing has come yet.
std::int64_t ReadSome(const Descriptor& file, void* into, std::size_t most);
/// Starts a program with nothing on its standard input. Its arguments begin with its name. The process, or -1.
int Start(const std::string& program, const std::vector<std::string>& arguments, const Descriptor& output,
          const Descriptor& errors);
/// Learns how a process has ended, without waiting for it.
Collected Collect(int process, Ending& ending);
/// The same, and waits for it.
bool WaitFor(int process, Ending& ending);
bool Send(int process, StopSignal signal);
/// A signal in words, as in "Segmentation fault (signal 11)".
std::string NameOf(int signal);

/// While it lives, the signals that ask a program to end, and those of ended processes, come in WaitForAny alone: what
/// has been looked at before cannot have changed when waiting begins.
class SignalsHeld {
 public:
  SignalsHeld();
  SignalsHeld(const SignalsHeld&) = delete;
  SignalsHeld& operator=(const SignalsHeld&) = delete;
  ~SignalsHeld();
};
/// Whether a signal that asks this program to end has come while it was held, and not been taken yet.
bool IsAskedToEnd();
/// Waits until one of the files can be read or has ended, a signal has come, or time is up.
void WaitForAny(const std::vector<const Descriptor*>& files, std::int64_t milliseconds);

/// The path by which this very program can be started again, and its name as it was called.
std::string OwnProgram();
std::string OwnName();
/// Asks this process to end as soon as the one that started it has ended; at once, if it has.
bool EndWith(int parent);
/// Gives this process so many bytes for its data; what it asks for beyond them it does not get.
bool LimitMemory(std::uint64_t bytes);
int OwnProcess();

}  // namespace tesselink::sys
