// SPDX-License-Identifier: MIT
#include "formats/dxf/DXFInFilter.h"

#include <cmath>

#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/io/Text.h"
#include "core/run/EncodingOption.h"
#include "core/run/Interaction.h"
#include "core/run/Report.h"

namespace tesselink {

std::vector<FormatOption> DXFInFilter::Options() {
  return {
      {.name = "paper-space", .help = "Read a DXF drawing's paper space too", .kind = FormatOption::Kind::Flag},
      {.name = "blocks",
       .help =
           "How blocks that a DXF drawing inserts come: as points\n(in the classic dialect without it), as what they "
           "draw (in\nthe standard one), or both",
       .value = "CHOICE",
       .kind = FormatOption::Kind::Choice,
       .choices = {"points", "expand", "both"}},
      {.name = "limit",
       .help =
           "How many entities blocks may draw, 100000000 without it;\nreaching it ends the run with what was written",
       .value = "NUMBER",
       .check =
           [](const std::string& value) {
             const double number = NumberOrNone(value);
             const bool counts = number >= 1 && number < 1e15 && number == std::floor(number);
             return std::string(counts ? "" : "expected a whole number above 0");
           }},
      EncodingOption()};
}

void DXFInFilter::Open(const std::string& path) {
  expansion_.reset();
  records_.reset();
  table_.reset();
  entities_.reset();
  scanner_.reset();
  layers_.clear();
  bytesTold_ = inEntities_ = tablesSeen_ = blocksSeen_ = sectionSeen_ = endSeen_ = false;
  read_.CountOrigin(true);
  drawn_ = {};
  filename_ = path;
  const bool everyPage = options().dialect == Dialect::Standard;
  drawing_ = std::make_unique<Drawing>(report(), everyPage ? DrawingText(ChosenPage(options())) : DrawingText());
  scanner_ = std::make_unique<GroupScanner>(path, report());
  scan_.Begin(ScanProgress::kBytes);
  inEntities_ = GoToEntities(*scanner_, false);
  scan_.End();
  if (!sectionSeen_ && !endSeen_) {
    scanner_.reset();
    throw Error(path + ": is no DXF drawing; it has no section");
  }
  if (inEntities_ && !tablesSeen_ && options().lookAhead) ReadBehindEntities();
  if (!blocksSeen_) drawing_->BlocksMayFollow([this] { ReadBehindEntities(); });
  layers_ = drawing_->LayerNames();
  if (options().dialect == Dialect::Standard) OpenTable();
  entities_ = std::make_unique<EntityReader>(Source());
  if (!inEntities_) LeaveEntities();
}

ElementForm DXFInFilter::Form() const {
  ElementForm form = table_ && table_->Tables() == 1 ? table_->Form() : ElementForm();
  form.isDrawing = form.lineTypes = true;
  form.blocks = options().dialect == Dialect::Standard;
  return form;
}

// The classic dialect does not read what it names.
std::string DXFInFilter::AttributesPath() const {
  return table_ || (drawing_ && !drawing_->Schema().empty()) ? filename_ : std::string();
}

BlockMode DXFInFilter::Blocks() const {
  const std::string blocks = options().own.Text("blocks", options().dialect == Dialect::Standard ? "expand" : "points");
  return blocks == "points" ? BlockMode::Points : blocks == "both" ? BlockMode::Both : BlockMode::Expand;
}

EntitySource DXFInFilter::Source() {
  const bool isStandard = options().dialect == Dialect::Standard;
  const BlockMode mode = Blocks();
  return {.scanner = *scanner_,
          .drawing = *drawing_,
          .report = report(),
          .programFolder = options().programFolder,
          .paperSpace = options().own.Has("paper-space"),
          .inFull = isStandard,
          .byLayer = isStandard,
          .blocks = mode,
          .ownBlocks = isStandard || mode != BlockMode::Points,
          .whole = isStandard,
          .symbolsOfPoints = !isStandard,
          .baselines = isStandard,
          .bulges = isStandard,
          .tolerance = options().Curves()};
}

// Reads on to the first group of code 0 within a section of entities, taking in the header and the tables on the way.
// False when there is none. With `passEntities` such sections are passed over, and the whole file is read.
bool DXFInFilter::GoToEntities(GroupScanner& scanner, bool passEntities) {
  Section section = Section::None;
  bool named = true;  // false between a SECTION and its name
  while (scanner.Next()) {
    scan_.At(scanner.Position(), scanner.Size());
    if (scanner.Code() == 0) {
      const std::string_view keyword = scanner.Keyword();
      TakeGroup(scanner, section);
      if (section == Section::Entities && !passEntities && keyword != "ENDSEC") return true;
      if (keyword == "EOF") {
        endSeen_ = true;
        return false;
      }
      named = keyword != "SECTION";
      if (!named || keyword == "ENDSEC") section = Section::None;
    } else if (!named && scanner.Code() == 2) {
      const std::string_view name = scanner.Keyword();
      section = name == "HEADER"     ? Section::Header
                : name == "TABLES"   ? Section::Tables
                : name == "BLOCKS"   ? Section::Blocks
                : name == "ENTITIES" ? Section::Entities
                                     : Section::Other;
      tablesSeen_ = tablesSeen_ || section == Section::Tables;
      blocksSeen_ = blocksSeen_ || section == Section::Blocks;
      named = sectionSeen_ = true;
    } else {
      TakeGroup(scanner, section);
    }
  }
  return false;
}

void DXFInFilter::TakeGroup(const GroupScanner& scanner, Section section) {
  if (section == Section::Header) drawing_->TakeHeaderGroup(scanner);
  if (section == Section::Tables) drawing_->TakeTableGroup(scanner);
  if (section == Section::Blocks) drawing_->TakeBlockGroup(scanner);
}

// Layers and blocks are wanted before what uses them, wherever they stand. What is wrong on the way is told when it is
// read.
void DXFInFilter::ReadBehindEntities() {
  Report unheeded;
  GroupScanner scanner(filename_, unheeded);
  scan_.Begin(ScanProgress::kBytes);
  GoToEntities(scanner, true);
  scan_.End();
  endSeen_ = false;
}

double DXFInFilter::Progress() const { return scanner_ ? Percentage(Loc(), scanner_->Size()) : 0; }

std::string DXFInFilter::Where() const {
  const std::int64_t place = records_ && WholeRecords ? records_->Place() : entities_ ? entities_->Place() : 0;
  return place > 0 ? scanner_->PlaceText(place) : filename_;
}

bool DXFInFilter::InsertsAreRecords() const { return WholeRecords && Blocks() == BlockMode::Points; }

void DXFInFilter::OpenTable() {
  auto table = std::make_unique<DrawingTable>(drawing_->Text());
  table->AddTables(drawing_->Schema());
  if (InsertsAreRecords()) {
    for (const std::string& tag : drawing_->Blocks().Tags()) table->AddTag(tag);
  }
  if (table->LeftOut() > 0) {
    report().Warn(WarningKind::FieldsLeftOut, filename_ + ": attributes beyond the first " +
                                                  std::to_string(DrawingTable::kMostColumns) + " were left out");
  }
  if (!table->Any()) return;
  records_ = std::make_unique<RecordGathering>(*table);
  table_ = std::move(table);
}

bool DXFInFilter::Next(tEntity& entity) {
  if (!entities_) return false;
  if (!table_) return NextElement(entity);
  if (WholeRecords) return NextRecord(entity);
  if (!NextElement(entity)) return false;
  if (!fromBlock_) records_->MarkOf(entity, entities_->Groups(), table_->Current());
  return true;
}

// Reads on until an element is complete.
bool DXFInFilter::NextRecord(tEntity& entity) {
  while (EntitiesGoOn()) {
    if (!NextElement(read_)) {
      if (!EntitiesGoOn()) break;
      return false;
    }
    RecordMark mark;
    if (!fromBlock_) {
      mark = records_->MarkOf(read_, entities_->Groups(), records_->NextRow());
      const bool ofInsert = entities_->IsOfInsert();
      if (InsertsAreRecords() && mark.role == RecordMark::Role::None && (ofInsert || entities_->IsInsert())) {
        mark = records_->MarkOfInsert(ofInsert, entities_->Groups());
      }
    }
    if (!records_->Add(read_, mark)) continue;
    std::swap(entity, read_);
    return true;
  }
  if (!records_->IsWaiting()) return false;
  records_->Finish(entity);
  TellOfRecords();
  return true;
}

void DXFInFilter::TellOfRecords() {
  if (const std::int64_t labels = records_->LabelsLeftOut(); labels > 0) {
    report().Warn(WarningKind::LabelsInRecords,
                  filename_ + ": " + Counted(labels, "text") +
                      (labels == 1 ? " only repeats what its record says, and was left out"
                                   : " only repeat what their records say, and were left out"));
  }
  if (!records_->UnknownTags().empty()) {
    report().Warn(
        WarningKind::FieldsLeftOut,
        filename_ + ": attributes of inserts that no block defines were left out: " + records_->UnknownTags());
  }
}

bool DXFInFilter::NextElement(tEntity& entity) {
  fromBlock_ = false;
  entity.Reset();
  bool delivered = entities_->NextWire(entity);
  // A block may hold much that is no element: the run goes on meanwhile.
  if (!delivered && BlockGoesOn()) return DeliverFromBlock(entity);
  while (!delivered && inEntities_ && !HasMore()) {
    const std::string_view keyword = scanner_->Keyword();
    if (keyword == "ENDSEC" || keyword == "EOF" || keyword == "SECTION") {
      endSeen_ = keyword == "EOF";
      LeaveEntities();
    } else {
      delivered = ReadEntity(entity);
    }
  }
  if (!delivered && BlockGoesOn()) return DeliverFromBlock(entity);
  if (delivered) entity.CDFCode = codes_.CodeOf(entity.Layer);
  if (!bytesTold_ && drawing_->Text().HadOtherBytes()) {
    report().Warn(WarningKind::Bytes, Where() +
                                          ": bytes before it that are no letters of the code page became U+FFFD; "
                                          "there may be more");
    bytesTold_ = true;
  }
  return delivered;
}

bool DXFInFilter::ReadEntity(tEntity& entity) {
  const bool delivered = entities_->Read(entity);
  if (const BlockInsert* insert = entities_->ToDraw()) Expand(*insert, entity);
  if (delivered && entities_->IsOfArray()) Expansion().Repeat(entity, entities_->Array(), entities_->Place());
  if (entities_->AtEnd()) LeaveEntities();
  return delivered;
}

BlockExpansion& DXFInFilter::Expansion() {
  constexpr double kMost = 100'000'000;
  if (!expansion_) {
    const auto most = static_cast<std::int64_t>(options().own.Number("limit", kMost));
    expansion_ = std::make_unique<BlockExpansion>(filename_, Source(), most);
  }
  return *expansion_;
}

void DXFInFilter::Expand(const BlockInsert& insert, const tEntity& attributes) {
  if (drawn_.inserts++ == 0) drawn_.place = entities_->Place();
  Expansion().Begin(insert, attributes, entities_->Place());
}

bool DXFInFilter::DeliverFromBlock(tEntity& entity) {
  fromBlock_ = true;
  entity.Reset();
  if (!expansion_->Next(entity)) return false;
  entity.CDFCode = codes_.CodeOf(entity.Layer);
  return true;
}

// Goes on to a further section of entities, as joined drawings have, or to the end.
void DXFInFilter::LeaveEntities() {
  inEntities_ = !endSeen_ && GoToEntities(*scanner_, false);
  scan_.End();
  if (!inEntities_) TellOfBlocks();
  if (inEntities_ || endSeen_) return;
  report().Warn(WarningKind::NoEnd,
                scanner_->PlaceText(scanner_->Place()) + ": the drawing ends without EOF; something may be missing");
}

void DXFInFilter::TellOfBlocks() {
  const auto tell = [this](WarningKind kind, const BlockTally& tally, const std::string& what, const char* mode,
                           const char* then) {
    report().Warn(kind, scanner_->PlaceText(tally.place) + ": " + what + " (" + interaction().Naming("blocks", mode) +
                            " " + then + ")");
  };
  if (const BlockTally& undrawn = entities_->Undrawn(); undrawn.inserts > 0) {
    const std::string drawn =
        std::to_string(undrawn.entities) + (undrawn.entities == 1 ? " entity that is" : " entities that are");
    tell(WarningKind::BlocksNotDrawn, undrawn,
         (undrawn.inserts == 1
              ? "1 insert of a block came as a point; the block draws "
              : std::to_string(undrawn.inserts) + " inserts of blocks came as points; the blocks draw ") +
             drawn + " not converted",
         "expand", "converts them");
  }
  if (drawn_.inserts > 0 && options().own.Text("blocks") != "both") {
    tell(WarningKind::BlockNames, drawn_,
         drawn_.inserts == 1
             ? "1 insert of a block came as what it draws; its name and insertion point do not go along"
             : std::to_string(drawn_.inserts) +
                   " inserts of blocks came as what they draw; names and insertion points do not go along",
         "both", drawn_.inserts == 1 ? "keeps it as a point" : "keeps them as points");
  }
}

}  // namespace tesselink
