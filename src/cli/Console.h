// SPDX-License-Identifier: MIT
// Standard output and standard error as the commands use them, and the signals that ask a program to end.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tesselink {

/// Wrong usage that shows only when the words are put together.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Prints on standard output. Throws Error when that fails, so that a full disk behind ">" is noticed.
void Print(const std::string& text);
/// Writes out what is still buffered; throws as Print does.
void FlushOutput();
/// The text with its control characters shown instead of obeyed by a terminal, as in "\x1b" and "\u202e": names and
/// texts come from files of which nobody knows what they hold.
std::string Visible(std::string_view text);
/// Prints a line on standard error, prefixed "tesselink: ", with its control characters shown. On terminals errors are
/// red and the others yellow, unless NO_COLOR is set.
void PrintError(const std::string& text);
/// The same for what was lost or is doubtful, prefixed "warning: " besides.
void PrintWarning(const std::string& text);
/// The same for what a reader has to say.
void PrintNotice(const std::string& text);
/// From here on only errors are printed.
void SilenceWarnings();
bool StandardErrorIsTerminal();
/// Whether it is one that obeys codes which move the cursor and erase; those are never written to files and pipes.
bool StandardErrorObeysCodes();
/// The width of that terminal; 80 where it does not tell.
std::size_t TerminalColumns();

/// Opens a standard stream that the caller had closed on nothing, lest an output file take its number and its messages.
void OpenStandardStreams();
/// Makes Ctrl-C, and the signals that ask a program to end, a cancel request; a second one ends the program at once.
void CatchInterrupts();
/// Lets a write to a reader that has gone, or beyond the size that a file may have, fail instead of ending the program:
/// an output must be tidied up. Listings end silently as everybody's do.
void TakeFailedWritesAsErrors();
/// Whether such a signal has come.
bool Interrupted();

}  // namespace tesselink
