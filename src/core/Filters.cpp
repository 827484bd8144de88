#include "core/Filters.h"

#include "core/Errors.h"

namespace tesselink {

const std::vector<std::string>& InputFilter::Layers() const {
  static const std::vector<std::string> kNone;
  return Layered ? layers_ : kNone;
}

void OutputFilter::filename(const std::string& path) {
  Release();
  Create(path);
  filename_ = path;
  open_ = true;
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
