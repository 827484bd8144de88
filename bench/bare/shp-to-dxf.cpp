// SPDX-License-Identifier: MIT
// The least that a loop must do to turn points or chains of a shapefile into a drawing with the layers of its table's
// field LAYER: records read in the index's order, numbers written, layers and extents noted; nothing checked, no
// labels. Writes what the program writes in its classic dialect, in which shape 1 has row 2, but for the colour of the
// last shape, which has no row. Usage: shp-to-dxf IN.shp OUT.dxf
#include "BareDrawing.h"

namespace {

using namespace bare;

std::uint32_t BigEndian(const char* at) {
  std::uint32_t value = 0;
  std::memcpy(&value, at, sizeof value);
  return __builtin_bswap32(value);
}
template <typename T>
T LittleEndian(const char* at) {
  T value;
  std::memcpy(&value, at, sizeof value);
  return value;
}

// The field LAYER, row after row.
class Rows {
 public:
  explicit Rows(const char* path) : table_(path) {
    const char* const header = table_.Take(32);
    const std::size_t headerSize = LittleEndian<std::uint16_t>(header + 8);
    size_ = LittleEndian<std::uint16_t>(header + 10);
    std::size_t offset = 1;
    for (std::size_t at = 32; at + 32 < headerSize; at += 32) {
      const char* const field = table_.Take(32);
      const auto width = static_cast<unsigned char>(field[16]);
      if (std::string_view(field) == "LAYER") begin_ = offset, width_ = width;
      offset += width;
    }
    table_.Take(headerSize % 32);
    Next();
  }
  std::string_view Next() {
    const char* const row = table_.Take(size_);
    if (row == nullptr) return "Unassociated";
    std::string_view value(row + begin_, width_);
    while (value.ends_with(' ')) value.remove_suffix(1);
    return value;
  }

 private:
  Bytes table_;
  std::size_t size_ = 0, begin_ = 0, width_ = 0;
};

void Vertex(Output& out, Drawing& drawing, std::string_view layer, const char* xy, double z, bool hasZ) {
  const auto x = LittleEndian<double>(xy), y = LittleEndian<double>(xy + 8);
  drawing.Note(x, y, z);
  if (!layer.empty()) out.Put("  0\r\nVERTEX\r\n  8\r\n").Put(layer).Put("\r\n");
  out.Put(" 10\r\n").Put(x).Put("\r\n 20\r\n").Put(y).Put("\r\n 30\r\n");
  (hasZ ? out.PutSingle(z) : out.Put("0")).Put("\r\n");
}

void Chains(Output& out, Drawing& drawing, const std::string& layer, const char* record, bool hasZ) {
  const auto parts = LittleEndian<std::uint32_t>(record + 44), points = LittleEndian<std::uint32_t>(record + 48);
  const char* const starts = record + 52;
  const char* const xy = starts + std::size_t{4} * parts;
  const char* const z = xy + std::size_t{16} * points + 16;
  for (std::uint32_t part = 0; part < parts; ++part) {
    const auto begin = LittleEndian<std::uint32_t>(starts + std::size_t{4} * part);
    const auto end = part + 1 < parts ? LittleEndian<std::uint32_t>(starts + std::size_t{4} * (part + 1)) : points;
    out.Put("  0\r\nPOLYLINE\r\n  8\r\n").Put(layer).Put("\r\n  6\r\nCONTINUOUS\r\n 62\r\n0\r\n");
    for (std::size_t i = begin; i < end; ++i) {
      Vertex(out, drawing, layer, xy + 16 * i, hasZ ? LittleEndian<double>(z + 8 * i) : 0, hasZ);
    }
    out.Put("  0\r\nSEQEND\r\n");
  }
}

void WriteShapes(const std::string& path, Output& out, Drawing& drawing) {
  constexpr std::uint32_t kPoint = 1, kFirstWithZ = 11;
  const std::string stem = path.substr(0, path.size() - 4);
  Bytes shapes(path.c_str()), index((stem + ".shx").c_str());
  Rows rows((stem + ".dbf").c_str());
  shapes.Take(100);
  index.Take(100);
  std::string layer;
  while (const char* entry = index.Take(8)) {
    const char* const record = shapes.Take(std::size_t{BigEndian(entry + 4)} * 2 + 8);
    if (record == nullptr) return;
    if (const std::string_view value = rows.Next(); value != layer || drawing.layers.empty()) {
      layer.assign(value);
      drawing.Note(layer);
    }
    const auto type = LittleEndian<std::uint32_t>(record + 8);
    if (type == kPoint) {
      out.Put("  0\r\nPOINT\r\n  8\r\n").Put(layer).Put("\r\n  6\r\nCONTINUOUS\r\n 62\r\n0\r\n");
      Vertex(out, drawing, {}, record + 12, 0, false);
    } else {
      Chains(out, drawing, layer, record, type >= kFirstWithZ);
    }
  }
}

}  // namespace

int main(int count, char** values) {
  if (count != 3) return 2;
  bare::WriteDrawing(values[2],
                     [&](bare::Output& out, bare::Drawing& drawing) { WriteShapes(values[1], out, drawing); });
}
