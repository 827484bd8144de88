// Writes completions into a folder, laid out as the share folder of an installation.
//
//   tesselink-manual-writer FOLDER
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "manual/Completions.h"

namespace {

namespace fs = std::filesystem;

void Write(const fs::path& file, const std::string& text) {
  fs::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) throw std::runtime_error(file.string() + ": could not be written");
}

void WriteAll(const fs::path& folder) {
  const tesselink::ProgramText text = tesselink::TextOfProgram();
  Write(folder / "bash-completion/completions/tesselink", BashCompletion(text));
  Write(folder / "zsh/vendor-completions/_tesselink", ZshCompletion(text));
  Write(folder / "fish/vendor_completions.d/tesselink.fish", FishCompletion(text));
}

}  // namespace

int main(int count, char** values) {
  try {
    if (count != 2) throw std::runtime_error("usage: tesselink-manual-writer FOLDER");
    WriteAll(values[1]);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "tesselink-manual-writer: %s\n", error.what());
    return 1;
  }
}
