// Writing .shp and .shx.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/element/Extents.h"
#include "core/io/Files.h"
#include "formats/shape/Bytes.h"
#include "formats/shape/ShapeLayout.h"

namespace tesselink {

/// Appends points, or chains of one part, to both files; a file holds the one or the other. The layout is that of the
/// ESRI Shapefile Technical Description of July 1998.
class ShapeFiles {
 public:
  /// The layout counts 16-bit words in a signed 32-bit number.
  static constexpr std::int64_t kGreatestSize = std::int64_t{0x7FFFFFFF} * 2;

  /// `heights`: the first z other than 0 makes PointZ or PolyLineZ of the file, the shapes before it included; else z
  /// is dropped. A shape is refused with FileFull where the file would grow beyond the limit.
  explicit ShapeFiles(bool heights, std::int64_t sizeLimit = kGreatestSize)
      : heights_(heights), sizeLimit_(sizeLimit) {}

  /// Creates one file after the other; `created` takes the names of those that are there even when the next one fails.
  void Create(const std::string& shpPath, const std::string& shxPath, std::vector<std::string>& created);
  bool AreOpen() const { return shp_.IsOpen() && shx_.IsOpen(); }
  /// To be called before the first shape of files that hold points.
  void HoldPoints() { isPoints_ = true; }
  void AddPoint(double x, double y, double z);
  /// A chain that is being written, to be kept in a local variable until EndChain.
  class Chain {
   public:
    void Add(double x, double y, double z) {
      PutLittleEndian(out_, x);
      PutLittleEndian(out_ + 8, y);
      out_ += kXYSize;
      box_.Add(x, y, z);
      if (z_ != nullptr) z_->push_back(z);
    }

   private:
    friend class ShapeFiles;
    Chain(char* out, std::vector<double>* z) : out_(out), z_(z) {}
    char* out_;
    std::vector<double>* z_;
    Extents box_;
  };
  /// Begins a chain of so many vertices at most.
  Chain BeginChain(std::size_t most);
  void EndChain(const Chain& chain);
  /// Completes the headers by what was written.
  void WriteHeaders();
  void Close();
  void Discard() noexcept;
  /// Bytes that have been written so far.
  std::int64_t Size() const { return shp_.Size() + shx_.Size(); }

 private:
  std::int32_t TypeCode() const;
  void AppendZ(std::string& content, std::span<const double> z) const;
  void Append(std::string_view content);
  void MakeRoom(std::int64_t flatSize);
  void GainHeights();
  std::int64_t ReadBack(BinaryFile& source, std::int64_t at, std::string& content) const;

  const bool heights_;
  const std::int64_t sizeLimit_;
  FileWriter shp_, shx_;
  Extents extents_, box_;  // of all shapes and of the current one
  bool isPoints_ = false;
  bool hasZ_ = false;
  std::int32_t shapes_ = 0;
  std::int64_t vertices_ = 0;  // of all shapes
  std::string content_;
  std::vector<double> z_;
};

}  // namespace tesselink
