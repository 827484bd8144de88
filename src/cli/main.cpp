#include <string>
#include <vector>

#include "cli/Arguments.h"
#include "cli/Commands.h"

int main(int count, char** values) {
  return tesselink::RunCommand(tesselink::ParseArguments(std::vector<std::string>(values + 1, values + count)));
}
