// SPDX-License-Identifier: MIT
#include "core/io/OutputMove.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <string_view>

#include "core/io/Errors.h"
#include "core/io/Files.h"

namespace tesselink {
namespace {

using sys::Access;

constexpr std::string_view kRenamed = "renamed", kCopied = "copied", kEnd = "end";
constexpr std::string_view kUnfinished = ".new";  // behind the journal's name until it is whole
constexpr std::uint32_t kRights = 0777;
constexpr std::int64_t kLargestJournal = std::int64_t{1} << 20;

// No file can take the place of the old one, though that one may be written.
class CannotReplace : public Error {
 public:
  using Error::Error;
};

Error NotWritten(const std::string& path) { return Error(SystemReason(path, "could not be written")); }

[[noreturn]] void ThrowNotMoved(const std::string& path) {
  const std::string text = SystemReason(path, "could not be written");
  if (errno == EXDEV || errno == EBUSY || errno == EPERM || errno == EACCES) throw CannotReplace(text);
  throw Error(text);
}

bool IsNameAlone(const std::string& name) {
  return !name.empty() && name != "." && name != ".." && name.find('/') == std::string::npos;
}

template <typename T>
bool Parse(const std::string& text, T& value) {
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, value);
  return error == std::errc() && rest == end;
}

}  // namespace

void OutputMove::Add(const std::string& name, const std::string& target, bool overwrite) {
  File file{name, target, false, {}};
  sys::Status entry, old;
  if (!sys::StatusOf(New(file), file.written) || !sys::StatusOf(Target(file), entry, sys::Links::Keep) ||
      !sys::StatusOf(Target(file), old)) {
    throw NotWritten(Target(file));
  }
  file.replaces = entry.Exists();
  if (old.kind == sys::FileKind::Folder || (file.replaces && !overwrite)) {
    errno = old.kind == sys::FileKind::Folder ? EISDIR : EEXIST;
    throw Error(SystemReason(Target(file), "could not be created"));
  }
  if (old.kind == sys::FileKind::Other) {  // a device, which takes bytes but gives its place to nobody
    FileWriter device(Target(file));
    device.Append(New(file));
    device.Close();
    sys::Unlink(New(file));
    return;
  }
  if (old.kind == sys::FileKind::Regular) TakeRights(file, old);
  files_.push_back(std::move(file));
}

void OutputMove::TakeRights(const File& file, const sys::Status& old) {
  const sys::Status& now = file.written;
  if ((now.owner != old.owner || now.group != old.group) && !sys::SetOwner(New(file), old.owner, old.group)) {
    sys::SetOwner(New(file), now.owner, old.group);
  }
  if ((now.mode & kRights) != (old.mode & kRights) && !sys::SetMode(New(file), old.mode & kRights)) {
    lostRights_.push_back(file.target);
  }
}

void OutputMove::Run(bool inPlace, bool sync) {
  if (files_.empty()) return;
  for (const File& file : files_) {
    const sys::Descriptor written = sync ? sys::Open(New(file), Access::Read) : sys::Descriptor();
    if (sync && (!written || !sys::Sync(written))) throw NotWritten(Target(file));
  }
  const bool replacesAll = std::all_of(files_.begin(), files_.end(), [](const File& file) { return file.replaces; });
  if (inPlace && replacesAll) return Copy(sync);
  try {
    Rename(sync);
  } catch (const CannotReplace&) {
    if (!replacesAll || !isSettled_) throw;
    Copy(sync);
  }
}

void OutputMove::Rename(bool sync) {
  way_ = Way::Renamed;
  const bool isSet = files_.size() > 1;
  try {
    if (isSet) {
      MakeOldFolder();
      WriteJournal(sync);
      for (const File& file : files_) SaveOld(file);
    }
    for (const File& file : files_) Place(file);
    if (isSet && sync) SyncFolder(targets_);
    Complete();
  } catch (...) {
    isSettled_ = Undo();
    throw;
  }
  if (!isSet && sync) SyncFolder(targets_);
}

void OutputMove::Copy(bool sync) {
  way_ = Way::Copied;
  try {
    MakeOldFolder();
    for (const File& file : files_) {
      FileWriter copy(sys::Open(Old(file), Access::CreateNew), Target(file));
      copy.Append(Target(file));
      copy.Close();
    }
    WriteJournal(sync);
    for (const File& file : files_) CopyOver(New(file), Target(file), sync);
    Complete();
  } catch (...) {
    isSettled_ = Undo();
    throw;
  }
}

void OutputMove::MakeOldFolder() {
  if (!sys::MakeFolder(folder_ + kOld, sys::kPrivateFolder)) throw NotWritten(Target(files_.front()));
}

// The journal gets its name when it is whole.
void OutputMove::WriteJournal(bool sync) {
  std::string text;
  const auto add = [&text](std::string_view field) { text.append(field).push_back('\0'); };
  add(way_ == Way::Copied ? kCopied : kRenamed);
  for (const File& file : files_) {
    add(file.name);
    add(file.target);
    add(file.replaces ? "1" : "0");
    for (const auto value : {static_cast<std::int64_t>(file.written.inode), file.written.size, file.written.modified}) {
      add(std::to_string(value));
    }
  }
  add(kEnd);
  const std::string& target = files_.front().target;
  sys::Descriptor file = sys::Open(Journal().append(kUnfinished), Access::Create);
  if (!file || !sys::Write(file, text.data(), text.size()) || (sync && !sys::Sync(file)) || !sys::Close(file) ||
      !sys::Rename(Journal().append(kUnfinished), Journal())) {
    throw NotWritten(targets_ + target);
  }
  isJournaled_ = true;
  if (sync) SyncFolder(folder_);
}

bool OutputMove::ReadJournal(const std::string& path) {
  BinaryFile file(path);
  std::string text(static_cast<std::size_t>(std::min(file.Size(), kLargestJournal)), '\0');
  file.ReadAt(0, text.data(), text.size());
  std::vector<std::string> fields;
  for (std::size_t at = 0, end = 0; (end = text.find('\0', at)) != std::string::npos; at = end + 1) {
    fields.push_back(text.substr(at, end - at));
  }
  constexpr std::size_t kFields = 6;
  if (fields.size() < 2 || fields.size() % kFields != 2 || fields.back() != kEnd) return false;
  way_ = fields[0] == kCopied ? Way::Copied : Way::Renamed;
  for (std::size_t at = 1; at + 1 < fields.size(); at += kFields) {
    File moved{fields[at], fields[at + 1], fields[at + 2] == "1", {}};
    std::int64_t inode = 0;
    if (!IsNameAlone(moved.name) || !IsNameAlone(moved.target) || !Parse(fields[at + 3], inode) ||
        !Parse(fields[at + 4], moved.written.size) || !Parse(fields[at + 5], moved.written.modified)) {
      return false;
    }
    moved.written.inode = static_cast<std::uint64_t>(inode);
    files_.push_back(std::move(moved));
  }
  return true;
}

// A second name in the folder keeps the old file while the new one takes its place at once; where the system has no
// second names, the old one moves away first.
void OutputMove::SaveOld(const File& file) {
  if (!file.replaces || sys::Link(Target(file), Old(file)) || sys::Rename(Target(file), Old(file))) return;
  ThrowNotMoved(Target(file));
}

void OutputMove::Place(const File& file) {
  const bool placed = file.replaces ? sys::Rename(New(file), Target(file)) : sys::RenameNew(New(file), Target(file));
  if (!placed) ThrowNotMoved(Target(file));
}

void OutputMove::CopyOver(const std::string& from, const std::string& to, bool sync) const {
  BinaryFile source(from);
  sys::Descriptor file = sys::Open(to, Access::Overwrite);
  bool written = static_cast<bool>(file);
  std::vector<char> block(std::size_t{1} << 17);
  for (std::int64_t at = 0; written && at < source.Size();) {
    const std::size_t got = source.ReadAt(at, block.data(), block.size());
    written = sys::WriteAt(file, block.data(), got, at);
    at += static_cast<std::int64_t>(got);
  }
  if (!written || !sys::Truncate(file, source.Size()) || (sync && !sys::Sync(file)) || !sys::Close(file)) {
    throw NotWritten(to);
  }
}

// Without the journal the move is complete; it cannot be undone any more.
void OutputMove::Complete() {
  if (isJournaled_ && !sys::Unlink(Journal())) throw NotWritten(Target(files_.front()));
  isJournaled_ = false;
}

bool OutputMove::Undo() {
  if (way_ == Way::Copied && !isJournaled_) {  // no target has been touched, and no copy need be whole
    RemoveTree(folder_ + kOld);
    return true;
  }
  bool undone = true;
  for (auto file = files_.rbegin(); file != files_.rend(); ++file) undone &= PutBack(*file);
  if (undone && isJournaled_) undone = sys::Unlink(Journal());
  if (undone) RemoveTree(folder_ + kOld);
  isJournaled_ = isJournaled_ && !undone;
  return undone;
}

// Puts the old file where it was, or takes the new one away; what somebody else has put there meanwhile stays. The new
// file is in the private folder again, if the system has second names.
bool OutputMove::PutBack(const File& file) {
  if (way_ == Way::Copied) {
    try {
      CopyOver(Old(file), Target(file), false);
      return true;
    } catch (const Error&) {
      return false;
    }
  }
  sys::Status there, written, old;
  if (!sys::StatusOf(Target(file), there, sys::Links::Keep) || !sys::StatusOf(New(file), written) ||
      !sys::StatusOf(Old(file), old, sys::Links::Keep)) {
    return false;
  }
  const bool isNew = there.Exists() && there.SameContent(file.written);
  if (!isNew && there.Exists()) return true;
  if (file.replaces) {
    if (isNew && !written.Exists()) sys::Link(Target(file), New(file));
    return !old.Exists() || sys::Rename(Old(file), Target(file));
  }
  if (!isNew) return true;
  return written.Exists() ? sys::Unlink(Target(file)) : sys::Rename(Target(file), New(file));
}

bool OutputMove::UndoJournal() {
  sys::Status journal;
  if (!sys::StatusOf(Journal(), journal)) return false;
  if (!journal.Exists()) return true;
  isJournaled_ = true;
  try {
    return ReadJournal(Journal()) && Undo();
  } catch (const Error&) {
    return false;
  }
}

void OutputMove::SyncFolder(const std::string& folder) const {
  const sys::Descriptor file = sys::Open(folder.empty() ? "." : folder, Access::Folder);
  if (!file || !sys::Sync(file)) throw NotWritten(Target(files_.front()));
}

void RemoveTree(const std::string& folder) noexcept {
  try {
    std::vector<std::string> names;
    sys::List(folder, "", names);
    for (const std::string& name : names) {
      const std::string path = folder + name;
      sys::Status status;
      if (sys::StatusOf(path, status, sys::Links::Keep) && status.kind == sys::FileKind::Folder) {
        RemoveTree(path + "/");
      } else {
        sys::Unlink(path);
      }
    }
    sys::RemoveFolder(folder);
  } catch (const std::exception&) {  // no memory for names: the next program removes it
  }
}

}  // namespace tesselink
