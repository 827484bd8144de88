// SPDX-License-Identifier: MIT
// The GeoPackage writer.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "core/io/Database.h"
#include "formats/FeatureOutFilter.h"
#include "formats/gpkg/GPKGTable.h"

namespace tesselink {

/// Makes the tables "points", "lines", "areas" and "texts", those of them that there are elements for; "points" when
/// there are none. Elements in a further coordinate system make tables of their own, as "lines_2". A table has the
/// attributes of the first input that it holds elements of.
class GPKGOutFilter final : public FeatureOutFilter {
 public:
  explicit GPKGOutFilter(const FilterContext& context) : FeatureOutFilter(context) {}
  ~GPKGOutFilter() override { ReleaseQuietly(); }

  SystemWish WishesSystem() const override { return SystemWish::Known; }
  void SourceSystem(const CoordinateSystem& system) override;
  void SourceOpened(InputFilter& source) override;
  Holding Holds() const override { return {.parts = true, .areas = true, .measures = true, .nulls = true}; }
  std::int64_t Size() const override;

 private:
  struct KnownSystem {
    std::string name, definition;
    int id;
  };
  struct Layer {
    std::unique_ptr<GPKGTable> table;
    int source = 0;  // the last input that it was told of
  };

  void Create(const std::string& path) override;
  WriteResult Write(tEntity& entity) override;
  void Complete() override;
  void Drop() noexcept override;

  int IdOf(const CoordinateSystem& system);
  GPKGTable& TableOf(FeatureKind kind, bool ofGroups);
  GPKGTable& Make(FeatureKind kind, bool ofGroups);
  std::string FreeName(FeatureKind kind) const;

  std::string path_;
  std::unique_ptr<Database> database_;
  std::vector<Layer> layers_;
  std::vector<KnownSystem> systems_;  // those that are no row by themselves
  int system_ = 0;                    // of the elements that come
  InputFilter* source_ = nullptr;
  int sources_ = 0;
};

}  // namespace tesselink
