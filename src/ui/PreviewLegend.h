// SPDX-License-Identifier: MIT
// The line that says what the marks in a preview mean.
#pragma once

#include <QLabel>
#include <cstdint>

#include "picture/Picture.h"

namespace tesselink {

class PreviewLegend final : public QLabel {
  Q_OBJECT
 public:
  explicit PreviewLegend(QWidget* parent = nullptr);

  /// Names those of the lost kinds, bits of LostKind, that a picture has; hidden where it has none.
  void Tell(std::uint32_t lost, const Picture* picture);
};

}  // namespace tesselink
