// SPDX-License-Identifier: MIT
// A look through a file before its first element.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace tesselink {

class Interaction;

/// Shows a person every so often how far such a look has come, and ends it on a cancel.
class ScanProgress {
 public:
  static constexpr std::int64_t kBytes = std::int64_t{1} << 18;

  /// `every` is in the unit of positions.
  explicit ScanProgress(Interaction& interaction, std::string text = "Scanning file for Layers...",
                        std::int64_t every = kBytes)
      : interaction_(interaction), text_(std::move(text)), every_(every) {}

  /// A look begins that is shown from this position on; without a call, at once.
  void Begin(std::int64_t shownFrom) { next_ = shownFrom; }
  /// Throws OperationCanceled when the person has confirmed a cancel.
  void At(std::int64_t position, std::int64_t size) {
    if (position >= next_) Show(position, size);
  }
  /// Hides what was shown.
  void End();

 private:
  void Show(std::int64_t position, std::int64_t size);

  Interaction& interaction_;
  std::string text_;
  std::int64_t every_, next_ = 0;
};

}  // namespace tesselink
