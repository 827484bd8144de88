// SPDX-License-Identifier: MIT
// Packs the readable colour list into ACADTBL.TBL: three bytes a colour number behind three unused ones. A record holds
// blue, green and red in this order, so that the default byte order gives colours with red in the low byte.
#include <cstdio>
#include <fstream>
#include <string>

int main(int count, char** arguments) {
  if (count != 3) {
    std::fputs("usage: pack-colour-table dxf-colours.csv ACADTBL.TBL\n", stderr);
    return 2;
  }
  std::ifstream list(arguments[1]);
  std::string table(3, '\0');
  std::string line;
  std::getline(list, line);
  int expected = 0;
  while (std::getline(list, line)) {
    int number = 0, red = 0, green = 0, blue = 0;
    const int read = std::sscanf(line.c_str(), "%d,%d,%d,%d", &number, &red, &green, &blue);
    if (read != 4 || number != expected++ || (red | green | blue) < 0 || (red | green | blue) > 255) {
      std::fprintf(stderr, "%s: expected colour %d in \"%s\"\n", arguments[1], expected - 1, line.c_str());
      return 1;
    }
    for (const int part : {blue, green, red}) table += static_cast<char>(part);
  }
  std::ofstream out(arguments[2], std::ios::binary);
  out << table << std::flush;
  return expected == 256 && out ? 0 : 1;
}
