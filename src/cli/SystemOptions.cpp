// SPDX-License-Identifier: MIT
#include "cli/SystemOptions.h"

#include "cli/CommandOptions.h"

namespace tesselink {

void AddSystemOptions(CommandOptions& command, SystemChoice& systems, bool transforms) {
  command.Group("Coordinate systems");
  command
      .add_option("--from-crs", systems.from,
                  "Coordinate system of the input, whatever its .prj file\n"
                  "says: a code as in EPSG:32039, a .prj or WKT file, or a\n"
                  "PROJ text")
      ->type_name("SYSTEM");
  if (!transforms) return;
  command
      .add_option("--to-crs", systems.to,
                  "Transform every vertex into this coordinate system, given\n"
                  "likewise")
      ->type_name("SYSTEM");
  command.add_flag("--allow-ballpark", systems.allowBallpark,
                   "Go on where a grid is missing, with the next best\n"
                   "operation, however rough");
}

}  // namespace tesselink
