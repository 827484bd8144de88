// SPDX-License-Identifier: MIT
// Writes manual pages and completions into a folder, laid out as the share folder of an installation.
//
//   tesselink-manual-writer FOLDER DATE
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "manual/Completions.h"
#include "manual/Pages.h"

namespace {

namespace fs = std::filesystem;

void Write(const fs::path& file, const std::string& text) {
  fs::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) throw std::runtime_error(file.string() + ": could not be written");
}

// Builds of one source are equal: the date is never today's.
std::string DateOr(const std::string& given) {
  const char* seconds = std::getenv("SOURCE_DATE_EPOCH");
  if (seconds == nullptr || *seconds == '\0') return given;
  char* end = nullptr;
  const std::time_t time = std::strtoll(seconds, &end, 10);
  if (*end != '\0') throw std::runtime_error("SOURCE_DATE_EPOCH is no number of seconds");
  const std::tm* parts = std::gmtime(&time);
  char date[sizeof "YYYY-MM-DD"];
  if (parts == nullptr || std::strftime(date, sizeof date, "%Y-%m-%d", parts) == 0) return given;
  return date;
}

void WriteAll(const fs::path& folder, const std::string& date) {
  const tesselink::ProgramText text = tesselink::TextOfProgram();
  // Pages of commands that there were before would stay.
  for (const char* part : {"man", "bash-completion", "zsh", "fish"}) fs::remove_all(folder / part);
  Write(folder / "man/man1/tesselink.1", ProgramPage(text, date));
  for (const tesselink::CommandText& command : text.commands) {
    Write(folder / "man/man1" / ("tesselink-" + command.name + ".1"), CommandPage(text, command, date));
  }
  Write(folder / "man/man5/tesselink-formats.5", tesselink::FormatsPage(date));
  Write(folder / "bash-completion/completions/tesselink", BashCompletion(text));
  Write(folder / "zsh/vendor-completions/_tesselink", ZshCompletion(text));
  Write(folder / "fish/vendor_completions.d/tesselink.fish", FishCompletion(text));
}

}  // namespace

int main(int count, char** values) {
  try {
    if (count != 3) throw std::runtime_error("usage: tesselink-manual-writer FOLDER DATE");
    WriteAll(values[1], DateOr(values[2]));
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "tesselink-manual-writer: %s\n", error.what());
    return 1;
  }
}
