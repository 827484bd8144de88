// SPDX-License-Identifier: MIT
// The answer to layer-name matching without a dialog: codes from a file, remembered ones and guessed ones.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "core/run/Interaction.h"

namespace tesselink {

/// Entity codes by the names of layers.
using CodesByLayer = std::unordered_map<std::string, std::string>;

class LayerOptions {
 public:
  /// Reads the file of codes, where one is given: a CSV file with the columns "layer" and "code"; layer names are
  /// UTF-8. Throws Error that names the file, the line and what is expected. `guess`: from the names of layers.
  LayerOptions(std::string file, bool guess);

  /// Whether layers are to be matched.
  bool Wanted() const { return fromFile_ || guess_; }
  /// One code for each layer: that of the file, else the remembered one, else the guessed one; empty for the rest,
  /// which are a warning of the question's report, as are layers of the file that the question does not name.
  /// Remembered codes count where codes are guessed.
  std::vector<std::string> Codes(const LayerMatchingQuestion& question) const;
  /// As Codes, for a list to be edited: remembered codes always count, and layers without one are no warning.
  std::vector<std::string> Proposal(const LayerMatchingQuestion& question) const;

 private:
  std::vector<std::string> FromFileOr(std::vector<std::string> codes, const LayerMatchingQuestion& question) const;
  void WarnOfUnknownLayers(const LayerMatchingQuestion& question) const;

  bool fromFile_ = false, guess_ = false;
  std::string file_;
  std::vector<std::string> listed_;  // the layers in the order of the file
  CodesByLayer codes_;
};

}  // namespace tesselink
