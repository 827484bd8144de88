// SPDX-License-Identifier: MIT
#include "core/run/Filters.h"

#include <algorithm>

#include "core/io/Errors.h"
#include "core/run/FilesRead.h"
#include "core/run/Interaction.h"
#include "core/run/Report.h"

namespace tesselink {

const std::vector<std::string>& InputFilter::Layers() const {
  static const std::vector<std::string> kNone;
  return Layered ? layers_ : kNone;
}

const std::vector<LineType>& InputFilter::LineTypes() const {
  static const std::vector<LineType> kNone;
  return kNone;
}

void InputFilter::NoteRead(const std::string& path) const {
  if (context_.filesRead != nullptr && !path.empty()) context_.filesRead->Add(path);
}

void OutputFilter::filename(const std::string& path) {
  Release();
  missed_.clear();
  losses_.Reset();
  filename_.clear();
  Create(path);
  filename_ = path;
  open_ = true;
}

void OutputFilter::NoteMissed(std::string_view what) {
  if (std::find(missed_.begin(), missed_.end(), what) == missed_.end()) missed_.push_back(what);
}

WriteResult OutputFilter::WriteEntity(tEntity& entity) {
  if (!open_) throw Error("File Name not yet entered", NoFileSource());
  return Write(entity);
}

void OutputFilter::Release() {
  if (!open_) return;
  open_ = false;
  try {
    Complete();
  } catch (...) {
    Drop();
    throw;
  }
  losses_.Tell(report(), filename_);
  if (missed_.empty()) return;
  std::string list;
  for (const std::string_view what : missed_) list.append(list.empty() ? "" : ", ").append(what);
  report().Warn(WarningKind::ClassicDialect, filename_ + ": other programs miss " + list + "; the standard dialect (" +
                                                 interaction().Naming("dialect", "standard") + ") keeps that");
}

void OutputFilter::Abandon() noexcept {
  if (open_) Drop();
  open_ = false;
}

void OutputFilter::ReleaseQuietly() noexcept {
  try {
    Release();
  } catch (...) {  // whoever wants to know calls Release
  }
}

}  // namespace tesselink
