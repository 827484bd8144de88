// SPDX-License-Identifier: MIT
// Where the program's own data files and modules lie, and the person's settings.
#pragma once

#include <string>

namespace tesselink {

/// The folder with the data files that come with the program: that of the executable when they lie beside it, as in a
/// build tree, else the share/tesselink that belongs to the executable's bin folder. Empty when the executable cannot
/// be told.
std::string ProgramDataFolder();
/// The folder of the program's modules: that of the executable in a build tree, else the tesselink of the library
/// folder that belongs to the executable's bin folder.
std::string ModuleFolder();
/// The command line's program beside this one; empty when there is none.
std::string CommandProgram();
/// The folder for the settings of all programs: $XDG_CONFIG_HOME where that is a path from the root, else the .config
/// of the home folder. Empty when there is none.
std::string SettingsFolder();
/// The folder in it for what this program remembers, which SettingsFiles takes.
std::string RememberedFolder();

}  // namespace tesselink
