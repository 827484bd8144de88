// SPDX-License-Identifier: MIT
#include "ui/TextPaths.h"

#include <QByteArray>
#include <QDir>
#include <QUrl>
#include <algorithm>

#include "core/io/Paths.h"
#include "core/io/System.h"
#include "core/run/WrittenFiles.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr int kMostProposals = 100;

QString WithoutQuotes(const QString& text) {
  static const QStringList kPairs{"\"\"",
                                  "''",
                                  "``",
                                  QStringLiteral("\u201c\u201d"),
                                  QStringLiteral("\u2018\u2019"),
                                  QStringLiteral("\u201e\u201c"),
                                  QStringLiteral("\u00ab\u00bb")};
  const bool quoted = text.size() > 1 && std::any_of(kPairs.begin(), kPairs.end(), [&](const QString& pair) {
                        return text.startsWith(pair[0]) && text.endsWith(pair[1]);
                      });
  return quoted ? text.mid(1, text.size() - 2).trimmed() : text;
}

bool TakesFiles(const std::string& folder) {
  const std::string place = folder.empty() ? "." : folder;
  sys::Status status;
  return sys::StatusOf(place, status) && status.kind == sys::FileKind::Folder && sys::MayWrite(place);
}

}  // namespace

// Percent signs are decoded here: the file's name may be no UTF-8, and the toolkit would replace its bytes.
QString LocalFile(const QUrl& url) {
  const QString path = url.toLocalFile();
  if (!path.contains('%') && !path.contains(QChar::ReplacementCharacter)) return path;
  return Shown(QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()).toStdString());
}

QString CleanPath(const QString& text) {
  if (text.isEmpty() || FileExists(PathOf(text))) return text;
  QString path = WithoutQuotes(text.trimmed());
  if (path.startsWith("file://", Qt::CaseInsensitive)) path = QDir::toNativeSeparators(LocalFile(QUrl(path)));
  if (path == "~" || path.startsWith("~/")) path.replace(0, 1, QDir::homePath());
  return path;
}

bool HasExtensionOf(const OutputFormat& format, const QString& path) {
  return ExtensionOf(path.toStdString()) == format.Extension();
}

QString WithExtensionOf(const OutputFormat& format, const FormatTable& formats, const QString& path) {
  const std::string extension = ExtensionOf(path.toStdString());
  const auto& rows = formats.Outputs();
  const bool known =
      std::any_of(rows.begin(), rows.end(), [&](const auto& row) { return row.Extension() == extension; });
  const QString stem = known ? path.chopped(static_cast<qsizetype>(extension.size())) : path;
  return stem + Shown(format.Extension());
}

QString ProposedOutput(const std::string& input, const std::string& otherFolder, const OutputFormat& format,
                       const FilterOptions& options) {
  std::string folder = FolderOf(input);
  if (!TakesFiles(folder)) folder = otherFolder;
  if (folder != FolderOf(input) && (folder.empty() || !TakesFiles(folder))) return {};
  const std::string name = FileNameOf(input);
  const std::string stem = JoinPath(folder, ExtensionOf(name).size() == name.size() ? name : StripExtension(name));
  for (int number = 0; number < kMostProposals; ++number) {
    const std::string path = stem + (number == 0 ? "" : "-converted") +
                             (number < 2 ? "" : "-" + std::to_string(number)) + format.Extension();
    if (!IsThere(path) && ReplacedFiles(path, format, options).empty()) return Shown(path);
  }
  return {};
}

}  // namespace tesselink
