// The shapefile writer: .shp, .shx and .dbf, of one shape type.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Extents.h"
#include "core/Files.h"
#include "core/Filters.h"
#include "core/Interaction.h"
#include "core/VertexChains.h"
#include "formats/shape/DBFOutFilter.h"

namespace tesselink {

/// What the file shall hold is asked at the first element. "Points or Text": a Point for each vertex of a point, and
/// one for a text. "Polyline": a PolyLine of one part for a line or polyline, and for a circle or arc as a chain; a
/// closed chain ends on its first vertex. Anything else is skipped. The files' layout is that of the ESRI Shapefile
/// Technical Description of July 1998, the table's that of DBFOutFilter.
class ESRIOutFilt final : public OutputFilter {
 public:
  explicit ESRIOutFilt(const FilterContext& context) : OutputFilter(context) {}
  ~ESRIOutFilt() override { ReleaseQuietly(); }

  std::vector<std::string> Outputs() const override { return {shpPath_, shxPath_, dbfPath_}; }

  /// The layout counts 16-bit words in a signed 32-bit number.
  static constexpr std::int64_t kGreatestSize = std::int64_t{0x7FFFFFFF} * 2;
  /// A smaller limit serves tests.
  std::int64_t sizeLimit = kGreatestSize;

  /// Completes the headers of .shp and .shx by what was written.
  void WriteHead();

 private:
  void Create(const std::string& path) override;
  WriteResult Write(tEntity& entity) override;
  void Complete() override;
  void Drop() noexcept override;

  void ChooseKind(const tEntity& entity);
  WriteResult WritePoints(const tEntity& entity);
  WriteResult WriteChain(const tEntity& entity);
  void AddShape(std::string_view content, const tEntity& entity);
  std::string_view Fitting(const std::string& value, std::size_t field);

  std::string shpPath_, shxPath_, dbfPath_;
  std::vector<std::string> created_;  // those of the three that this writer has opened
  FileWriter shp_, shx_;
  DBFOutFilter table_;
  std::optional<ShapeKind> kind_;
  Extents extents_;
  std::int32_t shapes_ = 0;
  VertexChain chain_;
  std::string content_;
  std::array<std::string, 3> fitted_;
  std::int32_t colour_ = 0;  // the colour that the name below is of
  std::string_view colourName_;
  std::int64_t heights_ = 0, cutValues_ = 0, bars_ = 0, controls_ = 0;
};

}  // namespace tesselink
