// SPDX-License-Identifier: MIT
// A file to which another program appends lines.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QString>

namespace tesselink {

class GrowingFile {
 public:
  explicit GrowingFile(QString path) : path_(std::move(path)) {}

  /// From its beginning, or, where only what is to come matters, from its end.
  void Rewind() { at_ = 0; }
  void SkipToEnd() { at_ = QFile(path_).size(); }
  /// The lines that have been completed since the last call.
  QList<QByteArray> NewLines() {
    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(at_)) return {};
    const QByteArray text = file.readAll();
    const qsizetype end = text.lastIndexOf('\n') + 1;
    at_ += end;
    QList<QByteArray> lines = text.left(end).split('\n');
    lines.removeLast();  // what stands behind the last line's end
    return lines;
  }

 private:
  QString path_;
  qint64 at_ = 0;
};

}  // namespace tesselink
