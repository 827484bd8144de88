// SPDX-License-Identifier: MIT
#include "core/io/Module.h"

#ifndef _WIN32
#include <dlfcn.h>
#endif

#include "core/io/Errors.h"

namespace tesselink {

void* ModuleFunction(const std::string& folder, const std::string& name, const char* function) {
  const std::string file = folder + "/tesselink-" + name + ".so";
#ifdef _WIN32
  static_cast<void>(function);
  throw Error(file + ": modules are not loaded on this system");
#else
  // Nothing is ever unloaded: loading again yields the same handle.
  void* const module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr) {
    throw Error(file + ": this part of the program could not be loaded: " + std::string(dlerror()));
  }
  void* const address = dlsym(module, function);
  if (address == nullptr) throw Error(file + ": is of another version of the program; install it anew");
  return address;
#endif
}

}  // namespace tesselink
