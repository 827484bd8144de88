#include "formats/shape/ShapeFiles.h"

#include <algorithm>
#include <utility>

#include "core/io/Errors.h"

namespace tesselink {
namespace {

constexpr std::int32_t kPointType = 1, kPolyLineType = 3, kPointZType = 11, kPolyLineZType = 13;

constexpr std::int64_t kPointContent = 20;
// Type, box and counts of a PolyLine of one part, before its points.
constexpr std::int64_t kChainHead = 48;
// What a type with z adds: to a point its z and its m, to a chain the least and the greatest z, and each z.
constexpr std::int64_t kZOfPoint = 16;
constexpr std::int64_t kZOfChain = 16;
constexpr std::int64_t kZOfVertex = 8;
constexpr double kNoMeasure = -1e39;

std::int32_t Words(std::int64_t bytes) { return static_cast<std::int32_t>(bytes / 2); }

template <typename T>
void AppendLittleEndian(std::string& bytes, T value) {
  char number[sizeof value];
  PutLittleEndian(number, value);
  bytes.append(number, sizeof number);
}

std::string Header(std::int32_t type, std::int64_t size, const Extents& extents) {
  std::string header(static_cast<std::size_t>(kShapeHeaderSize), '\0');
  PutBigEndian32(&header[0], kShapeFileCode);
  PutBigEndian32(&header[24], Words(size));
  PutLittleEndian(&header[28], std::int32_t{1000});
  PutLittleEndian(&header[32], type);
  if (extents.Empty()) return header;
  PutLittleEndian(&header[36], extents.minX);
  PutLittleEndian(&header[44], extents.minY);
  PutLittleEndian(&header[52], extents.maxX);
  PutLittleEndian(&header[60], extents.maxY);
  if (type == kPointZType || type == kPolyLineZType) {
    PutLittleEndian(&header[68], extents.minZ);
    PutLittleEndian(&header[76], extents.maxZ);
  }
  return header;
}

}  // namespace

void ShapeFiles::Create(const std::string& shpPath, const std::string& shxPath, std::vector<std::string>& created) {
  extents_ = {};
  isPoints_ = hasZ_ = false;
  shapes_ = 0;
  vertices_ = 0;
  shp_ = FileWriter(shpPath);
  created.push_back(shpPath);
  shx_ = FileWriter(shxPath);
  created.push_back(shxPath);
  for (FileWriter* file : {&shp_, &shx_}) file->Write(Header(TypeCode(), kShapeHeaderSize, extents_));
}

std::int32_t ShapeFiles::TypeCode() const {
  if (isPoints_) return hasZ_ ? kPointZType : kPointType;
  return hasZ_ ? kPolyLineZType : kPolyLineType;
}

void ShapeFiles::AddPoint(double x, double y, double z) {
  box_ = {};
  box_.Add(x, y, z);
  MakeRoom(kPointContent);
  content_.clear();
  AppendLittleEndian(content_, TypeCode());
  AppendLittleEndian(content_, x);
  AppendLittleEndian(content_, y);
  if (hasZ_) AppendZ(content_, {&z, 1});
  Append(content_);
  ++vertices_;
}

ShapeFiles::Chain ShapeFiles::BeginChain(std::size_t most) {
  content_.resize(static_cast<std::size_t>(kChainHead) + most * static_cast<std::size_t>(kXYSize));
  z_.clear();
  return {content_.data() + kChainHead, heights_ ? &z_ : nullptr};
}

void ShapeFiles::EndChain(const Chain& chain) {
  content_.resize(static_cast<std::size_t>(chain.out_ - content_.data()));
  box_ = chain.box_;
  const auto size = static_cast<std::int64_t>(content_.size());
  const std::int64_t vertices = (size - kChainHead) / kXYSize;
  MakeRoom(size);
  PutLittleEndian(&content_[0], TypeCode());
  PutLittleEndian(&content_[4], box_.minX);
  PutLittleEndian(&content_[12], box_.minY);
  PutLittleEndian(&content_[20], box_.maxX);
  PutLittleEndian(&content_[28], box_.maxY);
  PutLittleEndian(&content_[36], std::int32_t{1});
  PutLittleEndian(&content_[40], static_cast<std::int32_t>(vertices));
  PutLittleEndian(&content_[44], std::int32_t{0});
  if (hasZ_) AppendZ(content_, z_);
  Append(content_);
  vertices_ += vertices;
}

void ShapeFiles::AppendZ(std::string& content, std::span<const double> z) const {
  if (!isPoints_) {
    const auto [least, greatest] = std::minmax_element(z.begin(), z.end());
    AppendLittleEndian(content, *least);
    AppendLittleEndian(content, *greatest);
  }
  for (const double value : z) AppendLittleEndian(content, value);
  if (isPoints_) AppendLittleEndian(content, kNoMeasure);
}

void ShapeFiles::Append(std::string_view content) {
  char header[kRecordHeaderSize];
  PutBigEndian32(header, ++shapes_);
  PutBigEndian32(header + 4, Words(static_cast<std::int64_t>(content.size())));
  const std::int64_t at = shp_.Size();
  shp_.Write({header, sizeof header}).Write(content);
  PutBigEndian32(header, Words(at));
  shx_.Write({header, sizeof header});
  extents_.Add(box_.minX, box_.minY, box_.minZ);
  extents_.Add(box_.maxX, box_.maxY, box_.maxZ);
}

// Sees to it that a shape fits, whose content without z has a size: in the file, and in its type.
void ShapeFiles::MakeRoom(std::int64_t flatSize) {
  const bool rises = heights_ && !hasZ_ && (box_.minZ != 0 || box_.maxZ != 0);
  const auto heightSize = [this](std::int64_t shapes, std::int64_t vertices) {
    return isPoints_ ? shapes * kZOfPoint : shapes * kZOfChain + vertices * kZOfVertex;
  };
  std::int64_t size = shp_.Size() + kRecordHeaderSize + flatSize;
  if (rises) size += heightSize(shapes_, vertices_);
  if (rises || hasZ_) size += heightSize(1, (flatSize - kChainHead) / kXYSize);
  if (size > sizeLimit_) {
    throw FileFull(shp_.Path() + ": the next shape would make it larger than the " + std::to_string(sizeLimit_) +
                   " bytes that a shapefile can have; convert to several files");
  }
  if (rises) GainHeights();
}

// Writes the files anew with a z of 0 for every shape so far: a file has one type for all of its shapes.
void ShapeFiles::GainHeights() {
  const std::string shpPath = shp_.Path(), shxPath = shx_.Path();
  Close();
  FileWriter copy = FileWriter::Nameless("tesselink");
  copy.Append(shpPath);
  BinaryFile flat = copy.ReadBack();

  hasZ_ = true;
  const Extents current = std::exchange(box_, extents_);
  const std::int32_t shapes = std::exchange(shapes_, 0);
  for (FileWriter* file : {&shp_, &shx_}) {
    *file = FileWriter(file == &shp_ ? shpPath : shxPath);
    file->Write(Header(TypeCode(), kShapeHeaderSize, extents_));
  }
  std::string content;
  std::vector<double> zeros;
  std::int64_t at = kShapeHeaderSize;
  for (std::int32_t i = 0; i < shapes; ++i) {
    at = ReadBack(flat, at, content);
    PutLittleEndian(&content[0], TypeCode());
    zeros.assign(isPoints_ ? 1 : (content.size() - kChainHead) / kXYSize, 0);
    AppendZ(content, zeros);
    Append(content);
  }
  box_ = current;
}

// Reads the content of the record at a position, as it was written, and returns the position behind it.
std::int64_t ShapeFiles::ReadBack(BinaryFile& source, std::int64_t at, std::string& content) const {
  std::byte header[kRecordHeaderSize]{};
  const bool whole = source.ReadAt(at, header, sizeof header) == sizeof header;
  const std::int64_t size = std::int64_t{BigEndian32(header + 4)} * 2;
  const std::int64_t left = source.Size() - at - kRecordHeaderSize;
  if (!whole || size < (isPoints_ ? kPointContent : kChainHead) || size > left) {
    throw Error(shp_.Path() + ": its copy in the temporary folder is not what was written");
  }
  content.resize(static_cast<std::size_t>(size));
  source.ReadAt(at + kRecordHeaderSize, content.data(), content.size());
  return at + kRecordHeaderSize + size;
}

void ShapeFiles::WriteHeaders() {
  shp_.Overwrite(0, Header(TypeCode(), shp_.Size(), extents_));
  shx_.Overwrite(0, Header(TypeCode(), shx_.Size(), extents_));
}

void ShapeFiles::Close() {
  shp_.Close();
  shx_.Close();
}

void ShapeFiles::Discard() noexcept {
  shp_.Discard();
  shx_.Discard();
}

}  // namespace tesselink
