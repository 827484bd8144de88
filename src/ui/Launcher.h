// SPDX-License-Identifier: MIT
// Files and folders in the programs that the desktop has for them.
#pragma once

#include <string>

class QString;
class QUrl;
class QWidget;

namespace tesselink {

/// Whether there is something that opens files, as on a desktop; a bare X server has nothing.
bool HasLauncher();
/// The path from the root.
std::string FullPath(const std::string& path);
/// The address of a file or folder, whatever the encoding of its name.
QUrl UrlOf(const std::string& path);
/// Opens it; where that fails the person is told, over the given window.
void OpenUrl(const QUrl& url, QWidget* window);

}  // namespace tesselink
