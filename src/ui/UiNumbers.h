// SPDX-License-Identifier: MIT
// Numbers as the window shows them.
#pragma once

#include <QString>
#include <cstdint>

namespace tesselink {

/// With thousands separated, as in "1,845,802".
QString Grouped(std::int64_t number);
/// The same with so many decimals.
QString Grouped(double number, int decimals);
/// The same with the decimals that the number has.
QString Grouped(double number);

/// How many decimals tell places apart of which so many units lie on a pixel.
int DecimalsFor(double unitsPerPixel);

}  // namespace tesselink
