// SPDX-License-Identifier: MIT
// The parts of a drawing of release AC1009 around its entities, for the bare programs.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "BareFiles.h"

namespace bare {

/// What a drawing's header tells, noted while its entities are written.
struct Drawing {
  std::vector<std::string> layers;
  std::set<std::string, std::less<>> seen;
  double least[3] = {1e20, 1e20, 1e20}, greatest[3] = {-1e20, -1e20, -1e20};

  void Note(double x, double y, double z) {
    const double at[] = {x, y, z};
    for (int axis = 0; axis < 3; ++axis) {
      if (at[axis] < least[axis]) least[axis] = at[axis];
      if (at[axis] > greatest[axis]) greatest[axis] = at[axis];
    }
  }
  void Note(std::string_view layer) {
    if (!seen.contains(layer)) layers.emplace_back(*seen.emplace(layer).first);
  }
};

inline void WriteHeader(Output& out, const Drawing& drawing) {
  out.Put("  0\r\nSECTION\r\n  2\r\nHEADER\r\n  9\r\n$ACADVER\r\n  1\r\nAC1009\r\n");
  out.Put("  9\r\n$INSBASE\r\n 10\r\n0\r\n 20\r\n0\r\n 30\r\n0\r\n");
  const auto corner = [&out](std::string_view name, const double* at) {
    out.Put("  9\r\n").Put(name).Put("\r\n 10\r\n").Put(at[0]).Put("\r\n 20\r\n").Put(at[1]);
    out.Put("\r\n 30\r\n").PutSingle(at[2]).Put("\r\n");
  };
  corner("$EXTMIN", drawing.least);
  corner("$EXTMAX", drawing.greatest);
  out.Put("  0\r\nENDSEC\r\n  0\r\nSECTION\r\n  2\r\nTABLES\r\n  0\r\nTABLE\r\n  2\r\nLTYPE\r\n 70\r\n1\r\n");
  out.Put(
      "  0\r\nLTYPE\r\n  2\r\nCONTINUOUS\r\n 70\r\n64\r\n  3\r\nSolid Line\r\n 72\r\n65\r\n 73\r\n0\r\n 40\r\n0\r\n");
  out.Put("  0\r\nENDTAB\r\n  0\r\nTABLE\r\n  2\r\nLAYER\r\n 70\r\n").Put(drawing.layers.size()).Put("\r\n");
  for (std::size_t i = 0; i < drawing.layers.size(); ++i) {
    out.Put("  0\r\nLAYER\r\n  2\r\n").Put(drawing.layers[i]).Put("\r\n 70\r\n64\r\n 62\r\n").Put(i + 1);
    out.Put("\r\n  6\r\nCONTINUOUS\r\n");
  }
  out.Put("  0\r\nENDTAB\r\n  0\r\nTABLE\r\n  2\r\nSTYLE\r\n 70\r\n0\r\n  0\r\nENDTAB\r\n  0\r\nENDSEC\r\n");
  out.Put("  0\r\nSECTION\r\n  2\r\nBLOCKS\r\n  0\r\nENDSEC\r\n  0\r\nSECTION\r\n  2\r\nENTITIES\r\n");
}

/// Writes a drawing whose entities a function writes: these go to a file of their own first, since the header needs
/// what is known only behind them.
template <typename WriteEntities>
void WriteDrawing(const std::string& target, WriteEntities write) {
  const std::string entities = target + ".entities";
  Drawing drawing;
  {
    Output out(entities.c_str());
    write(out, drawing);
  }
  Output out(target.c_str());
  WriteHeader(out, drawing);
  out.Append(entities.c_str());
  out.Put("  0\r\nENDSEC\r\n  0\r\nEOF\r\n");
  ::unlink(entities.c_str());
}

}  // namespace bare
