// SPDX-License-Identifier: MIT
// The rules about chosen files: filter lists, lists of several files, and the format that a file's extension tells.
#pragma once

#include <QString>
#include <QStringList>
#include <string>
#include <vector>

#include "core/run/FormatTable.h"

class QComboBox;
class QMimeData;

namespace tesselink {

/// The filter list of a drop-down: for every entry its text and the pattern between its parentheses, each followed by
/// "|".
QString FilterList(const QStringList& entries);
/// A filter of every pattern of a drop-down at once, each once, as "All drawings (*.shp *.dxf)|*.shp *.dxf|".
QString FilterOfAll(const QString& description, const QStringList& entries);
/// A filter list as the toolkit takes it: a text for every pair, its pattern in parentheses at the end.
QStringList NameFilters(const QString& filterList);
/// The pattern in the last parentheses, as in "*.shp".
QString PatternOf(const QString& entry);

/// Several paths as one text: the folder of the first, then the names, separated by NULs. A file that lies elsewhere
/// stands with its whole path.
QString JoinedByNuls(const QStringList& paths);
/// The paths of such a text, or the only one.
QStringList SplitAtNuls(const QString& joined);
/// The list of chosen files that a run takes: the folder of the first, then the names.
std::vector<std::string> ChosenFiles(const QStringList& paths);

/// The entry of the first format whose extension the path has; empty when there is none.
QString EntryByExtension(const std::vector<InputFormat>& formats, const QString& path);
QString EntryByExtension(const std::vector<OutputFormat>& formats, const QString& path);
/// Takes the entry of a path's extension, unless the chosen one has that extension too. A format that the drop-down
/// does not begin with joins it once a name asks for it.
void FollowExtension(QComboBox& box, const QString& path, const QString& entry);
/// The entries of a drop-down, in their order.
QStringList DropDownEntries(const std::vector<InputFormat>& formats);
QStringList DropDownEntries(const std::vector<OutputFormat>& formats);
/// The entries of all other formats.
QStringList EntriesBeside(const std::vector<OutputFormat>& formats, const QStringList& listed);

/// What a drop of files means: of several, folders and those that are inputs by themselves, so that a shapefile may
/// come with its index and its table.
QStringList InputsAmong(const std::vector<InputFormat>& formats, const QStringList& paths);
/// By its extension.
bool IsShapefile(const QString& path);
/// The local files of a drop.
QStringList LocalFiles(const QMimeData& data);

/// The names of the fields that are asked for when several files are read, by the table of the first. Throws Error when
/// it cannot be read.
QStringList FieldNames(const std::string& table, Dialect dialect);

}  // namespace tesselink
