#include "formats/dxf/DXFInFilter.h"

#include "core/io/Errors.h"
#include "core/run/Interaction.h"
#include "core/run/Report.h"

namespace tesselink {

std::vector<FormatOption> DXFInFilter::Options() {
  return {{.name = "paper-space", .help = "Read a DXF drawing's paper space too", .kind = FormatOption::Kind::Flag}};
}

void DXFInFilter::Open(const std::string& path) {
  entities_.reset();
  scanner_.reset();
  layers_.clear();
  inEntities_ = tablesSeen_ = sectionSeen_ = endSeen_ = false;
  filename_ = path;
  drawing_ = std::make_unique<Drawing>(report());
  scanner_ = std::make_unique<GroupScanner>(path, report());
  scan_.Begin(ScanProgress::kBytes);
  inEntities_ = GoToEntities(*scanner_, false);
  scan_.End();
  if (!sectionSeen_ && !endSeen_) {
    scanner_.reset();
    throw Error(path + ": is no DXF drawing; it has no section");
  }
  if (inEntities_ && !tablesSeen_ && options().lookAhead) ReadTablesBehindEntities();
  layers_ = drawing_->LayerNames();
  const bool isStandard = options().dialect == Dialect::Standard;
  entities_ = std::make_unique<EntityReader>(EntitySource{.scanner = *scanner_,
                                                          .drawing = *drawing_,
                                                          .report = report(),
                                                          .programFolder = options().programFolder,
                                                          .paperSpace = options().own.Has("paper-space"),
                                                          .inFull = isStandard,
                                                          .baselines = isStandard,
                                                          .bulges = isStandard,
                                                          .tolerance = options().Curves()});
  if (!inEntities_) LeaveEntities();
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

// The layers are wanted before the first entity, wherever they stand. What is wrong on the way is told when it is read.
void DXFInFilter::ReadTablesBehindEntities() {
  Report unheeded;
  GroupScanner scanner(filename_, unheeded);
  scan_.Begin(ScanProgress::kBytes);
  GoToEntities(scanner, true);
  scan_.End();
  endSeen_ = false;
}

double DXFInFilter::Progress() const { return scanner_ ? Percentage(Loc(), scanner_->Size()) : 0; }

std::string DXFInFilter::Where() const {
  return entities_ && entities_->Place() > 0 ? scanner_->PlaceText(entities_->Place()) : filename_;
}

bool DXFInFilter::Next(tEntity& entity) {
  if (!entities_) return false;
  entity.Reset();
  bool delivered = entities_->NextWire(entity);
  while (!delivered && inEntities_) {
    const std::string_view keyword = scanner_->Keyword();
    if (keyword == "ENDSEC" || keyword == "EOF" || keyword == "SECTION") {
      endSeen_ = keyword == "EOF";
      LeaveEntities();
      continue;
    }
    delivered = entities_->Read(entity);
    if (entities_->AtEnd()) LeaveEntities();
  }
  if (delivered) entity.CDFCode = codes_.CodeOf(entity.Layer);
  return delivered;
}

// Goes on to a further section of entities, as joined drawings have, or to the end.
void DXFInFilter::LeaveEntities() {
  inEntities_ = !endSeen_ && GoToEntities(*scanner_, false);
  scan_.End();
  if (inEntities_ || endSeen_) return;
  report().Warn(WarningKind::NoEnd,
                scanner_->PlaceText(scanner_->Place()) + ": the drawing ends without EOF; something may be missing");
}

}  // namespace tesselink
