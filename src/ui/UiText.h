// SPDX-License-Identifier: MIT
// Text between the system's encoding and the screen.
#pragma once

#include <QString>
#include <string>

namespace tesselink {

/// A path, a name or a message as a screen shows it: UTF-8 as it stands, other bytes as Latin-1 characters, and every
/// line end as a single line feed.
QString Shown(const std::string& text);

/// A text that somebody else tells, of the context "Messages", in the window's language where it has it. Within it
/// translations have %1 in place of the subject.
QString InWindowLanguage(const std::string& text, const std::string& subject = {});

/// The path that a text on the screen names: its encoding is that of the file there is.
std::string PathOf(const QString& shown);

}  // namespace tesselink
