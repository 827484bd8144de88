// SPDX-License-Identifier: MIT
#include "core/run/Options.h"

#include "core/io/Numbers.h"

namespace tesselink {

double OptionValues::Number(std::string_view name, double otherwise) const {
  return Has(name) ? StrictNumber(Text(name)) : otherwise;
}

}  // namespace tesselink
