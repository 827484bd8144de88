// SPDX-License-Identifier: MIT
// The twenty colour names that a Landmark drawing's layer scan recognises.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tesselink {

/// Whether a text, blanks around it and letter case ignored, is one of the names; if so it is appended in capitals to
/// the layers, unless it is among them.
bool NoteLayerColour(std::string_view text, std::vector<std::string>& layers);

}  // namespace tesselink
