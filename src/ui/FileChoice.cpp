// SPDX-License-Identifier: MIT
#include "ui/FileChoice.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>
#include <algorithm>

#include "core/io/Paths.h"
#include "core/run/FieldSelection.h"
#include "formats/shape/DBFInFilter.h"
#include "ui/TextPaths.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr QChar kNul(0);

template <typename Row>
QString EntryOf(const std::vector<Row>& formats, const QString& path) {
  const std::string extension = ExtensionOf(path.toStdString());
  const auto row =
      std::find_if(formats.begin(), formats.end(), [&](const Row& r) { return r.Extension() == extension; });
  return row == formats.end() ? QString() : Shown(row->entry);
}

std::string NameIn(const std::string& folder, const std::string& path) {
  return FolderOf(path) == folder ? FileNameOf(path) : path;
}

template <typename Row>
QStringList ListedEntries(const std::vector<Row>& rows) {
  QStringList entries;
  for (const Row& row : rows) {
    if (row.inDropDown) entries.append(Shown(row.entry));
  }
  return entries;
}

}  // namespace

QString PatternOf(const QString& entry) {
  const qsizetype open = entry.lastIndexOf('('), close = entry.lastIndexOf(')');
  return open < 0 || close < open ? QString() : entry.mid(open + 1, close - open - 1);
}

QString FilterList(const QStringList& entries) {
  QString list;
  for (const QString& entry : entries) list += entry + "|" + PatternOf(entry) + "|";
  return list;
}

QString FilterOfAll(const QString& description, const QStringList& entries) {
  QStringList patterns;
  for (const QString& entry : entries) patterns.append(PatternOf(entry));
  patterns.removeDuplicates();
  const QString list = patterns.join(' ');
  return description + " (" + list + ")|" + list + "|";
}

QStringList NameFilters(const QString& filterList) {
  QStringList filters;
  const QStringList parts = filterList.split('|');
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    // Elsewhere "*.*" leaves out the files whose names have no period.
    const QString pattern = parts[i + 1] == "*.*" ? "*" : parts[i + 1];
    const QString description =
        PatternOf(parts[i]).startsWith('*') ? parts[i].left(parts[i].lastIndexOf('(')) : parts[i];
    filters.append(description.trimmed() + " (" + pattern + ")");
  }
  return filters;
}

QString JoinedByNuls(const QStringList& paths) {
  const std::string folder = FolderOf(paths.value(0).toStdString());
  QString joined = QString::fromStdString(folder);
  for (const QString& path : paths) joined += kNul + QString::fromStdString(NameIn(folder, path.toStdString()));
  return joined;
}

QStringList SplitAtNuls(const QString& joined) {
  QStringList parts = joined.split(kNul);
  if (parts.size() == 1) return parts;
  const std::string folder = parts.takeFirst().toStdString();
  for (QString& part : parts) part = QString::fromStdString(JoinPath(folder, part.toStdString()));
  return parts;
}

std::vector<std::string> ChosenFiles(const QStringList& paths) {
  const std::string folder = FolderOf(PathOf(paths.value(0)));
  std::vector<std::string> files{folder};
  for (const QString& path : paths) files.push_back(NameIn(folder, PathOf(path)));
  return files;
}

QString EntryByExtension(const std::vector<InputFormat>& formats, const QString& path) {
  return EntryOf(formats, path);
}

QString EntryByExtension(const std::vector<OutputFormat>& formats, const QString& path) {
  return EntryOf(formats, path);
}

void FollowExtension(QComboBox& box, const QString& path, const QString& entry) {
  const QString extension = QString::fromStdString(ExtensionOf(path.toStdString()));
  if (entry.isEmpty() || PatternOf(box.currentText()) == "*" + extension) return;
  if (box.findText(entry) < 0) box.addItem(entry);
  box.setCurrentText(entry);
}

QStringList DropDownEntries(const std::vector<InputFormat>& formats) { return ListedEntries(formats); }
QStringList DropDownEntries(const std::vector<OutputFormat>& formats) { return ListedEntries(formats); }

QStringList EntriesBeside(const std::vector<OutputFormat>& formats, const QStringList& listed) {
  QStringList entries;
  for (const OutputFormat& row : formats) {
    if (const QString entry = Shown(row.entry); !listed.contains(entry)) entries.append(entry);
  }
  return entries;
}

QStringList InputsAmong(const std::vector<InputFormat>& formats, const QStringList& paths) {
  QStringList inputs;
  for (const QString& path : paths) {
    if (!EntryByExtension(formats, path).isEmpty() || QFileInfo(path).isDir()) inputs.append(path);
  }
  return paths.size() == 1 || inputs.isEmpty() ? paths : inputs;
}

bool IsShapefile(const QString& path) { return ExtensionOf(path.toStdString()) == ".shp"; }

QStringList LocalFiles(const QMimeData& data) {
  QStringList paths;
  for (const QUrl& url : data.urls()) {
    if (url.isLocalFile()) paths.append(QDir::toNativeSeparators(LocalFile(url)));
  }
  return paths;
}

QStringList FieldNames(const std::string& table, Dialect dialect) {
  DBFInFilter reader(dialect);
  reader.filename(table);
  QStringList names;
  for (const std::string& name : FieldSelection::PreparedNames(reader)) names.append(Shown(name));
  return names;
}

}  // namespace tesselink
