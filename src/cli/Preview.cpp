// SPDX-License-Identifier: MIT
// preview: a drawing as a picture.
#include <filesystem>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Exit.h"
#include "cli/Reading.h"
#include "core/io/Errors.h"
#include "core/io/OutputPlace.h"
#include "core/io/Paths.h"
#include "picture/SvgPicture.h"

namespace tesselink {
namespace {

void RefuseExistingPicture(const PreviewCommand& command) {
  std::error_code error;
  if (std::filesystem::is_directory(command.picture, error))
    throw Error(command.picture + ": is a folder; name a file");
  // The reading has its own words for a picture on top of the input.
  if (command.overwrite || SameFile(command.input, command.picture)) return;
  if (std::filesystem::is_regular_file(command.picture, error)) {
    throw Error(command.picture + ": exists already; give -O (--overwrite) to replace it");
  }
}

}  // namespace

int Run(const PreviewCommand& command) {
  Reading reading(command.input, command.reading, ShowsBar(command.reading));
  reading.output = command.picture;
  reading.layersWanted = false;
  RefuseCopyAmong(command.reading, {command.picture});
  RefuseExistingPicture(command);
  const auto& given = command.reading.tolerance;
  Picture picture(kSvgBudget, given ? CurveTolerance::Within(*given) : CurveTolerance::Classic());
  reading.opened = [&picture](InputFilter& reader) { picture.Define(reader.LineTypes()); };
  const int exitCode = ReadThrough(reading, [&picture](const tEntity& entity) { picture.Add(entity); });
  if (exitCode == kExitDone || exitCode == kExitEndedEarly) {
    if (picture.LeavesOutOfView()) {
      PrintWarning("a few vertices lie far away from all others; the picture shows the others");
    }
    OutputPlace place(command.picture, {.overwrite = command.overwrite});
    try {
      WriteSvg(picture, FileNameOf(command.input), place.Path());
      place.Deliver();
    } catch (const Error& error) {
      throw Error(place.Named(error.what()));
    }
    for (const std::string& note : place.Notes()) PrintWarning(note);
  } else {
    PrintError("no picture was written");
  }
  return exitCode;
}

}  // namespace tesselink
