// SPDX-License-Identifier: MIT
// The WinPICS map overlay reader. It scans the binary file for layers; the overlay's drawing elements are not decoded.
#pragma once

#include <cstdint>
#include <string>

#include "core/io/Files.h"
#include "core/run/Filters.h"

namespace tesselink {

/// Delivers nothing and never comes to the end of a file that holds anything, which shows in `Stalled`: a run is ended
/// by a cancel only. The layer scan reads colour numbers where it would need names, so the layer list stays empty. Both
/// are the system's own way; in the standard dialect a file that holds anything is refused.
class MolInFilter final : public InputFilter {
 public:
  explicit MolInFilter(const FilterContext& context) : InputFilter(context) {}

  int FileNumber() const override { return file_.Number(); }
  std::int64_t Loc() const override { return 0; }
  double Progress() const override { return 0; }
  bool Eof() const override { return file_.Size() == 0; }
  bool Stalled() const override { return !Eof(); }

 private:
  void Open(const std::string& path) override;
  /// Sets the code of the layer that the entity was handed over with, and leaves everything else.
  bool Next(tEntity& entity) override;
  void ScanLayers();

  BinaryFile file_;
};

}  // namespace tesselink
