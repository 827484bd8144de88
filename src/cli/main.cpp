// SPDX-License-Identifier: MIT
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "cli/StandingOptions.h"

int main(int count, char** values) {
  return tesselink::RunCommand(tesselink::ParseWithSettings(std::vector<std::string>(values + 1, values + count)));
}
