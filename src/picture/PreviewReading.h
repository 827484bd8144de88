// SPDX-License-Identifier: MIT
// Reads a drawing into a picture a little at a time.
#pragma once

#include <string>

#include "core/run/DrawingFacts.h"
#include "picture/Picture.h"
#include "picture/QuietReading.h"

namespace tesselink {

class PreviewReading final : public QuietReading {
 public:
  PreviewReading(PreviewInput input, Settings& settings, Breath breath = {},
                 Clock clock = std::chrono::steady_clock::now, PictureBudget budget = {})
      : QuietReading(std::move(input), settings, std::move(breath), std::move(clock)),
        picture_(budget, this->Input().options.Curves()) {}

  bool Slice(std::chrono::milliseconds time) {
    picture_.Rest();
    return QuietReading::Slice(time);
  }
  const Picture& Drawn() const { return picture_; }
  /// The unit of the coordinates, as in "ft"; empty where the file does not name it.
  const std::string& Unit() const { return unit_; }
  /// What is known by now of what a conversion would read.
  DrawingFacts Facts() const;
  using QuietReading::Input;

 private:
  void Opened(InputFilter& reader) override;
  bool Digest() override {
    const bool isFull = picture_.IsFull();
    if (isFull) picture_.ThinOn();
    return isFull;
  }
  void Take(InputFilter&, const tEntity& entity, std::uint32_t number) override {
    picture_.Add(entity, number);
    facts_.Add(entity);
  }

  Picture picture_;
  DrawingFacts facts_;
  std::string unit_;
};

/// The unit of the coordinates by the text of a .prj file, as people write it; empty where there is none.
std::string UnitOfProjection(const std::string& wkt);

}  // namespace tesselink
