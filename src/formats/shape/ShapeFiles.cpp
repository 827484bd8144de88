// SPDX-License-Identifier: MIT
#include "formats/shape/ShapeFiles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "core/io/Errors.h"

namespace tesselink {
namespace {

// The types of the kinds: without z and m, with z, with m.
constexpr std::int32_t kTypeCodes[][3] = {{1, 11, 21}, {3, 13, 23}, {5, 15, 25}, {8, 18, 28}};

constexpr std::int64_t kBoxSize = 32, kCountSize = 4, kRangeSize = 16, kValueSize = 8;
// Stands for "none"; everything below -1E38 does.
constexpr double kNoMeasure = -1e39;

std::int32_t Words(std::int64_t bytes) { return static_cast<std::int32_t>(bytes / 2); }

// Bytes of a record on their way into a file, in pieces that do not follow its size.
class Content {
 public:
  explicit Content(FileWriter& file) : file_(file) {}
  Content(const Content&) = delete;
  Content& operator=(const Content&) = delete;
  ~Content() = default;

  template <typename T>
  void Put(T value) {
    if (used_ > bytes_.size() - sizeof value) Flush();
    PutLittleEndian(bytes_.data() + used_, value);
    used_ += sizeof value;
  }
  // Pairs of x and y.
  void Put(std::span<const double> x, std::span<const double> y) {
    constexpr std::size_t kPair = 2 * sizeof(double);
    for (std::size_t begin = 0; begin < x.size();) {
      if (used_ > bytes_.size() - kPair) Flush();
      const std::size_t end = begin + std::min(x.size() - begin, (bytes_.size() - used_) / kPair);
      char* at = bytes_.data() + used_;
      used_ += (end - begin) * kPair;
      for (; begin < end; ++begin, at += kPair) {
        PutLittleEndian(at, x[begin]);
        PutLittleEndian(at + sizeof(double), y[begin]);
      }
    }
  }
  void Flush() {
    file_.Write({bytes_.data(), used_});
    used_ = 0;
  }

 private:
  FileWriter& file_;
  std::array<char, 8192> bytes_;
  std::size_t used_ = 0;
};

// Hands runs of vertices to a function, as the first index and the count, in the order in which they are written. What
// is turned begins where it began.
template <typename Function>
void ForEachRun(std::span<const ShapePart> parts, Function function) {
  for (const ShapePart& part : parts) {
    const auto begin = static_cast<std::size_t>(part.begin), end = static_cast<std::size_t>(part.end);
    if (part.reversed) {
      if (part.closes) function(begin, 1);
      for (std::size_t i = end; i-- > begin;) function(i, 1);
    } else {
      function(begin, end - begin);
      if (part.closes) function(begin, 1);
    }
  }
}

template <typename Function>
void ForEachVertex(std::span<const ShapePart> parts, Function function) {
  ForEachRun(parts, [&](std::size_t begin, std::size_t count) {
    for (std::size_t i = begin; i < begin + count; ++i) function(i);
  });
}

// A value of each vertex: those of the array, and another one where it is shorter.
class Values {
 public:
  Values(std::span<const double> values, double otherwise) : values_(values), otherwise_(otherwise) {}
  double operator[](std::size_t i) const { return i < values_.size() ? values_[i] : otherwise_; }

 private:
  std::span<const double> values_;
  double otherwise_;
};

Values Heights(const tEntity& entity) { return {entity.AllZ(), 0}; }
Values Measures(const tEntity& entity) { return {entity.Measures, std::numeric_limits<double>::quiet_NaN()}; }

Extents BoxOf(const tEntity& entity, std::span<const ShapePart> parts) {
  Extents box;
  for (const ShapePart& part : parts) box.Add(entity, part.begin, part.end);
  return box;
}

}  // namespace

void ShapeFiles::Create(const std::string& shpPath, const std::string& shxPath, std::vector<std::string>& created) {
  extents_ = {};
  kind_ = ShapeKind::Polyline;
  form_ = {};
  anyM_ = false;
  leastM_ = greatestM_ = 0;
  records_ = 0;
  shapes_ = vertices_ = 0;
  shp_ = FileWriter(shpPath);
  created.push_back(shpPath);
  shx_ = FileWriter(shxPath);
  created.push_back(shxPath);
  for (FileWriter* file : {&shp_, &shx_}) file->Write(Header(kShapeHeaderSize));
}

void ShapeFiles::Hold(ShapeKind kind, bool z, bool m) {
  kind_ = kind;
  if (everyType_) form_ = {z, m && !z};
}

std::int32_t ShapeFiles::TypeCode() const {
  return kTypeCodes[static_cast<std::size_t>(kind_)][form_.z ? 1 : form_.m ? 2 : 0];
}

std::string ShapeFiles::Header(std::int64_t size) const {
  std::string header(static_cast<std::size_t>(kShapeHeaderSize), '\0');
  PutBigEndian32(&header[0], kShapeFileCode);
  PutBigEndian32(&header[24], Words(size));
  PutLittleEndian(&header[28], std::int32_t{1000});
  PutLittleEndian(&header[32], TypeCode());
  if (extents_.Empty()) return header;
  PutLittleEndian(&header[36], extents_.minX);
  PutLittleEndian(&header[44], extents_.minY);
  PutLittleEndian(&header[52], extents_.maxX);
  PutLittleEndian(&header[60], extents_.maxY);
  if (form_.z) {
    PutLittleEndian(&header[68], extents_.minZ);
    PutLittleEndian(&header[76], extents_.maxZ);
  }
  PutLittleEndian(&header[84], leastM_);
  PutLittleEndian(&header[92], greatestM_);
  return header;
}

// Of a shape's content, up to its points.
std::int64_t ShapeFiles::HeadSize(std::int64_t parts) const {
  if (IsPoints()) return kTypeSize;
  const std::int64_t counts = kTypeSize + kBoxSize + kCountSize;
  return kind_ == ShapeKind::MultiPoint ? counts : counts + kCountSize + parts * kCountSize;
}

std::int64_t ShapeFiles::ContentSize(const Shape& shape, Form form) const {
  const std::int64_t size = HeadSize(shape.parts) + shape.vertices * kXYSize;
  if (IsPoints()) return size + (form.z ? 2 : form.m ? 1 : 0) * kValueSize;
  const std::int64_t block = kRangeSize + shape.vertices * kValueSize;
  return size + (form.z ? block : 0) + (form.m || (form.z && shape.hasMeasures) ? block : 0);
}

// Sees to it that a shape fits: in the file, and in its type.
void ShapeFiles::MakeRoom(const Shape& shape) {
  Form form = form_;
  if (everyType_) {
    form.z = form.z || shape.box.minZ != 0 || shape.box.maxZ != 0;
    form.m = !form.z && (form.m || shape.hasMeasures);
  }
  const bool another = form.z != form_.z || form.m != form_.m;
  std::int64_t size = ContentSize(shape, form);
  if (another && IsPoints()) {
    size += shapes_ * kValueSize * (form.z && !form_.m ? 2 : 1);
  } else if (another) {
    size += shapes_ * kRangeSize + vertices_ * kValueSize;
  }
  RequireRoom(size);
  if (another) Rewrite(form);
}

// Room for a record's content, and for what the records before it gain.
void ShapeFiles::RequireRoom(std::int64_t bytes) const {
  if (shp_.Size() + kRecordHeaderSize + bytes <= sizeLimit_) return;
  throw FileFull(shp_.Path() + ": the next shape would make it larger than the " + std::to_string(sizeLimit_) +
                 " bytes that a shapefile can have; convert to several files");
}

void ShapeFiles::BeginRecord(std::int64_t contentSize, std::int32_t type) {
  char header[kRecordHeaderSize + kTypeSize];
  PutBigEndian32(header, ++records_);
  PutBigEndian32(header + 4, Words(contentSize));
  PutLittleEndian(header + kRecordHeaderSize, type);
  char entry[kIndexEntrySize];
  PutBigEndian32(entry, Words(shp_.Size()));
  PutBigEndian32(entry + 4, Words(contentSize));
  shp_.Write({header, sizeof header});
  shx_.Write({entry, sizeof entry});
}

void ShapeFiles::AddMeasure(double m) {
  leastM_ = anyM_ ? std::min(leastM_, m) : m;
  greatestM_ = anyM_ ? std::max(greatestM_, m) : m;
  anyM_ = true;
}

void ShapeFiles::AddNull() {
  RequireRoom(kTypeSize);
  BeginRecord(kTypeSize, 0);
}

void ShapeFiles::AddPoint(const tEntity& entity, tEntity::Index vertex) {
  const auto i = static_cast<std::size_t>(vertex);
  const double x = entity.AllX()[i], y = entity.AllY()[i], z = Heights(entity)[i];
  const bool hasM = !entity.Measures.empty() && !std::isnan(Measures(entity)[i]);
  if (everyType_ && !form_.z && (z != 0 || hasM)) {
    Shape shape{.hasMeasures = hasM};
    shape.box.Add(x, y, z);
    MakeRoom(shape);
  }
  const std::int64_t size = ContentSize({}, form_);
  RequireRoom(size);
  BeginRecord(size, TypeCode());
  double content[] = {x, y, z, kNoMeasure};
  std::size_t count = 2 + (form_.z ? 1 : 0);
  if (form_.z || form_.m) {
    if (hasM) AddMeasure(entity.Measures[i]);
    content[count++] = hasM ? entity.Measures[i] : kNoMeasure;
  }
  shp_.Write({reinterpret_cast<const char*>(content), count * sizeof(double)});
  extents_.Add(x, y, z);
  ++shapes_;
  ++vertices_;
}

void ShapeFiles::AddShape(const tEntity& entity, std::span<const ShapePart> parts) {
  Shape shape{.parts = std::ssize(parts), .vertices = 0, .hasMeasures = !entity.Measures.empty()};
  for (const ShapePart& part : parts) shape.vertices += part.Count();
  shape.box = BoxOf(entity, parts);
  MakeRoom(shape);
  BeginRecord(ContentSize(shape, form_), TypeCode());
  Content content(shp_);
  for (const double bound : {shape.box.minX, shape.box.minY, shape.box.maxX, shape.box.maxY}) content.Put(bound);
  if (kind_ != ShapeKind::MultiPoint) content.Put(static_cast<std::int32_t>(shape.parts));
  content.Put(static_cast<std::int32_t>(shape.vertices));
  std::int64_t start = 0;
  for (const ShapePart& part : parts) {
    if (kind_ != ShapeKind::MultiPoint) content.Put(static_cast<std::int32_t>(start));
    start += part.Count();
  }
  const auto x = entity.AllX(), y = entity.AllY();
  ForEachRun(parts, [&](std::size_t begin, std::size_t count) {
    content.Put(x.subspan(begin, count), y.subspan(begin, count));
  });
  if (form_.z) {
    content.Put(shape.box.minZ);
    content.Put(shape.box.maxZ);
    ForEachVertex(parts, [&, z = Heights(entity)](std::size_t i) { content.Put(z[i]); });
  }
  if (form_.m || (form_.z && shape.hasMeasures)) {
    double least = std::numeric_limits<double>::infinity(), greatest = -least;
    for (const double m : entity.Measures) {
      if (std::isnan(m)) continue;
      least = std::min(least, m);
      greatest = std::max(greatest, m);
    }
    const bool none = least > greatest;
    content.Put(none ? kNoMeasure : least);
    content.Put(none ? kNoMeasure : greatest);
    if (!none) {
      AddMeasure(least);
      AddMeasure(greatest);
    }
    ForEachVertex(parts, [&, ms = Measures(entity)](std::size_t i) {
      const double m = ms[i];
      content.Put(std::isnan(m) ? kNoMeasure : m);
    });
  }
  content.Flush();
  extents_.Add(shape.box);
  ++shapes_;
  vertices_ += shape.vertices;
}

// Writes the files anew in a type with z or m, since a file has one type for all of its shapes: those so far get a z of
// 0 and no m.
void ShapeFiles::Rewrite(Form form) {
  const std::string shpPath = shp_.Path(), shxPath = shx_.Path();
  Close();
  FileWriter copy = FileWriter::Nameless("tesselink");
  copy.Append(shpPath);
  BinaryFile flat = copy.ReadBack();
  ReadWindow source(flat);

  const Form from = std::exchange(form_, form);
  const std::int32_t records = records_;
  records_ = 0;
  shp_ = FileWriter(shpPath);
  shx_ = FileWriter(shxPath);
  for (FileWriter* file : {&shp_, &shx_}) file->Write(Header(kShapeHeaderSize));
  std::int64_t at = kShapeHeaderSize;
  for (std::int32_t i = 0; i < records; ++i) at = CopyRecord(source, at, from);
}

// Copies the record at a position, which has the type of another form, and returns the position behind it.
std::int64_t ShapeFiles::CopyRecord(ReadWindow& source, std::int64_t at, Form from) {
  constexpr std::int64_t kCountsAt = kTypeSize + kBoxSize;
  const auto head = source.At(at, static_cast<std::size_t>(kRecordHeaderSize + kCountsAt + 2 * kCountSize));
  const auto got = static_cast<std::int64_t>(head.size()) - kRecordHeaderSize;
  if (got < kTypeSize) ThrowOtherCopy();
  const std::int64_t size = std::int64_t{BigEndian32(&head[4])} * 2, content = at + kRecordHeaderSize;
  if (size == kTypeSize) {
    BeginRecord(kTypeSize, 0);
    return content + kTypeSize;
  }
  if (got < HeadSize(0)) ThrowOtherCopy();
  const auto count = [&](std::int64_t offset) {
    return LittleEndian<std::int32_t>(&head[static_cast<std::size_t>(kRecordHeaderSize + offset)]);
  };
  Shape shape{.hasMeasures = from.m};
  if (!IsPoints()) shape.vertices = count(kind_ == ShapeKind::MultiPoint ? kCountsAt : kCountsAt + kCountSize);
  if (!IsPoints() && kind_ != ShapeKind::MultiPoint) shape.parts = count(kCountsAt);
  if (shape.parts < 0 || shape.vertices < 0 || size != ContentSize(shape, from)) ThrowOtherCopy();

  const std::int64_t flat = HeadSize(shape.parts) + shape.vertices * kXYSize;
  const std::int64_t values = shape.vertices + (IsPoints() ? 0 : kRangeSize / kValueSize);
  BeginRecord(ContentSize(shape, form_), TypeCode());
  CopyBytes(source, content + kTypeSize, flat - kTypeSize);
  if (form_.z) PutAgain(0, values);
  if (from.m) {
    CopyBytes(source, content + flat, size - flat);
  } else if (form_.m || IsPoints()) {
    PutAgain(kNoMeasure, values);
  }
  return content + size;
}

void ShapeFiles::CopyBytes(ReadWindow& source, std::int64_t at, std::int64_t count) {
  while (count > 0) {
    const auto wanted = std::min(static_cast<std::size_t>(count), ReadWindow::kCapacity);
    const auto bytes = source.At(at, wanted);
    if (bytes.size() < wanted) ThrowOtherCopy();
    shp_.Write({reinterpret_cast<const char*>(bytes.data()), wanted});
    at += static_cast<std::int64_t>(wanted);
    count -= static_cast<std::int64_t>(wanted);
  }
}

void ShapeFiles::ThrowOtherCopy() const {
  throw Error(shp_.Path() + ": its copy in the temporary folder is not what was written");
}

void ShapeFiles::PutAgain(double value, std::int64_t count) {
  Content content(shp_);
  for (; count > 0; --count) content.Put(value);
  content.Flush();
}

void ShapeFiles::WriteHeaders() {
  shp_.Overwrite(0, Header(shp_.Size()));
  shx_.Overwrite(0, Header(shx_.Size()));
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
