// SPDX-License-Identifier: MIT
#include "core/io/System.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "core/io/SystemCall.h"

namespace tesselink::sys {
namespace {

static_assert(sizeof(off_t) == sizeof(std::int64_t), "files beyond 2 GB need 64-bit positions");

// As many bytes as asked for, by as many transfers as it takes, or fewer where one gives none; -1 when one fails.
template <typename Transfer>
std::int64_t Transferred(Call call, std::size_t count, Transfer transfer) {
  std::size_t done = 0;
  while (done < count) {
    const std::int64_t got = Made(
        call, [&](std::size_t most) { return transfer(done, most); }, count - done);
    if (got < 0) return -1;
    if (got == 0) break;
    done += static_cast<std::size_t>(got);
  }
  return static_cast<std::int64_t>(done);
}

// A device that takes nothing and says nothing is full.
bool Whole(std::int64_t written, std::size_t count) {
  if (written >= 0 && written < static_cast<std::int64_t>(count)) errno = ENOSPC;
  return written == static_cast<std::int64_t>(count);
}

int FlagsOf(Access access) {
  switch (access) {
    case Access::Read:
      return O_RDONLY | O_NONBLOCK | O_NOCTTY;
    case Access::ReadPipe:
      return O_RDONLY | O_NOCTTY;
    case Access::Create:
      return O_WRONLY | O_CREAT | O_TRUNC;
    case Access::CreateNew:
      return O_RDWR | O_CREAT | O_EXCL;
    case Access::Overwrite:
      return O_WRONLY | O_NOCTTY;
    case Access::LockFile:
      return O_RDWR | O_CREAT | O_NOFOLLOW;
    case Access::Append:
      return O_RDWR | O_CREAT | O_APPEND;
    case Access::Folder:
      return O_RDONLY | O_DIRECTORY;
  }
  return O_RDONLY;
}

Status Described(const struct stat& found) {
  Status status;
  status.kind = S_ISREG(found.st_mode)   ? FileKind::Regular
                : S_ISDIR(found.st_mode) ? FileKind::Folder
                : S_ISLNK(found.st_mode) ? FileKind::Link
                                         : FileKind::Other;
  status.isPipe = S_ISFIFO(found.st_mode);
  status.size = found.st_size;
  status.mode = found.st_mode & 07777;
  status.owner = found.st_uid;
  status.group = found.st_gid;
  status.names = found.st_nlink;
  status.device = found.st_dev;
  status.inode = found.st_ino;
  status.modified = std::int64_t{found.st_mtim.tv_sec} * 1'000'000'000 + found.st_mtim.tv_nsec;
  return status;
}

}  // namespace

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  if (this != &other) {
    if (*this) Close(*this);
    number_ = other.Release();
  }
  return *this;
}

Descriptor::~Descriptor() {
  if (!*this) return;
  const int kept = errno;  // so that a reason can be told behind the end of a scope
  Close(*this);
  errno = kept;
}

Descriptor Open(const std::string& path, Access access, std::uint32_t mode) {
  return Descriptor(static_cast<int>(Made(Call::Open, [&](std::size_t) {
    return open(path.c_str(), FlagsOf(access) | O_CLOEXEC, static_cast<mode_t>(mode));
  })));
}

Descriptor Duplicate(int number) {
  return Descriptor(
      static_cast<int>(Made(Call::Duplicate, [&](std::size_t) { return fcntl(number, F_DUPFD_CLOEXEC, 0); })));
}

std::int64_t Read(const Descriptor& file, void* into, std::size_t count) {
  return Transferred(Call::Read, count, [&](std::size_t done, std::size_t most) {
    return read(file.Number(), static_cast<char*>(into) + done, most);
  });
}

std::int64_t ReadAt(const Descriptor& file, void* into, std::size_t count, std::int64_t offset) {
  return Transferred(Call::Read, count, [&](std::size_t done, std::size_t most) {
    return pread(file.Number(), static_cast<char*>(into) + done, most, offset + static_cast<std::int64_t>(done));
  });
}

bool Write(const Descriptor& file, const void* bytes, std::size_t count) {
  return Whole(Transferred(Call::Write, count,
                           [&](std::size_t done, std::size_t most) {
                             return write(file.Number(), static_cast<const char*>(bytes) + done, most);
                           }),
               count);
}

bool WriteAt(const Descriptor& file, const void* bytes, std::size_t count, std::int64_t offset) {
  return Whole(Transferred(Call::Write, count,
                           [&](std::size_t done, std::size_t most) {
                             return pwrite(file.Number(), static_cast<const char*>(bytes) + done, most,
                                           offset + static_cast<std::int64_t>(done));
                           }),
               count);
}

bool Truncate(const Descriptor& file, std::int64_t size) {
  return Done(Call::Truncate, [&] { return ftruncate(file.Number(), size); });
}

bool Sync(const Descriptor& file) {
  return Done(Call::Sync, [&] { return fsync(file.Number()); });
}

bool Close(Descriptor& file) {
  Fault fault;
  if (faultHook != nullptr) fault = faultHook(Call::Close);
  // The number is free again even when the call fails, or is interrupted: it must not be closed twice.
  const int result = close(file.Release());
  if (fault.error != 0) errno = fault.error;
  return (result == 0 && fault.error == 0) || errno == EINTR;
}

bool StatusOf(const Descriptor& file, Status& status) {
  struct stat found {};
  if (!Done(Call::Status, [&] { return fstat(file.Number(), &found); })) return false;
  status = Described(found);
  return true;
}

bool StatusOf(const std::string& path, Status& status, Links links) {
  struct stat found {};
  const int flags = links == Links::Keep ? AT_SYMLINK_NOFOLLOW : 0;
  status = Status();
  if (!Done(Call::Status, [&] { return fstatat(AT_FDCWD, path.c_str(), &found, flags); })) {
    return errno == ENOENT || errno == ENOTDIR;
  }
  status = Described(found);
  return true;
}

bool MayWrite(const std::string& path) {
  return Done(Call::Status, [&] { return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS); });
}

bool ReadLink(const std::string& path, std::string& target) {
  target.resize(4096);
  const std::int64_t length = Made(
      Call::ReadLink, [&](std::size_t most) { return readlink(path.c_str(), target.data(), most); }, target.size());
  target.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
  return length >= 0;
}

bool List(const std::string& folder, std::string_view prefix, std::vector<std::string>& names) {
  DIR* list = nullptr;
  const auto begin = [&] {
    list = opendir(folder.c_str());
    return list == nullptr ? -1 : 0;
  };
  if (!Done(Call::List, begin)) return false;
  const auto readAll = [&] {
    errno = 0;
    while (const dirent* entry = readdir(list)) {
      const std::string_view name(entry->d_name);
      if (name.starts_with(prefix) && name != "." && name != "..") names.emplace_back(name);
    }
    return errno == 0 ? 0 : -1;
  };
  const bool read = Done(Call::List, readAll);
  const int reason = errno;
  closedir(list);
  errno = reason;
  return read;
}

bool Rename(const std::string& from, const std::string& to) {
  return Done(Call::Rename, [&] { return rename(from.c_str(), to.c_str()); });
}

bool RenameNew(const std::string& from, const std::string& to) {
  const auto exclusive = [&] { return renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE); };
  if (Done(Call::Rename, exclusive)) return true;
  if (errno != EINVAL && errno != ENOSYS && errno != ENOTSUP) return false;
  if (Link(from, to)) return Unlink(from);
  if (errno == EEXIST) return false;
  // A file system without links: what appears between these two calls is lost.
  Status there;
  if (!StatusOf(to, there, Links::Keep)) return false;
  if (there.Exists()) {
    errno = EEXIST;
    return false;
  }
  return Rename(from, to);
}

bool Link(const std::string& from, const std::string& to) {
  return Done(Call::Link, [&] { return link(from.c_str(), to.c_str()); });
}

bool Unlink(const std::string& path) {
  return Done(Call::Unlink, [&] { return unlink(path.c_str()); });
}

bool MakeFolder(const std::string& path, std::uint32_t mode) {
  return Done(Call::MakeFolder, [&] { return mkdir(path.c_str(), static_cast<mode_t>(mode)); });
}

bool RemoveFolder(const std::string& path) {
  return Done(Call::RemoveFolder, [&] { return rmdir(path.c_str()); });
}

bool SetMode(const std::string& path, std::uint32_t mode) {
  return Done(Call::Mode, [&] { return chmod(path.c_str(), static_cast<mode_t>(mode)); });
}

bool SetOwner(const std::string& path, std::uint32_t owner, std::uint32_t group) {
  return Done(Call::Owner, [&] { return chown(path.c_str(), owner, group); });
}

Locking TryLock(const Descriptor& file) {
  if (Done(Call::Lock, [&] { return flock(file.Number(), LOCK_EX | LOCK_NB); })) return Locking::Held;
  return errno == EWOULDBLOCK ? Locking::Busy : Locking::Failed;
}

std::uint32_t User() { return geteuid(); }

}  // namespace tesselink::sys
