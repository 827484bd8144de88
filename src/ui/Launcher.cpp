// SPDX-License-Identifier: MIT
#include "ui/Launcher.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardPaths>
#include <QUrl>
#include <filesystem>

namespace tesselink {
namespace {

class Launcher {
  Q_DECLARE_TR_FUNCTIONS(Launcher)
 public:
  static QString NotOpened(const QUrl& url) {
    return tr("%1 could not be opened: no program of the desktop took it.").arg(url.toDisplayString());
  }
};

}  // namespace

bool HasLauncher() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
  const bool isConfined = QFileInfo::exists("/.flatpak-info") || qEnvironmentVariableIsSet("SNAP");
  return isConfined || !QStandardPaths::findExecutable("xdg-open").isEmpty();
#else
  return true;
#endif
}

std::string FullPath(const std::string& path) {
  std::error_code error;
  const std::filesystem::path full = std::filesystem::absolute(path, error);
  return error ? path : full.lexically_normal().string();
}

QUrl UrlOf(const std::string& path) {
  return QUrl::fromEncoded("file://" + QByteArray::fromStdString(FullPath(path)).toPercentEncoding("/"));
}

void OpenUrl(const QUrl& url, QWidget* window) {
  if (QDesktopServices::openUrl(url)) return;
  QMessageBox box(QMessageBox::Warning, window->windowTitle(), Launcher::NotOpened(url), QMessageBox::Ok, window);
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

}  // namespace tesselink
