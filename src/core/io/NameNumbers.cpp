// SPDX-License-Identifier: MIT
#include "core/io/NameNumbers.h"

namespace tesselink {

std::size_t NameNumbers::Find(std::string_view name) {
  auto found = numbers_.find(name);
  if (found == numbers_.end()) found = numbers_.emplace(name, numbers_.size()).first;
  recent_[PlaceOf(name)] = {&found->first, found->second};
  return found->second;
}

}  // namespace tesselink
