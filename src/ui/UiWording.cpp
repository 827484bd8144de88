// SPDX-License-Identifier: MIT
#include "ui/UiWording.h"

#include <QCoreApplication>

#include "ui/UiNumbers.h"

namespace tesselink {

std::string UiWording::Text(const char* context, const char* text) const {
  return QCoreApplication::translate(context, text).toStdString();
}

std::string UiWording::Number(std::int64_t number) const { return Grouped(number).toStdString(); }

}  // namespace tesselink
