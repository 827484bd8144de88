// SPDX-License-Identifier: MIT
// The DXF writer: drawings of release "AC1009" as text, group code and value on alternate lines.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/run/FormatTable.h"
#include "formats/dxf/DrawingOutput.h"
#include "formats/dxf/DrawingPages.h"
#include "formats/dxf/PageEncoding.h"

namespace tesselink {

/// By convention circles become "CIRCLE", arcs are not written, a closed chain is written through its stored vertices,
/// the vertical placement of a text stands in group 73 as 0, 16, 32 or 48, and a vertex at (0, 0, 0) counts as missing.
/// The standard dialect departs from that as `DrawingConventions` tells.
class DXFOutFilter final : public DrawingOutput {
 public:
  explicit DXFOutFilter(const FilterContext& context);
  ~DXFOutFilter() override { ReleaseQuietly(); }

  /// The option that chooses the release, and the writer of the one that was chosen.
  static std::vector<FormatOption> Options();
  static std::unique_ptr<OutputFilter> Writer(const FilterContext& context);
  /// Where areas made of lines go: beside these, in a release that has areas.
  static AreaPlace PlaceOfAreas(const OptionValues& values);

  Holding Holds() const override {
    return {.bulges = conventions_.bulges,
            .lacks = kHasSymbol | kHasEntityCode | kHasSeveralPoints,
            .curves = true,
            .keeps = conventions_.fullTables ? std::uint32_t{kLostLayerHiding} : 0};
  }

 private:
  WriteResult Write(tEntity& entity) override;
  void WriteSections() override;
  void WriteEnd(FileWriter& output) override;
  void WritePoints(const tEntity& entity, tEntity::Index last) override;
  void WriteLines(const tEntity& entity, tEntity::Index last) override;
  void WritePolyline(const tEntity& entity, tEntity::Index last) override;
  void WriteText(const tEntity& entity) override;
  void WriteCircle(const tEntity& entity) override;
  void WriteArc(const tEntity& entity) override;
  void NoteNewName(const DrawingNames::Entry& entry) override;
  std::string_view Interim(const std::string& name) override;
  std::string_view InterimValue(std::string_view value) override;
  std::string_view SchemaText(const std::string& text) override { return InPage(text); }
  void AppendEntities(FileWriter& output, const std::string& path) override;
  void Create(const std::string& path) override;

  static constexpr std::int64_t kNever = -1;

  void NoteMisread(const tEntity& entity);
  void NoteHeights(const tEntity& entity);
  void WritePolylineForm(const tEntity& entity, bool inSpace);
  void Open(std::string_view type, const tEntity& entity);
  void Bulge(const tEntity& entity, std::size_t segment);
  void WriteLineTypeTable();
  void WriteLayerTable();

  void NoteOtherPage();
  std::string_view InterimText(std::string_view text);
  void ChoosePage();
  void SettleNames(DrawingNames& names, const char* what, NamesInPage& settled);
  static std::string_view NameInPage(const NamesInPage& names, std::string_view name);
  std::string_view InPage(std::string_view text);

  std::string vertexHead_;
  DrawingPages pages_;
  std::int64_t utf8From_ = kNever;              // where the entities are UTF-8 and no longer in ANSI_1252
  NamesInPage layersInPage_, lineTypesInPage_;  // those with letters beyond ASCII
  std::string inPage_, decoded_;
  std::string interimName_, interim_;  // the last name in ANSI_1252
};

}  // namespace tesselink
