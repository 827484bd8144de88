// SPDX-License-Identifier: MIT
#include "core/io/OutputPlace.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>

#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/OutputMove.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"

namespace tesselink {
namespace {

using sys::Access;

constexpr std::string_view kProgram = ".tesselink-";
constexpr std::size_t kRandomLetters = 8, kLongestName = 200;
constexpr std::chrono::milliseconds kPause{10};
constexpr int kMostPauses = 6000;

std::string OrCurrent(const std::string& folder) { return folder.empty() ? "./" : folder; }

bool TakesNoFile(int reason) { return reason == EACCES || reason == EPERM || reason == EROFS; }

// The beginning of a name that is too long to get something added to it, cut between two letters of UTF-8.
std::string Clipped(const std::string& name) {
  std::size_t size = std::min(name.size(), kLongestName);
  while (size > 0 && size < name.size() && (static_cast<unsigned char>(name[size]) & 0xC0) == 0x80) --size;
  return name.substr(0, size);
}

// Tells targets of one name in different folders apart where their private folders lie together.
std::string FolderMark(const std::string& path) {
  std::uint64_t mark = 14695981039346656037u;
  for (const char c : std::filesystem::absolute(path).string()) {
    mark = (mark ^ static_cast<unsigned char>(c)) * 1099511628211u;
  }
  return std::to_string(mark);
}

sys::Descriptor OpenLockFile(const std::string& path) {
  sys::Descriptor file = sys::Open(path, Access::LockFile);
  if (!file && errno == EACCES) {  // one that another user's run has left cannot be written, but locked
    file = sys::Open(path, Access::Read);
    if (!file) errno = EACCES;
  }
  return file;
}

// Excludes other runs to a target while this one begins or moves its files: by a file beside the target, which goes
// with the lock, or by the target itself where its folder takes no other file. A system without locks excludes nobody.
class TargetLock {
 public:
  TargetLock(const std::string& folder, const std::string& name)
      : path_(folder + std::string(kProgram) + Clipped(name) + ".lock") {
    file_ = OpenLockFile(path_);
    if (!file_ && TakesNoFile(errno)) {
      const int reason = errno;
      isOfTarget_ = true;
      path_ = folder + name;
      file_ = sys::Open(path_, Access::Overwrite);
      if (!file_) errno = reason;
    }
    for (int i = 0; file_ && !IsHeld(); ++i) {
      file_ = sys::Descriptor();
      errno = EWOULDBLOCK;
      if (i == kMostPauses) break;
      std::this_thread::sleep_for(kPause);
      file_ = isOfTarget_ ? sys::Open(path_, Access::Overwrite) : OpenLockFile(path_);
    }
  }
  TargetLock(const TargetLock&) = delete;
  TargetLock& operator=(const TargetLock&) = delete;
  ~TargetLock() {
    if (file_ && !isOfTarget_) sys::Unlink(path_);
  }

  /// False: errno tells why.
  explicit operator bool() const { return static_cast<bool>(file_); }
  bool IsOfTarget() const { return isOfTarget_; }

 private:
  // A lock file that somebody else has deleted meanwhile excludes nobody.
  bool IsHeld() const {
    const sys::Locking locking = sys::TryLock(file_);
    sys::Status status;
    return locking == sys::Locking::Failed ||
           (locking == sys::Locking::Held && (!sys::StatusOf(file_, status) || status.names > 0));
  }

  std::string path_;
  sys::Descriptor file_;
  bool isOfTarget_ = false;
};

[[noreturn]] void ThrowNotCreated(const std::string& path) { throw Error(SystemReason(path, "could not be created")); }

}  // namespace

OutputPlace::OutputPlace(const std::string& target, OutputOptions options)
    : target_(target), path_(target), options_(std::move(options)) {
  const std::string resolved = FollowLinks(target);
  const std::size_t separator = resolved.rfind('/');
  into_ = separator == std::string::npos ? "" : resolved.substr(0, separator + 1);
  name_ = resolved.substr(into_.size());
  sys::Status entry;
  if (!sys::StatusOf(resolved, entry, sys::Links::Keep)) ThrowNotCreated(target_);
  isDirect_ = entry.kind == sys::FileKind::Other || entry.kind == sys::FileKind::Link;
  if (isDirect_) return;
  errno = EISDIR;
  if (entry.kind == sys::FileKind::Folder || name_.empty()) ThrowNotCreated(target_);
  Prepare();
}

void OutputPlace::Prepare() {
  const TargetLock lock(into_, name_);
  if (!lock) ThrowNotLocked();
  inPlace_ = lock.IsOfTarget();
  if (options_.leftovers) Recover();
  CheckTarget();
  if (!MakeFolder()) {
    inPlace_ = !inPlace_ && replaces_ && TakesNoFile(errno);
    if (!inPlace_ || !MakeFolder()) ThrowNotCreated(target_);
  }
  if (inPlace_) {
    notes_.push_back(target_ + ": its folder takes no other file, so it is written in place when it is complete");
  }
}

void OutputPlace::ThrowNotLocked() const {
  if (errno == EWOULDBLOCK) throw Error(target_ + ": is being written by another run; wait for its end");
  if (errno != ENOENT && errno != ENOTDIR) ThrowNotCreated(target_);
  throw Error(target_ + ": could not be created: " + into_ + " is no folder that exists");
}

std::string OutputPlace::Base() const { return inPlace_ ? TempFolder() + "/" : into_; }

// The beginning of the names of private folders for this target.
std::string OutputPlace::FolderStem() const {
  const std::string stem = std::string(kProgram) + Clipped(name_) + "-";
  return inPlace_ ? stem + FolderMark(into_ + name_) + "-" : stem;
}

// Puts in order what killed runs to this target have left. The lock on the target keeps others from making such a
// folder meanwhile.
void OutputPlace::Recover() {
  const std::string base = Base(), stem = FolderStem();
  std::vector<std::string> names;
  if (!sys::List(OrCurrent(base), stem, names) && errno != EACCES) ThrowNotCreated(target_);
  for (const std::string& name : names) {
    const std::string folder = base + name + "/";
    sys::Status status;
    if (name.size() != stem.size() + kRandomLetters || !sys::StatusOf(base + name, status, sys::Links::Keep) ||
        status.kind != sys::FileKind::Folder || status.owner != sys::User()) {
      continue;
    }
    const sys::Descriptor lock = sys::Open(folder, Access::Folder);
    if (!lock || sys::TryLock(lock) != sys::Locking::Held) continue;
    if (!OutputMove(folder, into_).UndoJournal()) {
      throw Error(SystemReason(target_, "what a killed run has left half done could not be undone"));
    }
    RemoveTree(folder);
  }
}

void OutputPlace::CheckTarget() {
  for (const std::string& name : MainNames()) {
    const std::string shown = name == name_ ? target_ : into_ + name;
    const sys::Status status = CheckReplaceable(into_ + name, shown);
    replaces_ |= status.Exists();
    if (!inPlace_ && status.names > 1) {
      notes_.push_back(shown + ": has other names (hard links); those keep the old content");
    }
    for (const std::string& path : CompanionPaths(name)) CheckReplaceable(path, path);
  }
}

// Of the files that have companions: the target, or its parts.
std::vector<std::string> OutputPlace::MainNames() const {
  if (options_.parts.empty()) return {name_};
  std::vector<std::string> names;
  for (const std::string& part : options_.parts) names.push_back(TargetOf(BehindStem(name_, part)));
  return names;
}

sys::Status OutputPlace::CheckReplaceable(const std::string& path, const std::string& shown) const {
  sys::Status entry, status;
  if (!sys::StatusOf(path, entry, sys::Links::Keep) || !sys::StatusOf(path, status)) ThrowNotCreated(shown);
  errno = status.kind == sys::FileKind::Folder ? EISDIR : EEXIST;
  if (status.kind == sys::FileKind::Folder || (entry.Exists() && !options_.overwrite)) ThrowNotCreated(shown);
  if (status.kind == sys::FileKind::Regular && !options_.readOnly && !sys::Open(path, Access::Overwrite))
    ThrowNotCreated(shown);
  return status;
}

bool OutputPlace::MakeFolder() {
  std::string folder;
  do {
    folder = Base() + FolderStem() + RandomLetters(kRandomLetters) + "/";
    if (sys::MakeFolder(folder, sys::kPrivateFolder)) break;
    if (errno != EEXIST) return false;
  } while (true);
  folder_ = folder;
  lock_ = sys::Open(folder_, Access::Folder);
  if (!lock_) {
    const int reason = errno;
    Discard();
    errno = reason;
    return false;
  }
  sys::TryLock(lock_);  // without locks no leftover is ever taken for abandoned
  path_ = folder_ + name_;
  return true;
}

// The name that a file of the private folder gets: that of the one beside the target that differs in the letter case
// of its extension, if there is one.
std::string OutputPlace::TargetOf(const std::string& name) const {
  const std::size_t dot = name.rfind('.');
  if (name == name_ || dot == std::string::npos) return name;
  const auto isThere = [&](const std::string& likely) {
    sys::Status status;
    if (!sys::StatusOf(into_ + likely, status, sys::Links::Keep)) ThrowNotCreated(into_ + name);
    return status.Exists();
  };
  const std::string found = FindSpelling(name.substr(0, dot + 1), name.substr(dot + 1), isThere);
  return found.empty() ? name : found;
}

std::vector<std::string> OutputPlace::CompanionPaths(const std::string& mainName) const {
  std::vector<std::string> paths;
  for (const std::string& extension : options_.companions) {
    paths.push_back(into_ + TargetOf(StripExtension(mainName) + "." + extension));
  }
  return paths;
}

Delivery OutputPlace::Deliver() {
  if (isDirect_) return {{target_}, {}};
  // Companions are found by the letter case of their extension before those of the new files lie there.
  std::vector<std::vector<std::string>> sets;
  for (const std::string& name : MainNames()) {
    sets.push_back(CompanionPaths(name));
    sets.back().insert(sets.back().begin(), name == name_ ? target_ : into_ + name);
  }
  Delivery delivery{Move(""), {}};
  const auto isNew = [&files = delivery.files](const std::string& path) {
    return std::find(files.begin(), files.end(), path) != files.end();
  };
  for (const std::vector<std::string>& set : sets) {
    for (const std::string& path : set) {
      sys::Status status;
      if (!isNew(path) && sys::StatusOf(path, status, sys::Links::Keep) && status.Exists()) {
        delivery.untouched.push_back(path);
      }
      if (!isNew(set.front())) break;
    }
  }
  return delivery;
}

Delivery OutputPlace::Keep(const std::string& suffix) {
  if (isDirect_) return {{target_}, {}};
  return {Move(suffix), {}};
}

std::vector<std::string> OutputPlace::Move(const std::string& suffix) {
  try {
    return MoveFiles(suffix);
  } catch (const Error& error) {
    throw Error(Named(error.what()));
  }
}

std::vector<std::string> OutputPlace::MoveFiles(const std::string& suffix) {
  if (folder_.empty()) throw Error(target_ + ": nothing is left to be delivered");
  const TargetLock lock(into_, name_);
  if (!lock) ThrowNotLocked();
  std::vector<std::string> names, files;
  if (!sys::List(folder_, "", names)) ThrowNotCreated(target_);
  std::sort(names.begin(), names.end(),
            [this](const auto& a, const auto& b) { return std::pair(a != name_, a) < std::pair(b != name_, b); });
  OutputMove move(folder_, into_);
  for (const std::string& name : names) {
    const std::string target = suffix.empty() ? TargetOf(name) : BehindStem(name, "." + suffix);
    move.Add(name, target, options_.overwrite || !suffix.empty());
    files.push_back(target == name_ ? target_ : into_ + target);
  }
  try {
    move.Run(inPlace_ && suffix.empty(), options_.sync);
  } catch (const Error& error) {
    if (move.IsSettled()) throw;
    folder_.clear();  // it holds what the next run puts in order
    lock_ = sys::Descriptor();
    throw Error(std::string(error.what()) + "; the next run to it restores what was there");
  }
  if (move.WroteInPlace() && !inPlace_) notes_.push_back(target_ + ": no file could take its place; written in place");
  for (const std::string& name : move.LostRights()) {
    notes_.push_back(into_ + name + ": the access rights of the old file could not be given to the new one");
  }
  Discard();
  return files;
}

void OutputPlace::Discard() noexcept {
  if (!folder_.empty()) RemoveTree(folder_);
  folder_.clear();
  lock_ = sys::Descriptor();
}

std::string OutputPlace::Named(std::string text) const {
  if (isDirect_) return text;
  const std::string_view folder = std::string_view(path_).substr(0, path_.size() - name_.size());
  return Replaced(Replaced(std::move(text), path_, target_), folder, into_);
}

}  // namespace tesselink
