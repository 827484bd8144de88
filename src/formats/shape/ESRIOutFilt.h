// SPDX-License-Identifier: MIT
// The shapefile writer: .shp, .shx and .dbf, of one shape type, and what other programs look for beside them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/element/tEntity.h"
#include "core/io/Numbers.h"
#include "core/run/CarriedFields.h"
#include "core/run/Filters.h"
#include "core/run/FormatTable.h"
#include "core/run/Interaction.h"
#include "formats/shape/DBFOutFilter.h"
#include "formats/shape/DrawingColumns.h"
#include "formats/shape/ShapeFiles.h"
#include "formats/shape/TableEncoding.h"

namespace tesselink {

/// What a dialect decides in writing a shapefile. What it decides in writing the table, DBFWriting tells.
struct ESRIWriting {
  bool everyType;  ///< polygons, MultiPoints, shapes of several parts and Null shapes, with z and m where they have it
  bool carriesSource;   ///< attributes, and the coordinate system, of inputs that have them go along
  bool isUtf8;          ///< texts are UTF-8, and a .cpg file says so; else bytes are passed on, and "|" becomes a blank
  bool needsTwoPoints;  ///< a chain of one vertex is no PolyLine
  int lostBytes;        ///< at the end of every text, that must stay free
  int realDecimals;     ///< of TextAngle and TextSize
  bool wholeDrawings;   ///< what else drawings have stands in columns too: true colours, justification, and so on
};

/// What the file shall hold is asked at the first element, or when there was none. "Points or Text": a Point for each
/// vertex of a point, and one for a text. "Polyline": a PolyLine for a line or polyline; a closed chain
/// ends on its first vertex. Polygons are made of areas and closed chains, a MultiPoint of a point or text with all of
/// its vertices. Anything else is skipped.
class ESRIOutFilt final : public OutputFilter {
 public:
  /// With a kind nothing is asked, and the file holds that.
  explicit ESRIOutFilt(const FilterContext& context, std::optional<ShapeKind> kind = {});
  static std::vector<Companion> Companions();
  static std::vector<FormatOption> Options();
  /// The option that says what the file holds, and its values for a file of each kind and for areas.
  static constexpr std::string_view kKindOption = "shape-type", kEachKind = "each", kAreasKind = "polygons";
  /// Throws Error for the name of a shapefile's index or table.
  static void CheckName(const std::string& path);
  ~ESRIOutFilt() override { ReleaseQuietly(); }

  bool NamesSystem() const override { return true; }
  void SourceSystem(const CoordinateSystem& system) override { system_ = system; }
  void SourceOpened(InputFilter& source) override;
  std::vector<std::string> Outputs() const override { return created_; }
  Holding Holds() const override {
    return {.parts = writing_.everyType,
            .areas = writing_.everyType,
            .measures = writing_.everyType,
            .lacks = writing_.wholeDrawings ? 0U : kHasLineType | kHasUnnamedColour | kHasJustification,
            .nulls = writing_.everyType};
  }
  std::string HintOfSkipped() const override;
  Carrying CarriesSource() const override { return writing_.carriesSource ? Carrying::Yes : Carrying::InStandard; }

  /// Completes the headers of .shp and .shx by what was written. Throws Error when no file is open.
  void WriteHead();
  std::int64_t Size() const override { return files_.Size() + table_.Size(); }

 private:
  void Create(const std::string& path) override;
  WriteResult Write(tEntity& entity) override;
  void Complete() override;
  void Drop() noexcept override;

  void CarryProjection(const std::string& path);
  void AddColumn(Column column);
  void DeclareFields();
  bool HasTextField() const;
  ShapeKind LikelyKind(const tEntity& entity) const;
  void ChooseKind(ShapeKind likely);
  void ChooseKindOfNothing();
  WriteResult WritePoints(const tEntity& entity);
  WriteResult WriteChain(const tEntity& entity);
  bool FindParts(const tEntity& entity);
  void OrientRings(const tEntity& entity);
  void AddRow(const tEntity& entity);
  void AddOwnValues(const tEntity& entity);
  void CountUnsaid(const tEntity& entity);
  void AddLooks(const tEntity& entity);
  void AddTextValues(const tEntity& entity);
  bool HoldsPoints() const { return *kind_ == ShapeKind::PointsOrText || *kind_ == ShapeKind::MultiPoint; }
  std::string_view Real(double value, std::span<char> buffer) const;
  std::string_view Fitting(const std::string& value, Column column);
  void WriteBeside(const std::string& extension, const std::string& text);
  void CompleteProjection();

  const ESRIWriting& writing_;
  std::string shpPath_, dbfPath_;
  std::vector<std::string> created_;  // the files that this writer has opened
  ShapeFiles files_;
  DBFOutFilter table_;
  CarriedFields carried_;
  bool hasOwnFields_ = true;
  const bool labelsAreas_;
  bool fieldsDeclared_ = false;
  bool skippedOthers_ = false;  // elements of other kinds
  int sources_ = 0;
  CoordinateSystem system_;         // that the run was asked for; what .prj files say counts only without it
  std::string projection_;          // what the .prj files of all sources say
  std::string projectionConflict_;  // the first input whose .prj says something else
  ElementForm form_;                // of the first source
  const std::optional<ShapeKind> onlyKind_;
  std::optional<ShapeKind> kind_;
  std::vector<ShapePart> parts_;
  std::vector<std::string_view> values_;
  std::array<char, 400> angle_, height_;
  std::array<char, kNumberTextSize> number_, handle_;
  std::array<char, FormOf(Column::TrueColour).length> trueColour_;
  std::string placement_;
  std::array<std::string, kDrawingColumns.size()> fitted_;
  TableEncoding encoding_;  // of texts from drawings, which do not say theirs
  std::string decoded_;
  std::int32_t colour_ = 0;  // the colour that the name below is of
  std::string_view colourName_;
};

}  // namespace tesselink
