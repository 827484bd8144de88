// SPDX-License-Identifier: MIT
// The DXF reader: the entities of drawings of any release, text or binary.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "core/run/Filters.h"
#include "core/run/ScanProgress.h"
#include "formats/dxf/BlockExpansion.h"
#include "formats/dxf/Drawing.h"
#include "formats/dxf/EntityReader.h"
#include "formats/dxf/GroupScanner.h"
#include "formats/dxf/RecordGathering.h"

namespace tesselink {

/// Delivers the entities of the ENTITIES section; the layers are those of the LAYER table. How each entity type arrives
/// is told in docs/formats/dxf.md. Definitions in BLOCKS are no elements, but what their inserts draw may be; paper
/// space is left out unless the context asks for it.
class DXFInFilter final : public InputFilter {
 public:
  explicit DXFInFilter(const FilterContext& context) : InputFilter(context) {}
  static std::vector<FormatOption> Options();

  int FileNumber() const override { return scanner_ ? scanner_->FileNumber() : 0; }
  /// The position in bytes.
  std::int64_t Loc() const override { return scanner_ ? scanner_->Position() : 0; }
  double Progress() const override;
  bool Eof() const override { return !EntitiesGoOn() && !(records_ && records_->IsWaiting()); }
  std::string Where() const override;
  const std::vector<LineType>& LineTypes() const override {
    return drawing_ ? drawing_->LineTypes() : InputFilter::LineTypes();
  }
  std::vector<LayerState> LayerStates() const override {
    return drawing_ ? drawing_->LayerStates() : std::vector<LayerState>();
  }
  /// The attributes that this program wrote into the drawing, or those of inserted blocks that come as points.
  AttributeTable* Attributes() override { return table_.get(); }
  std::string AttributesPath() const override;
  bool AttributesAreAll() const override { return table_ && table_->Tables() > 0 && !table_->AreDrawings(); }
  ElementForm Form() const override;
  TextEncoding Encoding() const override {
    return {true, drawing_ ? drawing_->Text().NamedPage() : std::u16string_view()};
  }

 private:
  enum class Section { None, Header, Tables, Blocks, Entities, Other };

  void Open(const std::string& path) override;
  bool Next(tEntity& entity) override;

  bool EntitiesGoOn() const { return inEntities_ || HasMore(); }
  // Whether what was read last draws anything further.
  bool HasMore() const { return (entities_ && entities_->HasWires()) || BlockGoesOn(); }
  bool BlockGoesOn() const { return expansion_ && expansion_->IsActive(); }
  BlockMode Blocks() const;
  EntitySource Source();
  bool ReadEntity(tEntity& entity);
  bool NextElement(tEntity& entity);
  bool NextRecord(tEntity& entity);
  bool InsertsAreRecords() const;
  void OpenTable();
  void TellOfRecords();
  BlockExpansion& Expansion();
  void Expand(const BlockInsert& insert, const tEntity& attributes);
  bool DeliverFromBlock(tEntity& entity);
  bool GoToEntities(GroupScanner& scanner, bool passEntities);
  void TakeGroup(const GroupScanner& scanner, Section section);
  void ReadBehindEntities();
  void LeaveEntities();
  void TellOfBlocks();

  std::unique_ptr<Drawing> drawing_;
  std::unique_ptr<GroupScanner> scanner_;
  std::unique_ptr<EntityReader> entities_;
  std::unique_ptr<BlockExpansion> expansion_;  // once there is an insert to be drawn
  std::unique_ptr<DrawingTable> table_;        // where the drawing has attributes
  std::unique_ptr<RecordGathering> records_;   // likewise
  tEntity read_;
  bool fromBlock_ = false;  // the element read last
  BlockTally drawn_;
  bool inEntities_ = false;
  bool tablesSeen_ = false, blocksSeen_ = false;
  bool sectionSeen_ = false;
  bool endSeen_ = false;
  bool bytesTold_ = false;
  ScanProgress scan_{interaction()};
};

}  // namespace tesselink
