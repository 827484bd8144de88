// SPDX-License-Identifier: MIT
// Writes large drawings for timing conversions: the same every time, for every machine.
//
//   make-bench-inputs FOLDER [VERTICES]
//
// lines.shp/.shx/.dbf   polylines of 50 vertices, VERTICES (default 10 million) in all
// lines.asc             the same polylines as Landmark ASCII
// points.shp/.shx/.dbf  a tenth as many points
//
// Coordinates look like UTM metres with three decimals. Layouts: ESRI Shapefile Technical Description (1998), dBase
// III.

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace {

constexpr int ChainVertices = 50;
constexpr std::int64_t DefaultVertices = 10'000'000;
constexpr std::int64_t MostVertices = 100'000'000;
constexpr std::int32_t PointType = 1;
constexpr std::int32_t PolyLineType = 3;

constexpr std::array<std::string_view, 20> Layers = {
    "BLACK", "DARKBLUE",  "BLUE", "DARKGRAY", "DARKGREEN", "GREEN",  "LIGHTGREEN", "LIGHTBLUE", "MAROON",      "PURPLE",
    "BROWN", "LIGHTGRAY", "RED",  "PINK",     "YELLOW",    "ORANGE", "SALMON",     "VIOLET",    "LIGHTYELLOW", "WHITE"};

// SplitMix64: the standard library's distributions differ between implementations.
class Random {
 public:
  std::int64_t Below(std::int64_t limit) {
    std::uint64_t z = (state_ += 0x9E3779B97F4A7C15U);
    z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
    return static_cast<std::int64_t>((z ^ (z >> 31U)) % static_cast<std::uint64_t>(limit));
  }

 private:
  std::uint64_t state_ = 1;
};

// A vertex in thousandths of a metre.
struct Vertex {
  std::int64_t x;
  std::int64_t y;
};

double Metres(std::int64_t thousandths) { return static_cast<double>(thousandths) / 1000.0; }

struct Box {
  std::int64_t minX = INT64_MAX;
  std::int64_t minY = INT64_MAX;
  std::int64_t maxX = INT64_MIN;
  std::int64_t maxY = INT64_MIN;

  void Add(Vertex v) {
    minX = std::min(minX, v.x);
    minY = std::min(minY, v.y);
    maxX = std::max(maxX, v.x);
    maxY = std::max(maxY, v.y);
  }
};

// Collects bytes and writes them in large blocks; throws when the disk refuses.
class OutputFile {
 public:
  explicit OutputFile(const std::filesystem::path& path)
      : path_(path.string()), file_(std::fopen(path_.c_str(), "wb"), &std::fclose) {
    if (!file_) {
      Fail();
    }
    buffer_.reserve(BlockSize + 4096);
  }

  void Text(std::string_view text) {
    buffer_.append(text);
    if (buffer_.size() >= BlockSize) {
      Flush();
    }
  }
  void Byte(int value) { Text(std::string(1, static_cast<char>(value))); }
  void Int16(std::uint32_t value) { Number(value, 2); }
  void Int32(std::int32_t value) { Number(static_cast<std::uint32_t>(value), 4); }
  void Int32BigEndian(std::int64_t value) {
    const auto v = static_cast<std::uint32_t>(value);
    const std::array<char, 4> bytes = {static_cast<char>(v >> 24U), static_cast<char>(v >> 16U),
                                       static_cast<char>(v >> 8U), static_cast<char>(v)};
    Text({bytes.data(), bytes.size()});
  }
  void Double(double value) { Number(std::bit_cast<std::uint64_t>(value), 8); }
  void Doubles(const Box& box) {
    for (const std::int64_t value : {box.minX, box.minY, box.maxX, box.maxY}) {
      Double(Metres(value));
    }
  }
  void Rewind() {
    Flush();
    std::rewind(file_.get());
  }
  void Close() {
    Flush();
    if (std::fclose(file_.release()) != 0) {
      Fail();
    }
  }

 private:
  static constexpr std::size_t BlockSize = std::size_t{1} << 20U;

  void Number(std::uint64_t value, std::size_t size) {
    std::array<char, 8> bytes{};
    for (std::size_t i = 0; i < size; ++i) {
      bytes[i] = static_cast<char>(value >> (8 * i));
    }
    Text({bytes.data(), size});
  }
  void Flush() {
    if (std::fwrite(buffer_.data(), 1, buffer_.size(), file_.get()) != buffer_.size()) {
      Fail();
    }
    buffer_.clear();
  }
  [[noreturn]] void Fail() const { throw std::runtime_error(path_ + ": cannot be written"); }

  std::string path_;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
  std::string buffer_;
};

// A shapefile's main and index file. The headers are written twice: lengths and box are known only at the end.
class ShapeFiles {
 public:
  ShapeFiles(const std::filesystem::path& folder, const std::string& name, std::int32_t type)
      : shp_(folder / (name + ".shp")), shx_(folder / (name + ".shx")), type_(type) {
    Header(shp_, 0);
    Header(shx_, 0);
  }

  void Add(const std::vector<Vertex>& vertices) {
    const std::int64_t bytes =
        type_ == PointType ? 4 + 16 : 4 + 32 + 4 + 4 + 4 + 16 * static_cast<std::int64_t>(vertices.size());
    shx_.Int32BigEndian(words_);
    shx_.Int32BigEndian(bytes / 2);
    shp_.Int32BigEndian(++records_);
    shp_.Int32BigEndian(bytes / 2);
    shp_.Int32(type_);
    words_ += 4 + bytes / 2;
    Box box;
    for (const Vertex v : vertices) {
      box.Add(v);
      box_.Add(v);
    }
    if (type_ != PointType) {
      shp_.Doubles(box);
      shp_.Int32(1);
      shp_.Int32(static_cast<std::int32_t>(vertices.size()));
      shp_.Int32(0);
    }
    for (const Vertex v : vertices) {
      shp_.Double(Metres(v.x));
      shp_.Double(Metres(v.y));
    }
  }

  void Close() {
    shp_.Rewind();
    Header(shp_, words_);
    shp_.Close();
    shx_.Rewind();
    Header(shx_, 50 + 4 * records_);
    shx_.Close();
  }

 private:
  void Header(OutputFile& file, std::int64_t words) const {
    file.Int32BigEndian(9994);
    for (int unused = 0; unused < 5; ++unused) {
      file.Int32BigEndian(0);
    }
    file.Int32BigEndian(words);
    file.Int32(1000);
    file.Int32(type_);
    file.Doubles(box_);
    for (int zAndM = 0; zAndM < 4; ++zAndM) {
      file.Double(0);
    }
  }

  OutputFile shp_;
  OutputFile shx_;
  std::int32_t type_;
  std::int64_t words_ = 50;
  std::int64_t records_ = 0;
  Box box_;
};

// A dBase table with the fields LAYER C(16) and LENGTH N(10,2).
class Table {
 public:
  Table(const std::filesystem::path& folder, const std::string& name, std::int64_t rows)
      : dbf_(folder / (name + ".dbf")) {
    dbf_.Text(std::string_view("\x03\x7C\x05\x01", 4));  // dBase III, 1 May 2024
    dbf_.Int32(static_cast<std::int32_t>(rows));
    dbf_.Int16(32 + 2 * 32 + 1);
    dbf_.Int16(1 + 16 + 10);
    dbf_.Text(std::string(20, '\0'));
    Field("LAYER", 'C', 16, 0);
    Field("LENGTH", 'N', 10, 2);
    dbf_.Byte(0x0D);
  }

  void Add(std::string_view layer, std::int64_t hundredths) {
    std::array<char, 28> row{};
    std::snprintf(row.data(), row.size(), " %-16.16s%7lld.%02lld", layer.data(),
                  static_cast<long long>(hundredths / 100), static_cast<long long>(hundredths % 100));
    dbf_.Text({row.data(), 27});
  }

  void Close() {
    dbf_.Byte(0x1A);
    dbf_.Close();
  }

 private:
  void Field(std::string_view name, char type, int length, int decimals) {
    std::string descriptor(32, '\0');
    descriptor.replace(0, name.size(), name);
    descriptor[11] = type;
    descriptor[16] = static_cast<char>(length);
    descriptor[17] = static_cast<char>(decimals);
    dbf_.Text(descriptor);
  }

  OutputFile dbf_;
};

void AppendThousandths(std::string& text, std::int64_t value) {
  std::array<char, 24> digits{};
  char* end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  text.append(digits.data(), end - 3).append(1, '.').append(end - 3, end);
}

void AddLandmarkLine(OutputFile& asc, std::string_view colour, const std::vector<Vertex>& vertices) {
  std::string text = "LINE, , , , ,";
  text.append(colour).append("\r\n");
  for (const Vertex v : vertices) {
    text += "XY,";
    AppendThousandths(text, v.x);
    text += ',';
    AppendThousandths(text, v.y);
    text += "\r\n";
  }
  asc.Text(text);
}

Vertex SomewhereInTheZone(Random& random) {
  return {200'000'000 + random.Below(600'000'000), 4'000'000'000 + random.Below(900'000'000)};
}

void MakeLines(const std::filesystem::path& folder, std::int64_t chains) {
  Random random;
  ShapeFiles shapes(folder, "lines", PolyLineType);
  Table table(folder, "lines", chains);
  OutputFile asc(folder / "lines.asc");
  asc.Text("METAFILE,B,M,1,0,0\r\n");
  std::vector<Vertex> chain(ChainVertices);
  for (std::int64_t n = 0; n < chains; ++n) {
    Vertex v = SomewhereInTheZone(random);
    for (Vertex& vertex : chain) {
      vertex = v;
      v = {v.x + random.Below(80'001) - 40'000, v.y + random.Below(80'001) - 40'000};
    }
    const std::string_view layer = Layers[static_cast<std::size_t>(random.Below(Layers.size()))];
    shapes.Add(chain);
    table.Add(layer, random.Below(500'000));
    AddLandmarkLine(asc, layer, chain);
  }
  shapes.Close();
  table.Close();
  asc.Close();
}

void MakePoints(const std::filesystem::path& folder, std::int64_t points) {
  Random random;
  ShapeFiles shapes(folder, "points", PointType);
  Table table(folder, "points", points);
  for (std::int64_t n = 0; n < points; ++n) {
    shapes.Add({SomewhereInTheZone(random)});
    table.Add(Layers[static_cast<std::size_t>(random.Below(Layers.size()))], random.Below(500'000));
  }
  shapes.Close();
  table.Close();
}

}  // namespace

int main(int argc, char** argv) {
  std::int64_t vertices = DefaultVertices;
  if (argc == 3) {
    const char* end = argv[2] + std::strlen(argv[2]);
    const auto [rest, error] = std::from_chars(argv[2], end, vertices);
    if (error != std::errc{} || rest != end) {
      vertices = 0;
    }
  }
  if (argc < 2 || argc > 3 || vertices < ChainVertices || vertices > MostVertices) {
    std::fputs("usage: make-bench-inputs FOLDER [VERTICES]   (50 to 100000000, default 10000000)\n", stderr);
    return 2;
  }
  try {
    const std::filesystem::path folder = argv[1];
    std::filesystem::create_directories(folder);
    MakeLines(folder, vertices / ChainVertices);
    MakePoints(folder, vertices / 10);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "make-bench-inputs: %s\n", error.what());
    return 1;
  }
  return 0;
}
