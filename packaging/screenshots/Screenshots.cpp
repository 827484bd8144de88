// SPDX-License-Identifier: MIT
// Pictures of every window and dialog: window-screenshots FOLDER light|dark [LANGUAGE [ONLY]]. packaging/screenshots.sh
// takes them all, in both styles, at both resolutions and in every language.
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStyleFactory>
#include <cstdio>

#include "ui/Gallery.h"
#include "ui/Language.h"

namespace {

using namespace tesselink;

QPalette Dark() {
  const QColor window(45, 45, 48), base(30, 30, 32), text(230, 230, 230), accent(61, 142, 201);
  QPalette palette(window);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase, window);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, text.darker(180));
  }
  palette.setColor(QPalette::PlaceholderText, text.darker(150));
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, accent.lighter(130));
  return palette;
}

class Album {
 public:
  Album(QString folder, QString only) : folder_(std::move(folder)), only_(std::move(only)) {}

  /// Grabs a window once it has been laid out and painted.
  void Take(const QString& name, QWidget& window, int milliseconds = 50) {
    if (!only_.isEmpty() && name != only_) return;
    window.show();
    QElapsedTimer waiting;
    waiting.start();
    while (waiting.elapsed() < milliseconds) QApplication::processEvents();
    const QString path = folder_ + "/" + name + ".png";
    if (!window.grab().save(path)) {
      std::fprintf(stderr, "%s could not be written\n", qPrintable(path));
      failed_ = true;
    }
    window.hide();
  }
  bool Failed() const { return failed_; }

 private:
  QString folder_, only_;
  bool failed_ = false;
};

}  // namespace

int main(int count, char** values) {
  QApplication application(count, values);
  const QStringList words = QApplication::arguments();
  if (words.size() < 3 || (words[2] != "light" && words[2] != "dark")) {
    std::fputs("usage: window-screenshots FOLDER light|dark [LANGUAGE [ONLY]]\n", stderr);
    return 2;
  }
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  if (words[2] == "dark") QApplication::setPalette(Dark());
  Album album(QDir(words[1]).absolutePath(), words.value(4));
  const Language language(QLocale(words.value(3, "en")), TESSELINK_TRANSLATIONS);
  // So that no picture shows where somebody keeps the examples.
  QDir drawings(QDir::tempPath() + "/plats");
  if (drawings.exists() || !drawings.mkpath(".")) {
    std::fprintf(stderr, "%s cannot be made\n", qPrintable(drawings.path()));
    return 1;
  }
  for (const QFileInfo& example : QDir(TESSELINK_EXAMPLES).entryInfoList(QDir::Files)) {
    QFile::copy(example.filePath(), drawings.filePath(example.fileName()));
  }
  QDir::setCurrent(drawings.path());
  Gallery([&album](const QString& name, QWidget& window, int milliseconds) {
    album.Take(name, window, milliseconds);
  }).ShowAll();
  drawings.removeRecursively();
  return album.Failed() ? 1 : 0;
}
