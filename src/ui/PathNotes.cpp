// SPDX-License-Identifier: MIT
#include "ui/PathNotes.h"

#include <QFileInfo>
#include <QLocale>
#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "core/io/Errors.h"
#include "core/io/Paths.h"
#include "core/io/System.h"
#include "core/run/FilesRead.h"
#include "core/run/WrittenFiles.h"
#include "ui/TextPaths.h"
#include "ui/UiNumbers.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

using sys::FileKind;

// Lines break between the parts, not within.
QString Joined(QStringList parts) {
  for (QString& part : parts) part.replace(' ', QChar::Nbsp);
  return parts.join(QStringLiteral("\u00a0\u00b7 "));
}

QString NameOf(const std::string& path) { return Shown(FileNameOf(path)); }

bool IsFolder(const std::string& path) {
  sys::Status status;
  return sys::StatusOf(path, status) && status.kind == FileKind::Folder;
}

std::string FolderFor(const std::string& path) {
  const std::string folder = FolderOf(path);
  return folder.empty() ? "." : folder;
}

QString WholeFolder(const std::string& path) {
  std::error_code error;
  return Shown(std::filesystem::weakly_canonical(std::filesystem::absolute(FolderFor(path), error), error).string());
}

// The name of the coordinate system that stands first in a .prj file.
QString SystemBeside(const std::string& path) {
  const std::string beside = PartnerFile(path, "PRJ");
  const sys::Descriptor file = beside.empty() ? sys::Descriptor() : sys::Open(beside, sys::Access::Read);
  std::string text(512, '\0');
  const std::int64_t got = file ? sys::ReadAt(file, text.data(), text.size(), 0) : 0;
  text.resize(static_cast<std::size_t>(std::max<std::int64_t>(got, 0)));
  const std::size_t begin = text.find('"'), end = text.find('"', begin + 1);
  if (begin == std::string::npos || end == std::string::npos) return {};
  return Shown(text.substr(begin + 1, end - begin - 1)).replace('_', ' ');
}

bool IsSame(const std::string& a, const std::string& b) {
  try {
    return a == b || SameFile(a, b);
  } catch (const Error&) {
    return false;
  }
}

// Whether a file is one that is read along with the input.
bool IsBeside(const std::string& input, const std::string& file, const FormatTable& formats) {
  FilesRead read;
  for (const InputFormat& row : formats.Inputs()) {
    if (row.Extension() == ExtensionOf(input)) read.Add(input, row.companions);
  }
  try {
    return read.Holds(file);
  } catch (const Error&) {
    return false;
  }
}

}  // namespace

QString PathNotes::WhyNotRead(const std::string& path) {
  sys::Status status;
  if (!sys::StatusOf(path, status)) {
    return errno == EACCES ? tr("Its folder may not be looked into: you lack the right.")
                           : tr("It cannot be looked up.");
  }
  switch (status.kind) {
    case FileKind::Regular:
      return FileExists(path) ? QString() : tr("It may not be read: you lack the right.");
    case FileKind::Folder:
      return tr("This is a folder. Choose a file in it.");
    case FileKind::Other:
      return tr("This is a device or a pipe, not a file on a disk.");
    case FileKind::Link:
    case FileKind::None:
      break;
  }
  if (!IsFolder(FolderFor(path))) return tr("There is no folder %1.").arg(WholeFolder(path));
  return tr("There is no file %1 in this folder.").arg(NameOf(path));
}

// What no format reads, and what to do with it.
QString PathNotes::WhyNotUsed(FileContent content) {
  switch (content) {
    case FileContent::Nothing:
      return tr("This file is empty.");
    case FileContent::Table:
      return tr("This is a table. Choose the shapefile (.shp) beside it.");
    case FileContent::Dwg:
      return tr("This is a DWG drawing, which is not read. Save it as DXF.");
    case FileContent::Dgn:
      return tr("This is a DGN drawing, which is not read. Save it as DXF.");
    case FileContent::Zip:
      return tr("This is a .zip archive. Unpack it and choose a file from it.");
    case FileContent::Gzip:
      return tr("This file is compressed (gzip). Unpack it first.");
    case FileContent::Database:
      return tr("This is a database such as a GeoPackage, which is written but not read.");
    case FileContent::GeoJson:
      return tr("This looks like GeoJSON, which is written but not read.");
    case FileContent::Xml:
      return tr("This is XML (KML, GML or a web page), which is not read.");
    case FileContent::Pdf:
      return tr("This is a PDF document, which is not read.");
    case FileContent::Image:
      return tr("This is an image, which is not read.");
    case FileContent::WideText:
      return tr("This is text of two bytes a letter. Save it as UTF-8.");
    case FileContent::Text:
      return tr("This is plain text and looks like none of the drawings that are read.");
    default:
      return {};
  }
}

QString PathNotes::FormatByContent(const std::string& path, const InputFormat& chosen, const FormatTable& formats) {
  const std::string_view key = InputKeyOf(ContentOfFile(path));
  const auto& rows = formats.Inputs();
  const auto row = std::find_if(rows.begin(), rows.end(), [&](const InputFormat& r) { return r.key == key; });
  const bool fits = row == rows.end() || row->Extension() == chosen.Extension();
  return key.empty() || fits ? QString() : QString::fromStdString(row->entry);
}

Note PathNotes::ProblemOfInputs(const QStringList& paths, const InputFormat& format, const FormatTable& formats) {
  for (const QString& path : paths) {
    const std::string file = PathOf(path);
    QString reason = WhyNotRead(file);
    if (reason.isEmpty()) reason = WhyNotUsed(ContentOfFile(file));
    if (!reason.isEmpty()) return {paths.size() == 1 ? reason : NameOf(file) + ": " + reason, true};
  }
  const QString fitting = paths.isEmpty() ? QString() : FormatByContent(PathOf(paths[0]), format, formats);
  if (fitting.isEmpty()) return {};
  const QString name = Shown(formats.Input(fitting.toStdString()).Name());
  return {tr("By its content this is another format: %1.").arg(name), true, tr("Change format")};
}

QString PathNotes::Counted(const InputFormat& format, const InputFacts& facts) {
  QString counted =
      facts.counts.elements == 1 ? tr("1 element") : tr("%1 elements").arg(Grouped(facts.counts.elements));
  if (!format.hasAttributes || facts.counts.layers > 1) {
    counted = facts.counts.layers == 1 ? tr("%1 on 1 layer").arg(counted)
                                       : tr("%1 on %2 layers").arg(counted, Grouped(facts.counts.layers));
  }
  return facts.hasEnded ? counted : tr("%1 so far").arg(counted);
}

Note PathNotes::OfInputs(const QStringList& paths, const InputFormat& format, const InputFacts& facts) {
  if (paths.isEmpty()) return {tr("Type a path, browse, or drop a file on this window.")};
  const std::string first = PathOf(paths[0]);
  QStringList parts;
  sys::Status status;
  if (paths.size() == 1 && sys::StatusOf(first, status)) {
    parts += Shown(format.Name());
    parts += QLocale().formattedDataSize(status.size, 1, QLocale::DataSizeTraditionalFormat);
  }
  if (facts.counts.elements > 0 || facts.hasEnded) parts += Counted(format, facts);
  const bool namesSystem = std::any_of(format.companions.begin(), format.companions.end(),
                                       [](const Companion& companion) { return companion.extension == "PRJ"; });
  if (namesSystem) {
    const QString system = SystemBeside(first);
    parts += system.isEmpty() ? tr("no coordinate system named") : system;
  }
  const QString about = Joined(parts);
  if (facts.problem.isEmpty()) return {about};
  const QString problem = QString(facts.problem).replace(paths[0], NameOf(first));
  return {facts.counts.elements == 0 ? problem : about + "\n" + problem, true};
}

QString PathNotes::WhyNoOutput(const std::string& path) {
  const std::string name = FileNameOf(path);
  if (IsFolder(path) || name.empty()) return tr("This is a folder. Add the name of a file.");
  return {};
}

Note PathNotes::OfOutput(const QString& path, const QString& input, const OutputFormat& format,
                         const FilterOptions& options, const FormatTable& formats) {
  if (path.isEmpty()) return {input.isEmpty() ? QString() : tr("Say where the result is to go.")};
  const std::string file = PathOf(path), folder = FolderFor(file);
  if (const QString reason = WhyNoOutput(file); !reason.isEmpty()) return {reason, true};
  if (IsSame(PathOf(input), file)) return {tr("This is the input itself. Choose another name."), true};
  if (IsBeside(PathOf(input), file, formats)) return {tr("This belongs to the input. Choose another name."), true};
  if (!IsFolder(folder)) return {tr("There is no folder %1.").arg(WholeFolder(file)), true};
  if (IsStream(file)) return {tr("A device or a pipe takes the result.")};
  const std::vector<std::string> replaced = ReplacedFiles(file, format, options);
  for (const std::string& old : replaced) {
    if (!sys::MayWrite(old)) return {tr("%1 may not be written: you lack the right.").arg(NameOf(old)), true};
  }
  if (replaced.empty() && !sys::MayWrite(folder)) {
    return {tr("The folder %1 takes no files from you: you lack the right.").arg(WholeFolder(file)), true};
  }
  QStringList names;
  for (const std::string& old : replaced) names += NameOf(old);
  const QString what = replaced.empty() ? tr("New file in %1").arg(WholeFolder(file))
                                        : tr("Replaces %1 in %2").arg(names.join(", "), WholeFolder(file));
  if (HasExtensionOf(format, path)) return {what};
  return {what + "\n" + tr("The name does not end in %1, as the format does.").arg(Shown(format.Extension())), true};
}

}  // namespace tesselink
