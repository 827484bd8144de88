// SPDX-License-Identifier: MIT
#include "ui/UiNumbers.h"

#include <QLocale>
#include <algorithm>
#include <cmath>
#include <string>

#include "core/io/Numbers.h"

namespace tesselink {
namespace {

// The window's language; where there is none, numbers are grouped as in English.
QLocale Language() {
  const QLocale locale;
  return locale.language() == QLocale::C ? QLocale(QLocale::English, QLocale::UnitedStates) : locale;
}

}  // namespace

QString Grouped(std::int64_t number) { return Language().toString(static_cast<qlonglong>(number)); }

QString Grouped(double number, int decimals) { return Language().toString(number, 'f', decimals); }

QString Grouped(double number) {
  const std::string plain = NumberText(number);
  if (!std::isfinite(number) || plain.find('E') != std::string::npos) return QString::fromStdString(plain);
  const std::size_t period = plain.find('.');
  return Grouped(number, period == std::string::npos ? 0 : static_cast<int>(plain.size() - period - 1));
}

int DecimalsFor(double unitsPerPixel) {
  constexpr double kMost = 9;
  return static_cast<int>(std::clamp(std::ceil(-std::log10(unitsPerPixel)), 0.0, kMost));
}

}  // namespace tesselink
