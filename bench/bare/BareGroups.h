// SPDX-License-Identifier: MIT
// The chains of a drawing of release AC1009, for the bare programs.
#pragma once

#include "BareFiles.h"

namespace bare {

struct Chain {
  std::vector<double> x, y;
};

inline int CodeOf(std::string_view line) {
  int code = 0;
  for (const char c : line) {
    if (c != ' ') code = code * 10 + (c - '0');
  }
  return code;
}

inline double NumberOf(std::string_view line) {
  double value = 0;
  std::from_chars(line.data(), line.data() + line.size(), value);
  return value;
}

/// Hands each POLYLINE with its vertices to a function. Heights are read and dropped.
template <typename Use>
void ForEachChain(const char* path, Use use) {
  Lines lines(path);
  Chain chain;
  double x = 0;
  bool isVertex = false;
  const auto finish = [&] {
    if (!chain.x.empty()) use(chain);
    chain.x.clear();
    chain.y.clear();
  };
  for (std::string_view line; lines.Next(line);) {
    const int code = CodeOf(line);
    if (!lines.Next(line)) break;
    if (code == 0) {
      isVertex = line == "VERTEX";
      if (!isVertex) finish();
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
  finish();
}

}  // namespace bare
