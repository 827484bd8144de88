// SPDX-License-Identifier: MIT
#include "formats/landmark/MolInFilter.h"

#include <cstring>

#include "core/io/Errors.h"
#include "core/run/Interaction.h"
#include "core/run/Report.h"
#include "core/run/ScanProgress.h"
#include "formats/landmark/LayerColours.h"

namespace tesselink {
namespace {

constexpr std::int32_t kColouredItem = 0x00120002;
constexpr std::int64_t kStepSize = 12;
constexpr std::int64_t kToColour = 14;  // from the start of a coloured item's step to its colour byte
constexpr std::int64_t kBehindColour = 4;

}  // namespace

void MolInFilter::Open(const std::string& path) {
  file_.Close();
  layers_.clear();
  filename_ = path;
  file_ = BinaryFile(path);
  if (options().dialect == Dialect::Standard && !Eof()) {
    file_.Close();
    throw Error(path +
                ": the drawing elements of a map overlay cannot be decoded; export them in another format from "
                "the program that made the overlay");
  }
  if (options().layersWanted) ScanLayers();
  if (!Eof()) {
    report().Warn(WarningKind::Overlay,
                  path + ": the drawing elements of a map overlay are not decoded in this version");
  }
}

// Positions count from 0 here.
void MolInFilter::ScanLayers() {
  layers_.clear();
  BinaryFile file(filename_);
  ReadWindow window(file);
  ScanProgress progress(interaction());
  progress.Begin(ScanProgress::kBytes);
  std::int64_t position = 0;
  do {
    const auto bytes = window.At(position, sizeof(std::int32_t));
    std::int32_t value = 0;
    if (bytes.size() == sizeof value) std::memcpy(&value, bytes.data(), sizeof value);
    if (value == kColouredItem) {
      position += kToColour;
      const auto colour = window.At(position, 1);
      if (!colour.empty()) NoteLayerColour(std::to_string(std::to_integer<int>(colour[0])), layers_);
      position += kBehindColour;
    }
    position += kStepSize;
    progress.At(position, file.Size());
  } while (position < file.Size());
  progress.End();
}

bool MolInFilter::Next(tEntity& entity) {
  entity.CDFCode = codes_.CodeOf(entity.Layer);
  return false;
}

}  // namespace tesselink
