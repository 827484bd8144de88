// SPDX-License-Identifier: MIT
// A main window with a folder of its own, and what a person does there.
#pragma once

#include <QComboBox>
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include "formats/Formats.h"
#include "support/MemorySettings.h"
#include "ui/Answers.h"
#include "ui/MainWindow.h"

namespace tesselink {

constexpr const char* kShapefile = "ESRI Shapefile (*.shp)";
constexpr const char* kDrawing = "AutoCAD DXF File (*.dxf)";
constexpr const char* kLandmark = "Landmark ASCII File (*.asc)";
constexpr const char* kSeveral = "Multiple Shapefile Input (*.shp)";

inline QByteArray Bytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file: " + path.toUtf8());
}

inline QString Example(const QString& name) { return QStringLiteral(TESSELINK_EXAMPLES "/") + name; }

// A window and a folder of its own.
struct Desk {
  Desk() {
    window.show();
    // Which entity types layers become is no matter here.
    person.Whenever("Layer Name Matching", [](QWidget& dialog) { dialog.close(); });
  }
  ~Desk() { QCOMPARE(person.Complaint(), QString()); }
  QString Path(const QString& name) const { return folder.path() + '/' + name; }
  QString Put(const QString& name, const std::string& bytes = {}) const {
    QFile file(Path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(QByteArray::fromStdString(bytes)) < 0) qFatal("no room");
    return Path(name);
  }
  QString Copy(const QString& example) const {
    QFile::copy(Example(example), Path(example));
    return Path(example);
  }
  template <typename T>
  T& Get(const char* name) const {
    return Control<T>(window, name);
  }
  QString InFormat() const { return Get<QComboBox>("InFormat").currentText(); }
  QString OutFormat() const { return Get<QComboBox>("OutFormat").currentText(); }
  QString Infile() const { return Get<QLineEdit>("Infile").text(); }
  QString OutFile() const { return Get<QLineEdit>("OutFile").text(); }
  void Click(const char* button) { Get<QPushButton>(button).click(); }
  void Type(const char* box, const QString& text) {
    Get<QLineEdit>(box).clear();
    QTest::keyClicks(&Get<QLineEdit>(box), text);
  }
  void Drop(const QStringList& paths) {
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& path : paths) urls.append(QUrl::fromLocalFile(path));
    data.setUrls(urls);
    Drop(data);
  }
  void Drop(const QMimeData& data) {
    QDragEnterEvent enter(QPoint(1, 1), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &enter);
    QDropEvent drop(QPointF(1, 1), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    if (enter.isAccepted()) QApplication::sendEvent(&window, &drop);
  }

  QTemporaryDir folder;
  MemorySettings settings;
  FilterOptions options{.programFolder = TESSELINK_DATA_FOLDER, .moduleFolder = TESSELINK_DATA_FOLDER};
  MainWindow window{AllFormats(), settings, options};
  Answers person;
};

// Chooses files, by their names in the dialog's folder, and leaves the dialog by its own button.
inline std::function<void(QWidget&)> Choose(const QStringList& names) {
  return [names](QWidget& window) {
    auto& dialog = dynamic_cast<QFileDialog&>(window);
    QStringList quoted;
    for (const QString& name : names) quoted.append('"' + name + '"');
    Control<QLineEdit>(dialog, "fileNameEdit").setText(names.size() == 1 ? names[0] : quoted.join(' '));
    QMetaObject::invokeMethod(&dialog, "accept");
  };
}

}  // namespace tesselink
