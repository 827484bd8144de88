#include "formats/shape/ESRIInFilt.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/Errors.h"
#include "core/Interaction.h"
#include "core/Numbers.h"
#include "core/Paths.h"
#include "core/Report.h"
#include "core/Text.h"
#include "formats/shape/Bytes.h"

namespace tesselink {
namespace {

constexpr std::int64_t kHeaderSize = 100;
constexpr std::int64_t kIndexEntrySize = 8;
constexpr std::int64_t kRecordHeaderSize = 8;
constexpr std::int64_t kPointSize = 16;
constexpr std::int32_t kFileCode = 9994;
// Bytes of a record up to the end of the counts of its parts and points, the record header included.
constexpr std::size_t kHeadSize = 52;

enum ShapeType : std::int32_t {
  kNullShape = 0,
  kPointShape = 1,
  kPolyLine = 3,
  kPolygon = 5,
  kMultiPoint = 8,
  kPolyLineZ = 13,
  kPolygonZ = 15,
};

const char* UnhandledTypeName(std::int32_t type) {
  switch (type) {
    case 11:
      return "PointZ";
    case 18:
      return "MultiPointZ";
    case 21:
      return "PointM";
    case 23:
      return "PolylineM";
    case 25:
      return "PolygonM";
    case 28:
      return "MultiPointM";
    case 31:
      return "MultiPatch";
    default:
      return nullptr;
  }
}

std::string Bytes(std::int64_t count) { return Counted(count, "byte"); }

}  // namespace

void ESRIInFilt::Open(const std::string& path) {
  if (!FileExists(path)) return;
  OpenMainFile(path);
  const std::string indexPath = PartnerFile(path, "SHX");
  if (indexPath.empty()) {
    interaction().ShowMessage({Topic::Notice,
                               "Fatal Error: Could not find file " + LowerCase(StripExtension(path) + ".SHX"), "Error",
                               MessageIcon::Critical});
    filename_.clear();
    shp_.Close();
    return;
  }
  shx_ = BinaryFile(indexPath);
  index_.Reset();
  if (shx_.Size() < kHeaderSize) {
    throw Error(indexPath + ": holds " + Bytes(shx_.Size()) + "; an index begins with a header of 100");
  }
  if ((shx_.Size() - kHeaderSize) % kIndexEntrySize != 0) {
    report().Warn("index cut", indexPath + ": ends within an entry; it may list fewer records than there are");
  }
  records_ = static_cast<std::int64_t>(RoundHalfEven(static_cast<double>(shx_.Size() - kHeaderSize) / kIndexEntrySize));
  if (records_ == 0) WarnOfUnlisted();
  OpenTable();
}

void ESRIInFilt::OpenMainFile(const std::string& path) {
  filename_.clear();
  layers_.clear();
  table_.reset();
  record_ = records_ = position_ = 0;
  listed_ = kHeaderSize;
  inOrder_ = true;
  current_ = {};
  part_ = 0;
  labelPending_ = tableTried_ = false;
  shp_ = BinaryFile(path);
  for (ReadWindow* window : {&recordBytes_, &partStarts_, &vertices_, &zValues_}) window->Reset();
  const auto header = recordBytes_.At(0, kHeaderSize);
  if (static_cast<std::int64_t>(header.size()) < kHeaderSize) {
    throw Error(path + ": holds " + Bytes(shp_.Size()) + "; a shapefile begins with a header of 100");
  }
  if (BigEndian32(header.data()) != kFileCode) {
    throw Error(path + ": is not a shapefile; it begins with the number " + std::to_string(BigEndian32(header.data())) +
                " where shapefiles have 9994");
  }
  filename_ = path;
}

void ESRIInFilt::OpenTable() {
  if (!Layered) return;
  tableTried_ = true;
  const std::string tablePath = PartnerFile(filename_, "DBF");
  if (tablePath.empty()) {
    interaction().ShowMessage({Topic::Notice,
                               "Warning: \r\nCould not find file " + LowerCase(StripExtension(filename_) + ".DBF"), "",
                               MessageIcon::Warning});
    Layered = false;
    return;
  }
  table_ = std::make_unique<DBFInFilter>();
  table_->filename(tablePath);
  selection_->Create(*table_);
  UseTable();
}

// Asks for the fields unless they are chosen already, and gathers the layers that the table holds.
void ESRIInFilt::UseTable() {
  if (selection_->CurrentStep() != FieldSelection::Step::Done) interaction().SelectFields(*selection_);
  const auto fieldNumber = [this](const std::string& name) {
    const int number = table_->GetFieldNum(name);
    if (number == 0 && !EqualsIgnoringCase(Trimmed(table_->GetFieldName(0)), Trimmed(name))) {
      report().Warn("unknown field " + name, table_->filename() + ": has no field \"" + name +
                                                 "\"; its first field, \"" + table_->GetFieldName(0) + "\", is used");
    }
    return number;
  };
  layerField_ = fieldNumber(selection_->LayerField());
  textField_ = selection_->TextWanted() ? fieldNumber(selection_->TextField()) : -1;
  const std::int64_t rows = table_->NumRecs();
  if (rows < records_) {
    report().Warn("short table", table_->filename() + ": has " + Counted(rows, "row") + " for " +
                                     Counted(records_, "shape") + "; shapes without a row have empty values");
  }
  if (!options().layersWanted) return;
  layers_ = selection_->Entries([&](std::int64_t row) {
    if (row % 4096 != 0) return;
    interaction().ShowScan("Loading Database...", row, rows);
    interaction().Yield();
    if (interaction().CancelRequested()) throw OperationCanceled();
  });
  interaction().HideScan();
}

void ESRIInFilt::SetDBFObj(FieldSelection& selection) {
  const bool attached = tableTried_ && selection_ == &selection;
  Layered = true;
  selection_ = &selection;
  if (!attached && !filename_.empty()) OpenTable();
}

double ESRIInFilt::Progress() const {
  if (!shp_.IsOpen() || shp_.Size() == 0) return 0;
  return std::min(static_cast<double>(position_) / static_cast<double>(shp_.Size()) * 100, 100.0);
}

bool ESRIInFilt::Eof() const { return record_ >= records_ && part_ >= current_.parts && !labelPending_; }

std::string ESRIInFilt::Where() const { return filename_ + ", record " + std::to_string(record_); }

void ESRIInFilt::WarnRecord(std::string_view kind, const std::string& what) {
  report().Warn(kind, Where() + ": " + what);
}

bool ESRIInFilt::GetNextEntity(tEntity& entity, std::int64_t record) {
  if (record > 0) {
    if (filename_.empty() || record > records_) return false;
    record_ = record - 1;
    inOrder_ = false;
    current_ = {};
    part_ = 0;
    labelPending_ = false;
  }
  return GetNextEntity(entity);
}

bool ESRIInFilt::Next(tEntity& entity) {
  if (filename_.empty()) return false;
  const bool delivered = Deliver(entity);
  if (Eof()) WarnOfUnlisted();
  return delivered;
}

void ESRIInFilt::WarnOfUnlisted() {
  if (!inOrder_ || listed_ >= shp_.Size()) return;
  report().Warn("not in the index", filename_ + ": the index lists nothing of " + Bytes(shp_.Size() - listed_) +
                                        " of the file; they were not read");
  inOrder_ = false;
}

bool ESRIInFilt::Deliver(tEntity& entity) {
  for (;;) {
    if (part_ < current_.parts) {
      if (DeliverPart(entity)) return true;
    } else if (labelPending_) {
      labelPending_ = false;
      if (DeliverLabel(entity)) return true;
    } else if (record_ >= records_ || !NextRecord()) {
      return false;
    }
  }
}

// Goes on to the next record that holds something. False when there is none, or when the record was one to tell the
// person about, so that the run yields after each message.
bool ESRIInFilt::NextRecord() {
  while (record_ < records_) {
    ++record_;
    part_ = 0;
    nextPoint_ = 0;
    current_ = {};
    if (LoadRecord()) {
      labelPending_ = UsesTable() && selection_->TextWanted();
      return true;
    }
    if (UnhandledTypeName(current_.type) != nullptr) return false;
  }
  return false;
}

// The bytes of the record at a position, its header included, by the index; 0 when there are none. What the record
// itself says, up to where the index puts the next one, is kept for a record that needs more: real files carry a wrong
// length in one of the two places.
std::int64_t ESRIInFilt::RecordLength(std::int64_t at, std::int64_t indexWords, std::int64_t ownWords) {
  const auto following = index_.At(kHeaderSize + kIndexEntrySize * record_, kIndexEntrySize);
  const std::int64_t next = following.size() < 4 ? 0 : std::int64_t{BigEndian32(following.data())} * 2;
  const std::int64_t room = (next > at ? std::min(next, shp_.Size()) : shp_.Size()) - at;
  const auto bounded = [](std::int64_t words, std::int64_t most) {
    return words < 2 ? 0 : std::min(words * 2 + kRecordHeaderSize, most);
  };
  std::int64_t available = bounded(indexWords, shp_.Size() - at);
  ownLength_ = bounded(ownWords, room);
  if (available == 0 && ownLength_ == 0) {
    WarnRecord("record length", "its length is given as " + Bytes(indexWords * 2) + "; it was skipped");
  } else if (available == 0) {
    WarnOfLength();
    available = ownLength_;
  }
  listed_ += std::min(std::max(bounded(ownWords, room), available), room);
  if (listed_ > shp_.Size() && inOrder_) {
    WarnRecord("repeated in the index", "the index lists bytes more than once, and so they are read");
    inOrder_ = false;
  }
  return available;
}

void ESRIInFilt::WarnOfLength() {
  WarnRecord("index length", "the index gives it fewer bytes than it needs; the record's own length was taken");
}

// Whether the record has so many bytes, by the index or else by its own word.
bool ESRIInFilt::Holds(std::int64_t bytes, std::int64_t available) {
  if (bytes <= available) return true;
  if (bytes > ownLength_) return false;
  WarnOfLength();
  return true;
}

// Finds out what the current record holds. False when it holds nothing that is delivered.
bool ESRIInFilt::LoadRecord() {
  const auto entry = index_.At(kHeaderSize + kIndexEntrySize * (record_ - 1), kIndexEntrySize);
  if (entry.size() < static_cast<std::size_t>(kIndexEntrySize)) {
    WarnRecord("index cut", "the index ends within this record's entry; the record was skipped");
    return false;
  }
  const std::int64_t at = std::int64_t{BigEndian32(entry.data())} * 2;
  auto head = recordBytes_.At(at, kHeadSize);
  if (at < kHeaderSize || head.size() < static_cast<std::size_t>(kRecordHeaderSize) + 4) {
    WarnRecord("index outside", "the index points to byte " + std::to_string(at) + ", where the file of " +
                                    Bytes(shp_.Size()) + " holds no record; it was skipped");
    return false;
  }
  const std::int64_t available = RecordLength(at, BigEndian32(&entry[4]), BigEndian32(&head[4]));
  if (available == 0) return false;
  position_ = at + available;
  whole_ = {};
  if (available <= static_cast<std::int64_t>(ReadWindow::kCapacity)) {
    head = whole_ = recordBytes_.At(at, static_cast<std::size_t>(available));
    wholeAt_ = at;
  }
  current_.type = LittleEndian<std::int32_t>(&head[8]);
  current_.pointsAt = at;
  switch (current_.type) {
    case kNullShape:
      return false;
    case kPointShape:
      return LoadPoint(available);
    case kPolyLine:
    case kPolygon:
    case kPolyLineZ:
    case kPolygonZ:
      return LoadChain(head, available);
    case kMultiPoint:
      return LoadMultiPoint(head, available);
    default:
      ReportUnhandled(current_.type);
      return false;
  }
}

void ESRIInFilt::ReportUnhandled(std::int32_t type) {
  if (const char* name = UnhandledTypeName(type)) {
    report().Undelivered(name);
    interaction().ShowMessage(
        {Topic::UnhandledShape, std::string("Unhandled Data Type ") + name, "", MessageIcon::Information});
  } else {
    report().Undelivered(std::to_string(type));
  }
}

bool ESRIInFilt::LoadPoint(std::int64_t available) {
  constexpr std::int64_t kWithHeader = 28;
  if (!Holds(kWithHeader, available)) {
    WarnRecord("record cut", "its " + Bytes(available) + " cannot hold a point; it was skipped");
    return false;
  }
  current_.parts = current_.points = 1;
  current_.pointsAt += 12;
  return true;
}

bool ESRIInFilt::LoadChain(std::span<const std::byte> head, std::int64_t available) {
  if (head.size() < kHeadSize || available < static_cast<std::int64_t>(kHeadSize)) {
    WarnRecord("record cut", "ends before the counts of its parts and points; it was skipped");
    return false;
  }
  const auto parts = LittleEndian<std::int32_t>(&head[44]);
  const auto points = LittleEndian<std::int32_t>(&head[48]);
  const std::int64_t needed = 52 + std::int64_t{parts} * 4 + std::int64_t{points} * kPointSize;
  if (parts < 0 || points < 0 || !Holds(needed, available)) {
    WarnRecord("record counts", "gives " + Counted(parts, "part") + " and " + Counted(points, "point") +
                                    ", which its " + Bytes(available) + " cannot hold; it was skipped");
    return false;
  }
  current_.partsAt = current_.pointsAt + 52;
  current_.pointsAt = current_.partsAt + std::int64_t{parts} * 4;
  current_.parts = parts;
  current_.points = points;
  if (current_.type == kPolyLineZ || current_.type == kPolygonZ) {
    const std::int64_t zEnd = needed + 16 + std::int64_t{points} * 8;
    if (Holds(zEnd, available)) {
      current_.zAt = current_.pointsAt + std::int64_t{points} * kPointSize + 16;
    } else {
      WarnRecord("no z values", "has no room for the z values of its type; z is 0");
    }
  }
  if (parts == 0 && points > 0) WarnRecord("points without part", Counted(points, "point") + " left out: in no part");
  return parts > 0;
}

bool ESRIInFilt::LoadMultiPoint(std::span<const std::byte> head, std::int64_t available) {
  const auto points = head.size() < 48 || available < 48 ? -1 : LittleEndian<std::int32_t>(&head[44]);
  if (points < 0 || !Holds(48 + points * kPointSize, available)) {
    WarnRecord("record counts", "gives more points than its " + Bytes(available) + " can hold; it was skipped");
    return false;
  }
  current_.pointsAt += 48;
  current_.parts = points > 0 ? 1 : 0;
  current_.points = points;
  return points > 0;
}

std::span<const std::byte> ESRIInFilt::Piece(ReadWindow& window, std::int64_t offset, std::size_t count) {
  const std::int64_t inside = offset - wholeAt_;
  const bool isWhole = !whole_.empty() && inside >= 0 &&
                       inside + static_cast<std::int64_t>(count) <= static_cast<std::int64_t>(whole_.size());
  const auto piece = isWhole ? whole_.subspan(static_cast<std::size_t>(inside), count) : window.At(offset, count);
  if (piece.size() < count) throw Error(filename_ + ": became shorter while it was read");
  return piece;
}

// The next part's range of points. Parts follow one another: where a start lies before the end of the part before, or
// beyond the points, no chain of this record can be trusted any more. False when the part holds nothing.
bool ESRIInFilt::NextRange(Range& range) {
  const std::int32_t part = part_++;
  if (current_.partsAt == 0) {
    range = {0, current_.points};
    return true;
  }
  const auto starts = Piece(partStarts_, current_.partsAt + std::int64_t{part} * 4, part_ < current_.parts ? 8 : 4);
  const auto first = LittleEndian<std::int32_t>(starts.data());
  const std::int32_t end = part_ < current_.parts ? LittleEndian<std::int32_t>(&starts[4]) : current_.points;
  if (first < nextPoint_ || end < first || end > current_.points) {
    WarnRecord("part indices", "part " + std::to_string(part + 1) + " is said to run from point " +
                                   std::to_string(first) + " to before point " + std::to_string(end) + " of " +
                                   std::to_string(current_.points) + "; the record was skipped from there on");
    part_ = current_.parts;
    return false;
  }
  if (first > nextPoint_) {
    WarnRecord("points without part", Counted(first - nextPoint_, "point") + " before part " +
                                          std::to_string(part + 1) + " left out: in no part");
  }
  nextPoint_ = end;
  range = {first, end - first};
  return range.count > 0;
}

bool ESRIInFilt::DeliverPart(tEntity& entity) {
  Range range;
  entity.Reset();
  entity.Record = record_;
  if (!NextRange(range)) return false;
  const bool isPoint = current_.type == kPointShape || current_.type == kMultiPoint;
  entity.bType = isPoint ? kPoint : kPolyline;
  entity.Layer.assign(1, '0');
  if (!StoreVertices(entity, range)) return false;
  SetAttributes(entity);
  return true;
}

bool ESRIInFilt::DeliverLabel(tEntity& entity) {
  entity.Reset();
  entity.Record = record_;
  if (!StoreVertices(entity, {0, current_.points})) return false;
  entity.ResetToCentroid();
  entity.Layer.assign(1, '0');
  SetAttributes(entity);
  entity.bType = kText;
  entity.Text = table_->GetFieldData(textField_, record_);
  entity.TextSize = 1000;
  entity.TextUnits.assign(1, 'M');
  entity.TextJust = 33;
  return true;
}

// Stores from the highest index down, so that each array grows once. False when no vertex is left.
bool ESRIInFilt::StoreVertices(tEntity& entity, Range range) {
  constexpr std::int32_t kAtOnce = 2048;
  bool finite = true;
  for (std::int32_t end = range.count; end > 0;) {
    const std::int32_t begin = std::max(end - kAtOnce, 0);
    const auto xy = Piece(vertices_, current_.pointsAt + std::int64_t{range.first + begin} * kPointSize,
                          static_cast<std::size_t>((end - begin) * kPointSize));
    for (std::int32_t i = end - 1; i >= begin; --i) {
      const std::byte* point = &xy[static_cast<std::size_t>((i - begin) * kPointSize)];
      const auto x = LittleEndian<double>(point), y = LittleEndian<double>(point + 8);
      entity.x(i, x);
      entity.Y(i, y);
      finite = finite && std::isfinite(x) && std::isfinite(y);
    }
    end = begin;
  }
  if (current_.zAt != 0) StoreZ(entity, range);
  return finite || DropWildVertices(entity);
}

void ESRIInFilt::StoreZ(tEntity& entity, Range range) {
  constexpr std::int32_t kAtOnce = 4096;
  bool wild = false;
  for (std::int32_t end = range.count; end > 0;) {
    const std::int32_t begin = std::max(end - kAtOnce, 0);
    const auto values = Piece(zValues_, current_.zAt + std::int64_t{range.first + begin} * 8,
                              static_cast<std::size_t>(end - begin) * 8);
    for (std::int32_t i = end - 1; i >= begin; --i) {
      const auto z = LittleEndian<double>(&values[static_cast<std::size_t>(i - begin) * 8]);
      const bool fits = std::fabs(z) <= static_cast<double>(std::numeric_limits<float>::max());
      entity.Z(i, fits ? static_cast<float>(z) : 0.0F);
      wild = wild || !fits;
    }
    end = begin;
  }
  if (wild) WarnRecord("wild z", "holds z values that are no number or too large; they were read as 0");
}

bool ESRIInFilt::DropWildVertices(tEntity& entity) {
  const tEntity::Index count = entity.XCount() + 1;
  tEntity::Index kept = 0;
  for (tEntity::Index i = 0; i < count; ++i) {
    if (!std::isfinite(entity.x(i)) || !std::isfinite(entity.Y(i))) continue;
    entity.x(kept, entity.x(i));
    entity.Y(kept, entity.Y(i));
    if (current_.zAt != 0) entity.Z(kept, entity.Z(i));
    ++kept;
  }
  WarnRecord("not finite", "vertices without a finite x and y were left out: " + std::to_string(count - kept));
  if (kept == 0) {
    entity.ClearVertices();
    return false;
  }
  for (tEntity::Index i = kept; i < count; ++i) entity.RemoveLastVertex();
  return true;
}

void ESRIInFilt::SetAttributes(tEntity& entity) {
  if (!UsesTable()) return;
  entity.Layer = table_->GetFieldData(layerField_, record_);
  entity.CDFCode = codes_.CodeOf(entity.Layer);
}

}  // namespace tesselink
