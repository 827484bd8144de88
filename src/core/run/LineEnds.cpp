// SPDX-License-Identifier: MIT
#include "core/run/LineEnds.h"

#include <string_view>
#include <vector>

#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/OutputPlace.h"
#include "core/io/Paths.h"
#include "core/io/System.h"
#include "core/run/Translatable.h"

namespace tesselink {
namespace {

bool BeginsWithPairedLineEnds(const std::string& path, std::size_t lookedAt) {
  std::string head(lookedAt, '\0');
  head.resize(BinaryFile(path).ReadAt(0, head.data(), head.size()));
  return head.find("\r\n") != std::string::npos;
}

Message LineEndsQuestion() {
  return {Topic::LineEnds,
          TRANSLATABLE("Messages",
                       "This file appears to come from a UNIX\r\n"
                       "based system. It does not have both the\r\n"
                       "carriage return and line feed caracters \r\n"
                       "required for proper interpretation. Choose\r\n"
                       "From the menu below what you want to do. \r\n"
                       "\r\n"
                       "Yes    : Overwrite the original with the fixed version \r\n"
                       "No     : Create a fixed version in a new location\r\n"
                       "Cancel : Abort the conversion\r\n"),
          TRANSLATABLE("Messages", "Problem with Input"), MessageIcon::Question, MessageButtons::YesNoCancel};
}

sys::Status StatusOf(const std::string& path) {
  sys::Status status;
  if (!sys::StatusOf(path, status)) throw ReadFailed(SystemReason(path, "could not be looked up"));
  return status;
}

// Writes a whole file with pairs of line ends, and closes it.
void Convert(const std::string& path, FileWriter& writer, Interaction& interaction) {
  BinaryFile source(path);
  std::vector<char> block(std::size_t{1} << 16);
  std::int64_t position = 0;
  while (const std::size_t got = source.ReadAt(position, block.data(), block.size())) {
    position += static_cast<std::int64_t>(got);
    std::string_view rest(block.data(), got);
    for (std::size_t feed = rest.find('\n'); feed != std::string_view::npos; feed = rest.find('\n')) {
      writer.Line(rest.substr(0, feed));
      rest.remove_prefix(feed + 1);
    }
    writer.Write(rest);
    interaction.Yield();
    if (interaction.CancelRequested()) throw OperationCanceled();
  }
  writer.Close();
}

// The converted copy takes the place of a target whole, or not at all. A read-only file is repaired too, and stays
// read-only.
void PutInPlace(const std::string& original, const std::string& target, Interaction& interaction) {
  OutputPlace place(target, {.overwrite = true, .readOnly = target == original});
  const sys::Status before = StatusOf(original);
  try {
    FileWriter copy(place.Path());
    Convert(original, copy, interaction);
  } catch (const Error& error) {
    throw Error(place.Named(error.what()));
  }
  if (!StatusOf(original).SameContent(before)) {
    throw Error(original + ": was changed by another program while it was repaired; it was left as it is");
  }
  place.Deliver();
  for (const std::string& note : place.Notes()) interaction.ShowMessage({Topic::Notice, note, "Line ends"});
}

}  // namespace

std::string CheckLineEnds(const std::string& path, Interaction& interaction, std::size_t lookedAt) {
  if (BeginsWithPairedLineEnds(path, lookedAt)) return path;
  switch (interaction.ShowMessage(LineEndsQuestion())) {
    case Answer::Yes:
      PutInPlace(path, path, interaction);
      return path;
    case Answer::No: {
      const std::string chosen = interaction.SaveFileName(
          {TRANSLATABLE("Messages", "Select a Name for the new Version"), "All Files (*.*)|*.*", FolderOf(path)});
      if (chosen.empty()) return path;
      PutInPlace(path, chosen, interaction);
      return chosen;
    }
    default:
      return kOperationCanceled;
  }
}

std::string ConvertLineEnds(const std::string& path, Interaction& interaction) {
  TempFile copy("U2D");
  FileWriter writer(copy.TakeHandle(), copy.Path());
  Convert(path, writer, interaction);
  return copy.Keep();
}

}  // namespace tesselink
