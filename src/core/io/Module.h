// SPDX-License-Identifier: MIT
// Parts of the program that lie in files of their own, with the libraries that they stand on.
#pragma once

#include <string>

namespace tesselink {

/// The address of a function that the module "tesselink-NAME.so" in a folder offers. The module is loaded when it is
/// first asked for, so that runs without need of it neither wait for its libraries nor hold them, and stays to the end.
/// Throws Error that names the file when it cannot be loaded or has no such function.
void* ModuleFunction(const std::string& folder, const std::string& name, const char* function);

/// What a module makes by its function "Create", an object of the interface that it implements.
template <typename Interface, typename... Arguments>
Interface* CreateByModule(const std::string& folder, const std::string& name, Arguments... arguments) {
  using Creator = Interface* (*)(Arguments...);
  return reinterpret_cast<Creator>(ModuleFunction(folder, name, "Create"))(arguments...);
}

}  // namespace tesselink
