// SPDX-License-Identifier: MIT
// The least that a loop must do to turn the chains of a Landmark file ("LINE" and "XY,x,y" lines) into a drawing: lines
// found, numbers read and written, layers and extents noted; nothing checked, no texts, no options. Writes what the
// program writes in its classic dialect. Usage: asc-to-dxf IN.asc OUT.dxf
#include "BareDrawing.h"

namespace {

using namespace bare;

void WriteChains(Lines& lines, Output& out, Drawing& drawing) {
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
      drawing.Note(x, y, 0);
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
}

}  // namespace

int main(int count, char** values) {
  if (count != 3) return 2;
  Lines lines(values[1]);
  bare::WriteDrawing(values[2],
                     [&lines](bare::Output& out, bare::Drawing& drawing) { WriteChains(lines, out, drawing); });
}
