// SPDX-License-Identifier: MIT
// What a person should know of an input and of an output before a run, in a line each.
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <string>

#include "app/FileContent.h"
#include "core/run/FormatTable.h"
#include "picture/Picture.h"
#include "ui/NoteLine.h"

namespace tesselink {

/// What reading an input has shown so far.
struct InputFacts {
  PictureCounts counts = {};
  bool hasEnded = false;  ///< nothing more will come
  QString problem = {};   ///< why no more of it can be read, or nothing
};

class PathNotes {
  Q_DECLARE_TR_FUNCTIONS(tesselink::PathNotes)
 public:
  /// Why the files cannot be read in a format; an empty text where nothing is against it. Where another format fits,
  /// the action offers it.
  static Note ProblemOfInputs(const QStringList& paths, const InputFormat& format, const FormatTable& formats);
  /// What the files are, as far as it is known.
  static Note OfInputs(const QStringList& paths, const InputFormat& format, const InputFacts& facts);
  /// The drop-down's text of the format that a file has by its content where a chosen one does not fit; else empty.
  static QString FormatByContent(const std::string& path, const InputFormat& chosen, const FormatTable& formats);
  /// What becomes of an output: a new file or one that is replaced, or why there can be none.
  static Note OfOutput(const QString& path, const QString& input, const OutputFormat& format,
                       const FilterOptions& options, const FormatTable& formats);
  /// Why a path names no file that is written; empty where it may.
  static QString WhyNoOutput(const std::string& path);

 private:
  static QString WhyNotRead(const std::string& path);
  static QString WhyNotUsed(FileContent content);
  static QString Counted(const InputFormat& format, const InputFacts& facts);
};

}  // namespace tesselink
