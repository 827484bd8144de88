// SPDX-License-Identifier: MIT
// The least that a loop must do to turn the chains of a drawing of release AC1009 into a Landmark file: lines found,
// codes and numbers read, chains gathered, numbers written; nothing checked, no other kind, no colours by layer. Writes
// what the program writes in its standard dialect of chains that are open and have no colour. Usage: dxf-to-asc IN.dxf
// OUT.asc
#include "BareGroups.h"

int main(int count, char** values) {
  if (count != 3) return 2;
  bare::Output out(values[2]);
  const std::string_view path = values[2], name = path.substr(path.rfind('/') + 1);
  out.Put("METAFILE,").Put(name.substr(0, name.find('.'))).Put(",M,1,0,0\r\n");
  bare::ForEachChain(values[1], [&out](const bare::Chain& chain) {
    out.Put("LINE, , , , ,WHITE\r\n");
    for (std::size_t i = 0; i < chain.x.size(); ++i) {
      out.Put("XY,").Put(chain.x[i]).Put(",").Put(chain.y[i]).Put("\r\n");
    }
  });
}
