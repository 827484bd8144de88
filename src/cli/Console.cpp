// SPDX-License-Identifier: MIT
#include "cli/Console.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#ifdef _WIN32
#include <io.h>
#else
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>
#endif

#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/Utf8.h"

namespace tesselink {
namespace {

volatile std::sig_atomic_t interrupted = 0;

void OnInterrupt(int signal) {
  interrupted = 1;
  std::signal(signal, SIG_DFL);
}

constexpr const char *kRed = "\x1b[31m", *kYellow = "\x1b[33m", *kPlain = "\x1b[0m";
bool silent = false;

bool ColoursWanted() {
  const char* refused = std::getenv("NO_COLOR");
  return (refused == nullptr || *refused == '\0') && StandardErrorObeysCodes();
}

void PrintLine(const char* colour, const std::string& prefix, const std::string& text) {
  const bool coloured = ColoursWanted();
  const std::string line = (coloured ? colour + prefix + kPlain : prefix) + " " + Visible(text) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace

void Print(const std::string& text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
    throw Error(SystemReason("standard output", "could not be written"));
  }
}

void FlushOutput() {
  if (std::fflush(stdout) != 0) throw Error(SystemReason("standard output", "could not be written"));
}

bool StandardErrorIsTerminal() {
#ifdef _WIN32
  return _isatty(_fileno(stderr)) != 0;
#else
  return isatty(fileno(stderr)) != 0;
#endif
}

bool StandardErrorObeysCodes() {
  const char* terminal = std::getenv("TERM");
  return StandardErrorIsTerminal() && terminal != nullptr && std::string_view(terminal) != "dumb";
}

std::size_t TerminalColumns() {
#ifndef _WIN32
  winsize size{};
  if (ioctl(fileno(stderr), TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
#endif
  return 80;
}

void OpenStandardStreams() {
#ifndef _WIN32
  for (int stream = 0; stream <= 2; ++stream) {
    if (fcntl(stream, F_GETFD) == -1 && open("/dev/null", O_RDWR) == -1) return;
  }
#endif
}

void CatchInterrupts() {
  for (const int signal : {SIGINT, SIGTERM
#ifdef SIGHUP
                           ,
                           SIGHUP
#endif
       }) {
    // What the caller had ignored, as nohup does, stays ignored.
    if (std::signal(signal, OnInterrupt) == SIG_IGN) std::signal(signal, SIG_IGN);
  }
}

void TakeFailedWritesAsErrors() {
  for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_IGN);
}

bool Interrupted() { return interrupted != 0; }

std::string Visible(std::string_view text) {
  std::string shown;
  while (!text.empty()) {
    const std::size_t valid = Utf8Length(text);
    const std::string_view bytes = text.substr(0, std::max<std::size_t>(valid, 1));
    const std::uint32_t letter = valid > 0 ? Utf8Letter(bytes) : static_cast<unsigned char>(bytes[0]);
    if (IsControl(letter)) {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, letter < 0x80 || valid == 0 ? "\\x%02x" : "\\u%04x", letter);
      shown += escaped;
    } else {
      shown += bytes;
    }
    text.remove_prefix(bytes.size());
  }
  return shown;
}

void PrintError(const std::string& text) { PrintLine(kRed, "tesselink:", text); }

void PrintWarning(const std::string& text) {
  if (!silent) PrintLine(kYellow, "tesselink: warning:", text);
}

void PrintNotice(const std::string& text) {
  if (!silent) PrintLine(kYellow, "tesselink:", text);
}

void SilenceWarnings() { silent = true; }

}  // namespace tesselink
