// SPDX-License-Identifier: MIT
// The groups of one entity, gathered by code whatever their order.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>
#include <string>

#include "core/element/VertexChains.h"
#include "formats/dxf/ExtendedData.h"

namespace tesselink {

class GroupScanner;

/// Codes 10 to 13 with 20 to 23 and 30 to 33 are four points, 40 to 59 numbers, 60 to 79 whole numbers. A value that is
/// no number counts as given and is not a number, or, for a whole number, as not given.
class EntityGroups {
 public:
  static constexpr int kPoints = 4;
  static constexpr std::int32_t kWeightByLayer = -1;

  /// Begins an entity that stands at a place of the drawing.
  void Begin(std::int64_t place);
  /// Takes the scanner's group; codes that mean nothing here are passed over.
  void Take(const GroupScanner& scanner);

  /// The value of the scanner's group as a number, noted when it is none.
  double NumberOf(const GroupScanner& scanner);

  std::int64_t Place() const { return place_; }
  /// The place of the first value that should have been a number and is none; 0 when there is none.
  std::int64_t WrongPlace() const { return wrong_; }
  bool Has(int code) const { return given_[static_cast<std::size_t>(code)]; }
  const Vertex& Point(int index) const { return points_[static_cast<std::size_t>(index)]; }
  double Number(int code, double otherwise) const {
    return Has(code) ? numbers_[static_cast<std::size_t>(code - 40)] : otherwise;
  }
  std::int32_t Integer(int code, std::int32_t otherwise) const {
    return Has(code) ? integers_[static_cast<std::size_t>(code - 60)] : otherwise;
  }
  double Elevation() const { return elevation_; }
  double Thickness() const { return thickness_; }      ///< code 39
  std::int32_t Weight() const { return weight_; }      ///< code 370; below 0 where it is not the entity's own
  const std::string& Style() const { return style_; }  ///< code 7, of texts
  const Vertex& Extrusion() const { return extrusion_; }
  const std::optional<std::int32_t>& TrueColour() const { return trueColour_; }
  const std::string& Layer() const { return layer_; }        ///< code 8
  const std::string& LineType() const { return lineType_; }  ///< code 6
  std::uint64_t Handle() const { return handle_; }           ///< code 5; 0 where there is none
  const std::string& Name() const { return name_; }          ///< code 2
  const std::string& Text() const { return text_; }          ///< codes 3 and 1, joined
  const ExtendedData& Own() const { return own_; }

 private:
  std::int64_t place_ = 0, wrong_ = 0;
  std::uint64_t handle_ = 0;
  std::bitset<80> given_;
  std::array<Vertex, kPoints> points_{};
  std::array<double, 20> numbers_{};
  std::array<std::int32_t, 20> integers_{};
  double elevation_ = 0, thickness_ = 0;
  std::int32_t weight_ = kWeightByLayer;
  Vertex extrusion_{0, 0, 1};
  std::optional<std::int32_t> trueColour_;
  std::string layer_, lineType_, name_, text_, style_;
  ExtendedData own_;
};

}  // namespace tesselink
