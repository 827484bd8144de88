#include "formats/shape/ESRIOutFilt.h"

#include <algorithm>

#include "core/ColourNames.h"
#include "core/Errors.h"
#include "core/Numbers.h"
#include "core/Paths.h"
#include "core/Report.h"
#include "core/Text.h"
#include "formats/shape/Bytes.h"

namespace tesselink {
namespace {

constexpr std::int32_t kPointShape = 1;
constexpr std::int32_t kPolyLineShape = 3;
constexpr std::int64_t kHeaderSize = 100;
constexpr std::int64_t kRecordHeaderSize = 8;

// Of the fields that hold text from the drawing: layer, code, text.
constexpr std::array<int, 3> kTextLengths{50, 10, 100};
constexpr std::size_t kPointSize = 16;
constexpr std::size_t kPointContent = 20;
// Type, box and counts of a PolyLine of one part, before its points.
constexpr std::size_t kChainHead = 48;

std::int32_t Words(std::int64_t bytes) { return static_cast<std::int32_t>(bytes / 2); }

std::string Header(std::int32_t type, std::int64_t size, const Extents& extents) {
  std::string header(kHeaderSize, '\0');
  PutBigEndian32(&header[0], 9994);
  PutBigEndian32(&header[24], Words(size));
  PutLittleEndian(&header[28], std::int32_t{1000});
  PutLittleEndian(&header[32], type);
  if (!extents.Empty()) {
    PutLittleEndian(&header[36], extents.minX);
    PutLittleEndian(&header[44], extents.minY);
    PutLittleEndian(&header[52], extents.maxX);
    PutLittleEndian(&header[60], extents.maxY);
  }
  return header;
}

// The file beside the main file: the one that is there, in whatever letter case, since readers would find it first;
// else a new one, its extension in capitals where the main file's is.
std::string Partner(const std::string& path, const std::string& extension) {
  const std::string existing = PartnerFile(path, UpperCase(extension));
  if (!existing.empty()) return existing;
  return FolderOf(path) + StripExtension(FileNameOf(path)) + "." +
         (path.ends_with(".SHP") ? UpperCase(extension) : extension);
}

}  // namespace

void ESRIOutFilt::Create(const std::string& path) {
  if (const std::string extension = ExtensionOf(path); extension == ".shx" || extension == ".dbf") {
    throw Error(path + ": that is the name of a shapefile's " + (extension == ".shx" ? "index" : "table") +
                "; name the output .shp");
  }
  shpPath_ = path;
  shxPath_ = Partner(path, "shx");
  dbfPath_ = Partner(path, "dbf");
  kind_.reset();
  extents_ = {};
  shapes_ = 0;
  heights_ = cutValues_ = bars_ = controls_ = 0;
  colourName_ = {};
  try {
    created_.clear();
    shp_ = FileWriter(shpPath_);
    created_.push_back(shpPath_);
    shx_ = FileWriter(shxPath_);
    created_.push_back(shxPath_);
    table_.filename(dbfPath_);
    created_.push_back(dbfPath_);
    for (FileWriter* file : {&shp_, &shx_}) file->Write(Header(kPolyLineShape, kHeaderSize, extents_));
    table_.AddField("Desc", kTextLengths[0], "C");
    table_.AddField("Code", kTextLengths[1], "C");
    table_.AddField("ColorNum", 12, "N");
    table_.AddField("ColorName", 15, "C");
  } catch (...) {
    Drop();
    throw;
  }
}

WriteResult ESRIOutFilt::Write(tEntity& entity) {
  if (!kind_) ChooseKind(entity);
  const bool isPoint = entity.bType == kPoint || entity.bType == kText;
  const bool isChain =
      entity.bType == kLine || entity.bType == kPolyline || entity.bType == kCircle || entity.bType == kArc;
  if (*kind_ == ShapeKind::PointsOrText ? !isPoint : !isChain) return WriteResult::Skipped;
  if (entity.HasHeight()) ++heights_;
  return isPoint ? WritePoints(entity) : WriteChain(entity);
}

void ESRIOutFilt::ChooseKind(const tEntity& entity) {
  const bool isPoint = entity.bType == kPoint || entity.bType == kText;
  kind_ = interaction().ChooseShapeKind(isPoint ? ShapeKind::PointsOrText : ShapeKind::Polyline);
  if (*kind_ == ShapeKind::PointsOrText) {
    table_.AddField("Text", kTextLengths[2], "C");
    table_.AddField("TextAngle", 24, "N");
    table_.AddField("TextSize", 24, "N");
  }
}

WriteResult ESRIOutFilt::WritePoints(const tEntity& entity) {
  const tEntity::Index last = entity.bType == kText ? 0 : entity.PointCount();
  for (tEntity::Index i = 0; i <= last; ++i) {
    char content[kPointContent];
    PutLittleEndian(content, kPointShape);
    PutLittleEndian(content + 4, entity.x(i));
    PutLittleEndian(content + 12, entity.Y(i));
    AddShape({content, sizeof content}, entity);
    extents_.Add(entity.x(i), entity.Y(i), 0);
  }
  return WriteResult::Written;
}

WriteResult ESRIOutFilt::WriteChain(const tEntity& entity) {
  const bool isCurve = entity.bType == kCircle || entity.bType == kArc;
  Extents box;
  char* out = nullptr;
  const auto begin = [&](std::size_t most) {
    content_.resize(kChainHead + most * kPointSize);
    out = content_.data() + kChainHead;
  };
  const auto put = [&](double x, double y) {
    PutLittleEndian(out, x);
    PutLittleEndian(out + 8, y);
    out += kPointSize;
    box.Add(x, y, 0);
  };
  if (isCurve) {
    chain_.clear();
    AppendCurve(chain_, entity);
    begin(chain_.size());
    for (const Vertex& vertex : chain_) put(vertex.x, vertex.y);
  } else {
    const tEntity::Index last = entity.PointCount();
    begin(static_cast<std::size_t>(last) + 2);
    for (tEntity::Index i = 0; i <= last; ++i) put(entity.x(i), entity.Y(i));
    if (entity.Closed && (entity.x(0) != entity.x(last) || entity.Y(0) != entity.Y(last)))
      put(entity.x(0), entity.Y(0));
  }
  content_.resize(static_cast<std::size_t>(out - content_.data()));
  PutLittleEndian(&content_[0], kPolyLineShape);
  PutLittleEndian(&content_[4], box.minX);
  PutLittleEndian(&content_[12], box.minY);
  PutLittleEndian(&content_[20], box.maxX);
  PutLittleEndian(&content_[28], box.maxY);
  PutLittleEndian(&content_[36], std::int32_t{1});
  PutLittleEndian(&content_[40], static_cast<std::int32_t>((content_.size() - kChainHead) / kPointSize));
  PutLittleEndian(&content_[44], std::int32_t{0});
  AddShape(content_, entity);
  extents_.Add(box.minX, box.minY, 0);
  extents_.Add(box.maxX, box.maxY, 0);
  return isCurve ? WriteResult::Converted : WriteResult::Written;
}

void ESRIOutFilt::AddShape(std::string_view content, const tEntity& entity) {
  const std::int64_t at = shp_.Size();
  const auto size = static_cast<std::int64_t>(content.size());
  if (at + kRecordHeaderSize + size > sizeLimit) {
    throw FileFull(shpPath_ + ": the next shape would make it larger than the " + std::to_string(sizeLimit) +
                   " bytes that a shapefile can have; convert to several files");
  }
  char header[kRecordHeaderSize];
  PutBigEndian32(header, ++shapes_);
  PutBigEndian32(header + 4, Words(size));
  shp_.Write({header, sizeof header}).Write(content);
  PutBigEndian32(header, Words(at));
  shx_.Write({header, sizeof header});

  if (colourName_.empty() || colour_ != entity.RGB) {
    colour_ = entity.RGB;
    colourName_ = ColourName(colour_);
  }
  char number[kNumberTextSize], angle[kNumberTextSize], height[kNumberTextSize];
  const auto text = [](const char* begin, const char* end) {
    return std::string_view(begin, static_cast<std::size_t>(end - begin));
  };
  const std::array<std::string_view, 7> values{
      Fitting(entity.Layer, 0),
      Fitting(entity.CDFCode, 1),
      text(number, FormatInteger(number, entity.Colour)),
      colourName_,
      Fitting(entity.Text, 2),
      text(angle, FormatNumber(angle, entity.TextAng)),
      text(height, FormatNumber(height, entity.TextSize)),
  };
  table_.AddRecord(std::span(values).first(*kind_ == ShapeKind::PointsOrText ? 7 : 4));
}

// A value as one of the fields of kTextLengths can hold it: the last byte of a field stays free, and "|" has no place
// in a table.
std::string_view ESRIOutFilt::Fitting(const std::string& value, std::size_t field) {
  const auto room = static_cast<std::size_t>(kTextLengths[field] - 1);
  const bool cut = value.size() > room;
  const bool bars = value.find('|') != std::string::npos;
  std::string& fitted = fitted_[field];
  const bool controls = &WithoutControls(value, fitted) != &value;
  if (!cut && !bars && !controls) return value;
  if (!controls) fitted = value;
  fitted.resize(std::min(fitted.size(), room));
  std::replace(fitted.begin(), fitted.end(), '|', ' ');
  if (cut) ++cutValues_;
  if (bars) ++bars_;
  if (controls) ++controls_;
  return fitted;
}

void ESRIOutFilt::WriteHead() {
  const std::int32_t type = kind_ == ShapeKind::PointsOrText ? kPointShape : kPolyLineShape;
  shp_.Overwrite(0, Header(type, shp_.Size(), extents_));
  shx_.Overwrite(0, Header(type, shx_.Size(), extents_));
}

void ESRIOutFilt::Complete() {
  WriteHead();
  shp_.Close();
  shx_.Close();
  table_.Release();
  const auto warn = [this](const char* kind, const std::string& what, std::int64_t count) {
    if (count > 0) report().Warn(kind, what + ": " + std::to_string(count));
  };
  warn("heights", shpPath_ + ": the shape types written have no z; elements that lost theirs", heights_);
  warn("cut values", dbfPath_ + ": values too long for their field were cut", cutValues_);
  warn("bars", dbfPath_ + ": values with a \"|\" got a blank in its place", bars_);
  warn("control characters", dbfPath_ + ": values in which control characters became blanks", controls_);
}

void ESRIOutFilt::Drop() noexcept {
  shp_.Discard();
  shx_.Discard();
  table_.Discard();
  for (const std::string& path : created_) RemoveWritten(path);
  created_.clear();
}

}  // namespace tesselink
