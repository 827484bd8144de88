// SPDX-License-Identifier: MIT
// The layer-to-code lookup that the readers share.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tesselink {

/// The code of an element whose layer has none.
inline constexpr std::string_view kUnassociatedCode = "0900000";

/// Layer names and the entity codes that go with them, parallel by position: the outcome of layer-name matching.
class LayerCodes {
 public:
  void Assign(std::vector<std::string> names, std::vector<std::string> codes);
  const std::vector<std::string>& cLayerNames() const { return names_; }
  const std::vector<std::string>& cLayerCodes() const { return codes_; }
  /// The code at the position of the first name equal to the layer, letter case included; "0900000" when no name is, or
  /// no code stands there. Valid until the next Assign.
  std::string_view CodeOf(const std::string& layer) const;

 private:
  std::vector<std::string> names_, codes_;
  std::unordered_map<std::string, std::size_t> positions_;
};

}  // namespace tesselink
