// SPDX-License-Identifier: MIT
// The GeoJSON writer (RFC 7946), and its two layouts of a feature at a time.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/io/Files.h"
#include "core/run/Filters.h"
#include "formats/FeatureOutFilter.h"
#include "formats/FeatureProperties.h"

namespace tesselink {

/// How features follow each other.
enum class GeoJSONLayout {
  Collection,  ///< within one FeatureCollection
  Lines,       ///< each on a line of its own
  Sequence,    ///< likewise, begun by a record separator (RFC 8142)
};

/// A feature for each element. Positions have a z where the element has heights; numbers are the shortest that read
/// back as the same.
class GeoJSONOutFilter final : public FeatureOutFilter {
 public:
  GeoJSONOutFilter(const FilterContext& context, GeoJSONLayout layout);
  template <GeoJSONLayout kLayout>
  static std::unique_ptr<OutputFilter> Writer(const FilterContext& context) {
    return std::make_unique<GeoJSONOutFilter>(context, kLayout);
  }
  ~GeoJSONOutFilter() override { ReleaseQuietly(); }

  SystemWish WishesSystem() const override { return SystemWish::Wgs84; }
  void SourceOpened(InputFilter& source) override;
  Holding Holds() const override { return {.parts = true, .areas = true, .nulls = true}; }
  std::int64_t Size() const override { return file_.Size(); }

 private:
  void Create(const std::string& path) override;
  WriteResult Write(tEntity& entity) override;
  void Complete() override;
  void Drop() noexcept override;

  void WriteProperties(const tEntity& entity);
  void WriteValue(const PropertyValue& value);
  void WriteGeometry();
  void WriteMembers(std::string_view type);
  void WritePolygons();
  void WriteChain(const FeatureChain& chain);
  void WritePosition(tEntity::Index at);
  void WriteReal(double value);
  void WriteText(std::string_view text);

  const GeoJSONLayout layout_;
  FileWriter file_;
  bool isFirst_ = true;
  ElementForm form_;
  FeatureProperties properties_;
  bool hasHeights_ = false;  // of the element at hand
};

}  // namespace tesselink
