// The least that a loop must do to turn the chains of a drawing of release AC1009 into a Landmark file: lines found,
// codes and numbers read, chains gathered, numbers written; nothing checked, no other kind, no colours by layer. Writes
// what the program writes in its standard dialect of chains that are open and coloured by none. Usage: dxf-to-asc
// IN.dxf OUT.asc
#include <string>

#include "BareFiles.h"

namespace {

using namespace bare;

int CodeOf(std::string_view line) {
  int code = 0;
  for (const char c : line) {
    if (c != ' ') code = code * 10 + (c - '0');
  }
  return code;
}

double NumberOf(std::string_view line) {
  double value = 0;
  std::from_chars(line.data(), line.data() + line.size(), value);
  return value;
}

struct Chain {
  std::vector<double> x, y;
  bool isOpen = false;
};

void Write(Output& out, Chain& chain) {
  if (chain.isOpen && !chain.x.empty()) {
    out.Put("LINE, , , , ,WHITE\r\n");
    for (std::size_t i = 0; i < chain.x.size(); ++i)
      out.Put("XY,").Put(chain.x[i]).Put(",").Put(chain.y[i]).Put("\r\n");
  }
  chain.x.clear();
  chain.y.clear();
}

}  // namespace

int main(int count, char** values) {
  if (count != 3) return 2;
  Lines lines(values[1]);
  Output out(values[2]);
  const std::string_view path = values[2], name = path.substr(path.rfind('/') + 1);
  out.Put("METAFILE,").Put(name.substr(0, name.find('.'))).Put(",M,1,0,0\r\n");
  Chain chain;
  double x = 0;
  bool isVertex = false;
  for (std::string_view line; lines.Next(line);) {
    const int code = CodeOf(line);
    if (!lines.Next(line)) break;
    if (code == 0) {
      isVertex = line == "VERTEX";
      if (isVertex) continue;
      Write(out, chain);
      chain.isOpen = line == "POLYLINE";
    } else if (code == 10) {
      x = NumberOf(line);
    } else if (code == 20 && isVertex) {
      chain.x.push_back(x);
      chain.y.push_back(NumberOf(line));
    } else if (code == 30) {
      volatile double height = NumberOf(line);
      static_cast<void>(height);
    }
  }
}
