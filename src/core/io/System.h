// SPDX-License-Identifier: MIT
// Every call to the system that can fail, made in one place, so that tests can let the n-th one fail. A call that fails
// leaves the reason in errno. A call that a signal interrupts is made again; a read or write that the system cuts
// short is continued.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tesselink::sys {

enum class Call {
  Open,
  Read,
  Write,
  Close,
  Status,
  Truncate,
  Sync,
  Rename,
  Link,
  Unlink,
  MakeFolder,
  RemoveFolder,
  Mode,
  Owner,
  Lock,
  Duplicate,
  ReadLink,
  List,
  Pipe,
  Spawn,
  Wait,
  Signal,
  Limit,
};

/// What happens to a call instead: an error number, or bytes of which the system takes or gives a part only.
struct Fault {
  int error = 0;
  std::size_t most = SIZE_MAX;
};
using FaultHook = Fault (*)(Call);
/// Asked before each call while a test has set it; null in every program.
inline FaultHook faultHook = nullptr;

/// An open file, closed with the object.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept;
  ~Descriptor();

  explicit operator bool() const { return number_ >= 0; }
  int Number() const { return number_; }
  int Release() { return std::exchange(number_, -1); }

 private:
  int number_ = -1;
};

enum class Access {
  Read,       ///< does not wait for a pipe's other end
  ReadPipe,   ///< waits for it
  Create,     ///< for writing; a file that is there is emptied
  CreateNew,  ///< for writing and reading; fails where there is a file
  Overwrite,  ///< for writing a file that is there from its beginning
  LockFile,   ///< created where there is none
  Append,     ///< every write goes to its end; created where there is none
  Folder,     ///< an existing folder, to be synced or locked
};

enum class FileKind { None, Regular, Folder, Link, Other };

/// What the system knows of a file.
struct Status {
  FileKind kind = FileKind::None;
  bool isPipe = false;     ///< of FileKind::Other: one with a name
  std::int64_t size = 0;   ///< bytes
  std::uint32_t mode = 0;  ///< permission bits
  std::uint32_t owner = 0, group = 0;
  std::uint64_t names = 0;  ///< hard links
  std::uint64_t device = 0, inode = 0;
  std::int64_t modified = 0;  ///< nanoseconds since 1970

  bool Exists() const { return kind != FileKind::None; }
  bool SameFile(const Status& other) const { return device == other.device && inode == other.inode; }
  /// Whether both are one state of one file, under whatever name in one file system.
  bool SameContent(const Status& other) const {
    return inode == other.inode && size == other.size && modified == other.modified;
  }
};

enum class Links { Follow, Keep };
enum class Locking { Held, Busy, Failed };

Descriptor Open(const std::string& path, Access access, std::uint32_t mode = 0666);
Descriptor Duplicate(int number);
/// Reads `count` bytes, or fewer where the file ends; -1 when it fails. Without a position it goes on where the last
/// such read ended.
std::int64_t Read(const Descriptor& file, void* into, std::size_t count);
std::int64_t ReadAt(const Descriptor& file, void* into, std::size_t count, std::int64_t offset);
bool Write(const Descriptor& file, const void* bytes, std::size_t count);
bool WriteAt(const Descriptor& file, const void* bytes, std::size_t count, std::int64_t offset);
bool Truncate(const Descriptor& file, std::int64_t size);
bool Sync(const Descriptor& file);
/// Closes it in any case; what was written late may fail only here.
bool Close(Descriptor& file);

bool StatusOf(const Descriptor& file, Status& status);
/// A path that names nothing is no failure: its kind is None.
bool StatusOf(const std::string& path, Status& status, Links links = Links::Follow);
/// Whether the user may write into an existing file, or make files in an existing folder.
bool MayWrite(const std::string& path);
/// The text of a symbolic link.
bool ReadLink(const std::string& path, std::string& target);
/// The names in a folder that begin with a prefix, in no order.
bool List(const std::string& folder, std::string_view prefix, std::vector<std::string>& names);

/// Replaces `to` at once, or not at all.
bool Rename(const std::string& from, const std::string& to);
/// Fails with EEXIST where there is a `to`.
bool RenameNew(const std::string& from, const std::string& to);
bool Link(const std::string& from, const std::string& to);
bool Unlink(const std::string& path);
/// The mode of a folder that nobody else may look into.
inline constexpr std::uint32_t kPrivateFolder = 0700;
bool MakeFolder(const std::string& path, std::uint32_t mode);
bool RemoveFolder(const std::string& path);
bool SetMode(const std::string& path, std::uint32_t mode);
bool SetOwner(const std::string& path, std::uint32_t owner, std::uint32_t group);
/// Takes a file for this descriptor alone, until it is closed or the process ends; does not wait.
Locking TryLock(const Descriptor& file);
/// The user for whom the program runs.
std::uint32_t User();

}  // namespace tesselink::sys
