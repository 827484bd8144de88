// SPDX-License-Identifier: MIT
#include "core/run/LayerCodes.h"

namespace tesselink {

void LayerCodes::Assign(std::vector<std::string> names, std::vector<std::string> codes) {
  names_ = std::move(names);
  codes_ = std::move(codes);
  positions_.clear();
  for (std::size_t i = 0; i < names_.size(); ++i) positions_.emplace(names_[i], i);
}

std::string_view LayerCodes::CodeOf(const std::string& layer) const {
  if (positions_.empty()) return kUnassociatedCode;
  const auto found = positions_.find(layer);
  return found == positions_.end() || found->second >= codes_.size() ? kUnassociatedCode
                                                                     : std::string_view(codes_[found->second]);
}

}  // namespace tesselink
