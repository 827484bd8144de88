// SPDX-License-Identifier: MIT
// The writer of one shapefile for each kind of element that a drawing has.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "core/run/Filters.h"
#include "formats/FeatureGeometry.h"
#include "formats/shape/ESRIOutFilt.h"

namespace tesselink {

/// Makes "plat-points.shp", "plat-lines.shp", "plat-areas.shp" and "plat-texts.shp" of an output "plat.shp", those of
/// them that the drawing has elements for; "plat-points.shp" when it has none. Points of a shapefile of MultiPoints
/// stay groups of points.
class ShapesByKind final : public OutputFilter {
 public:
  explicit ShapesByKind(const FilterContext& context);
  ~ShapesByKind() override { ReleaseQuietly(); }

  /// The writer that the values of the options ask for: of one shapefile, or of one for each kind.
  static std::unique_ptr<OutputFilter> Writer(const FilterContext& context);
  /// What stands behind the output's stem in the names of the shapefiles; nothing where one is asked for.
  static std::vector<std::string> Parts(const OptionValues& values);

  /// Areas made of lines go into a shapefile of areas, with lines in another one or alone.
  static AreaPlace PlaceOfAreas(const OptionValues& values);
  /// What has no place in a shapefile of the kind that is chosen.
  static KindSet LeftOut(const OptionValues& values);

  bool NamesSystem() const override { return true; }
  void SourceSystem(const CoordinateSystem& system) override { system_ = system; }
  void SourceOpened(InputFilter& source) override {
    source_ = &source;
    ++sources_;
  }
  std::vector<std::string> Outputs() const override;
  Holding Holds() const override { return holding_; }
  Carrying CarriesSource() const override { return carrying_; }
  std::int64_t Size() const override;

 private:
  void Create(const std::string& path) override;
  WriteResult Write(tEntity& entity) override;
  void Complete() override;
  void Drop() noexcept override;

  ESRIOutFilt& WriterOf(FeatureKind kind);
  void Begin(std::size_t kind);

  FilterContext context_;
  Holding holding_;
  Carrying carrying_;
  std::string path_;
  CoordinateSystem system_;
  InputFilter* source_ = nullptr;  // the one that is open
  int sources_ = 0;
  struct Shapefile {
    std::unique_ptr<ESRIOutFilt> writer = {};  // none before its first element
    int source = 0;                            // the last one that it was told of
  };
  std::array<Shapefile, kFeatureKinds> shapefiles_;
};

}  // namespace tesselink
