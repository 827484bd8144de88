// SPDX-License-Identifier: MIT
// Text between the system's encoding and the screen.
#pragma once

#include <QString>
#include <string>

namespace tesselink {

/// A path, a name or a message as a screen shows it: UTF-8 as it stands, other bytes as Latin-1 characters, and every
/// line end as a single line feed.
QString Shown(const std::string& text);

/// The path that a text on the screen names: its encoding is that of the file there is.
std::string PathOf(const QString& shown);

}  // namespace tesselink
