// The least that a loop must do to turn the chains of a Landmark file ("LINE" and "XY,x,y" lines) into a drawing: lines
// found, numbers read and written, layers and extents noted; nothing checked, no texts, no options. Writes what the
// program writes in its classic dialect. Usage: asc-to-dxf IN.asc OUT.dxf
#include "BareFiles.h"

#include <set>
#include <string>
#include <vector>

namespace {

using namespace bare;

constexpr std::string_view kHeader =
    "  0\r\nSECTION\r\n  2\r\nHEADER\r\n  9\r\n$ACADVER\r\n  1\r\nAC1009\r\n  9\r\n$INSBASE\r\n 10\r\n0\r\n "
    "20\r\n0\r\n 30\r\n0\r\n";
constexpr std::string_view kLineTypes =
    "  0\r\nENDSEC\r\n  0\r\nSECTION\r\n  2\r\nTABLES\r\n  0\r\nTABLE\r\n  2\r\nLTYPE\r\n 70\r\n1\r\n  0\r\nLTYPE\r\n  "
    "2\r\n"
    "CONTINUOUS\r\n 70\r\n64\r\n  3\r\nSolid Line\r\n 72\r\n65\r\n 73\r\n0\r\n 40\r\n0\r\n  0\r\nENDTAB\r\n";
constexpr std::string_view kBehindLayers =
    "  0\r\nENDTAB\r\n  0\r\nTABLE\r\n  2\r\nSTYLE\r\n 70\r\n0\r\n  0\r\nENDTAB\r\n  0\r\nENDSEC\r\n  0\r\nSECTION\r\n "
    " 2\r\n"
    "BLOCKS\r\n  0\r\nENDSEC\r\n  0\r\nSECTION\r\n  2\r\nENTITIES\r\n";

struct Drawing {
  std::vector<std::string> layers;
  std::set<std::string, std::less<>> seen;
  double least[2] = {1e20, 1e20}, greatest[2] = {-1e20, -1e20};

  void Note(int axis, double value) {
    if (value < least[axis]) least[axis] = value;
    if (value > greatest[axis]) greatest[axis] = value;
  }
  void Note(std::string_view layer) {
    if ((!layers.empty() && layers.back() == layer) || !seen.emplace(layer).second) return;
    layers.emplace_back(layer);
  }
};

void WriteHeader(Output& out, const Drawing& drawing) {
  out.Put(kHeader);
  const auto corner = [&out](std::string_view name, const double* at) {
    out.Put("  9\r\n").Put(name).Put("\r\n 10\r\n").Put(at[0]).Put("\r\n 20\r\n").Put(at[1]).Put("\r\n 30\r\n0\r\n");
  };
  corner("$EXTMIN", drawing.least);
  corner("$EXTMAX", drawing.greatest);
  out.Put(kLineTypes).Put("  0\r\nTABLE\r\n  2\r\nLAYER\r\n 70\r\n").Put(drawing.layers.size()).Put("\r\n");
  for (std::size_t i = 0; i < drawing.layers.size(); ++i) {
    out.Put("  0\r\nLAYER\r\n  2\r\n").Put(drawing.layers[i]).Put("\r\n 70\r\n64\r\n 62\r\n").Put(i + 1);
    out.Put("\r\n  6\r\nCONTINUOUS\r\n");
  }
  out.Put(kBehindLayers);
}

// Where the chains go first, since the header needs what is known only behind them.
Drawing WriteChains(Lines& lines, Output& out) {
  Drawing drawing;
  std::string layer;
  bool isOpen = false;
  const auto close = [&] {
    if (isOpen) out.Put("  0\r\nSEQEND\r\n");
    isOpen = false;
  };
  for (std::string_view line; lines.Next(line);) {
    if (line.starts_with("XY,")) {
      const char* const end = line.data() + line.size();
      double x = 0, y = 0;
      const char* at = std::from_chars(line.data() + 3, end, x).ptr;
      std::from_chars(at + 1, end, y);
      drawing.Note(0, x);
      drawing.Note(1, y);
      out.Put("  0\r\nVERTEX\r\n  8\r\n").Put(layer).Put("\r\n 10\r\n").Put(x).Put("\r\n 20\r\n").Put(y);
      out.Put("\r\n 30\r\n0\r\n");
    } else if (line.starts_with("LINE,") || line.starts_with("POLYGON,")) {
      close();
      layer.assign(line.substr(line.rfind(',') + 1));
      drawing.Note(layer);
      out.Put("  0\r\nPOLYLINE\r\n  8\r\n").Put(layer).Put("\r\n  6\r\nCONTINUOUS\r\n 62\r\n0\r\n");
      isOpen = true;
    }
  }
  close();
  return drawing;
}

}  // namespace

int main(int count, char** values) {
  if (count != 3) return 2;
  const std::string target = values[2], entities = target + ".entities";
  Drawing drawing;
  {
    Lines lines(values[1]);
    Output out(entities.c_str());
    drawing = WriteChains(lines, out);
  }
  Output out(target.c_str());
  WriteHeader(out, drawing);
  out.Append(entities.c_str());
  out.Put("  0\r\nENDSEC\r\n  0\r\nEOF\r\n");
  ::unlink(entities.c_str());
}
