// SPDX-License-Identifier: MIT
#include "formats/dxf/EntityGroups.h"

#include <cmath>

#include "formats/dxf/DrawingBlocks.h"
#include "formats/dxf/GroupScanner.h"

namespace tesselink {

void EntityGroups::Begin(std::int64_t place) {
  place_ = place;
  given_.reset();
  points_ = {};
  elevation_ = thickness_ = 0;
  weight_ = kWeightByLayer;
  extrusion_ = {0, 0, 1};
  trueColour_.reset();
  layer_.assign(1, '0');
  lineType_.clear();
  name_.clear();
  text_.clear();
  style_.clear();
  own_.Begin();
  wrong_ = 0;
  handle_ = 0;
}

double EntityGroups::NumberOf(const GroupScanner& scanner) {
  const double value = scanner.Number();
  if (std::isnan(value) && wrong_ == 0) wrong_ = scanner.Place();
  return value;
}

void EntityGroups::Take(const GroupScanner& scanner) {
  const int code = scanner.Code();
  if (code >= 40 && code < 60) {
    given_.set(static_cast<std::size_t>(code));
    numbers_[static_cast<std::size_t>(code - 40)] = NumberOf(scanner);
  } else if (code >= 60 && code < 80) {
    if (const auto value = scanner.Integer()) {
      given_.set(static_cast<std::size_t>(code));
      integers_[static_cast<std::size_t>(code - 60)] = *value;
    }
  } else if (code >= 10 && code < 40 && code % 10 < kPoints) {
    given_.set(static_cast<std::size_t>(code));
    Vertex& point = points_[static_cast<std::size_t>(code % 10)];
    (code < 20 ? point.x : code < 30 ? point.y : point.z) = NumberOf(scanner);
  } else if (code >= 1000) {
    own_.Take(scanner);
  } else {
    switch (code) {
      case 1:
      case 3:
        text_ += scanner.Text();
        break;
      case 2:
        name_ = scanner.Text();
        break;
      case 5:
        handle_ = HandleOf(scanner.Keyword());
        break;
      case 6:
        lineType_ = scanner.Text();
        break;
      case 7:
        style_ = scanner.Keyword();
        break;
      case 8:
        layer_ = scanner.Text();
        if (layer_.empty()) layer_.assign(1, '0');
        break;
      case 38:
        elevation_ = NumberOf(scanner);
        break;
      case 39:
        thickness_ = NumberOf(scanner);
        break;
      case 210:
        extrusion_.x = NumberOf(scanner);
        break;
      case 220:
        extrusion_.y = NumberOf(scanner);
        break;
      case 230:
        extrusion_.z = NumberOf(scanner);
        break;
      case 370:
        weight_ = scanner.Integer().value_or(kWeightByLayer);
        break;
      case 420:
        trueColour_ = scanner.Integer();
        break;
      default:
        break;
    }
  }
}

}  // namespace tesselink
