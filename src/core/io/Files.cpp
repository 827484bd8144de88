// SPDX-License-Identifier: MIT
#include "core/io/Files.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <random>
#include <system_error>

#include "core/io/Errors.h"
#include "core/io/Paths.h"

namespace tesselink {
namespace {

namespace fs = std::filesystem;
using sys::Access;

constexpr std::size_t kFirstLineBlock = std::size_t{1} << 17;
constexpr std::size_t kCopyBlock = std::size_t{1} << 18;
constexpr std::uint32_t kOwnerOnly = 0600;
constexpr int kMostLinks = 40;

// In the name of a temporary file as long as its program lives; one whose lock is free was left by a killed program.
constexpr std::string_view kOfTheProgram = ".tesselink-";
constexpr std::size_t kTemporaryLetters = 10;

// Creates a file that did not exist before; its name is `stem` with random letters behind it.
sys::Descriptor CreateUnique(const std::string& stem, std::string& path) {
  sys::Descriptor file;
  for (int attempt = 0; attempt < 100 && !file; ++attempt) {
    path = stem + RandomLetters(kTemporaryLetters);
    file = sys::Open(path, Access::CreateNew, kOwnerOnly);
    if (!file && errno != EEXIST) break;
  }
  return file;
}

[[noreturn]] void ThrowNoTempFile(const std::string& path) {
  throw Error(SystemReason(path, "a temporary file could not be created") + "; set TMPDIR to a folder with room");
}

// Deletes the files of a prefix in a folder that no program holds any more.
void RemoveAbandoned(const std::string& folder, const std::string& prefix) {
  std::vector<std::string> names;
  if (!sys::List(folder, prefix, names)) return;
  for (const std::string& name : names) {
    if (name.size() != prefix.size() + kTemporaryLetters) continue;
    const std::string path = JoinPath(folder, name);
    const sys::Descriptor file = sys::Open(path, Access::Read);
    if (file && sys::TryLock(file) == sys::Locking::Held) sys::Unlink(path);
  }
}

// Whether the file is this program's own, which another one may have deleted before it was locked.
bool TakeForOwn(const sys::Descriptor& file) {
  sys::Status status;
  return sys::TryLock(file) != sys::Locking::Busy && sys::StatusOf(file, status) && status.names > 0;
}

}  // namespace

std::string SystemReason(const std::string& path, std::string_view what) {
  return path + ": " + std::string(what) + ": " + std::generic_category().message(errno);
}

std::string Replaced(std::string text, std::string_view from, std::string_view to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

std::string RandomLetters(std::size_t count) {
  static constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz0123456789";
  std::random_device device;
  std::uniform_int_distribution<std::size_t> pick(0, kLetters.size() - 1);
  std::string letters(count, ' ');
  for (char& c : letters) c = kLetters[pick(device)];
  return letters;
}

std::string TempFolder() {
  std::error_code error;
  const fs::path folder = fs::temp_directory_path(error);
  if (!error) return folder.string();
  throw Error("The system's temporary folder does not exist: " + error.message() + "; set TMPDIR to one that does");
}

std::string FollowLinks(const std::string& path) {
  std::string target = path, next;
  sys::Status status;
  for (int i = 0; i < kMostLinks; ++i) {
    const bool isOpenFile = target.starts_with("/proc/") || target.starts_with("/dev/fd/");
    if (isOpenFile || !sys::StatusOf(target, status, sys::Links::Keep) || status.kind != sys::FileKind::Link) {
      return target;
    }
    if (!sys::ReadLink(target, next)) return target;
    target = fs::path(next).is_absolute() ? next : FolderOf(target) + next;
  }
  return path;
}

BinaryFile::BinaryFile(const std::string& path) : BinaryFile(sys::Open(path, Access::Read), path) {}

BinaryFile::BinaryFile(sys::Descriptor file, std::string path) : file_(std::move(file)), path_(std::move(path)) {
  if (!file_) throw ReadFailed(SystemReason(path_, "could not be opened for reading"));
  sys::Status status;
  if (!sys::StatusOf(file_, status)) throw ReadFailed(SystemReason(path_, "could not be read"));
  if (status.kind != sys::FileKind::Regular) {
    throw ReadFailed(path_ + ": is not a regular file; give the path of a file on a disk");
  }
  size_ = status.size;
}

BinaryFile BinaryFile::Pipe(sys::Descriptor file, std::string path) {
  if (!file) throw ReadFailed(SystemReason(path, "could not be opened for reading"));
  BinaryFile pipe;
  pipe.file_ = std::move(file);
  pipe.path_ = std::move(path);
  pipe.isPipe_ = true;
  return pipe;
}

std::size_t BinaryFile::ReadAt(std::int64_t offset, void* into, std::size_t count) {
  std::int64_t got = 0;
  if (isPipe_) {
    got = sys::Read(file_, into, count);
  } else {
    if (offset < 0 || offset >= size_) return 0;
    count = std::min(count, static_cast<std::size_t>(size_ - offset));
    got = sys::ReadAt(file_, into, count, offset);
  }
  if (got < 0) throw ReadFailed(SystemReason(path_, "could not be read"));
  if (isPipe_) {
    size_ += got;
  } else if (got < static_cast<std::int64_t>(count)) {
    throw ReadFailed(path_ + ": became shorter while it was read");
  }
  return static_cast<std::size_t>(got);
}

void ReadWindow::Refill(std::int64_t offset, std::size_t count) {
  if (!buffer_) buffer_ = std::make_unique_for_overwrite<std::byte[]>(kCapacity);
  // Of rows of which only some bytes are asked for, the next ones lie a little further on.
  const bool inOrder = offset >= start_ && offset <= start_ + static_cast<std::int64_t>(filled_ * 2);
  ahead_ = inOrder ? (ahead_ * 4 < kCapacity ? ahead_ * 4 : kCapacity) : 1024;
  const std::size_t wanted = count < ahead_ ? ahead_ : count;
  start_ = offset;
  filled_ = file_->ReadAt(offset, buffer_.get(), wanted < kCapacity ? wanted : kCapacity);
}

LineReader::LineReader(BinaryFile file) : file_(std::move(file)), buffer_(kFirstLineBlock) {
  FillMore();
  std::size_t looked = end_;
  // The line feed that belongs to a block's last byte is the first of the next.
  if (end_ > 0 && buffer_[end_ - 1] == '\r' && FillMore()) ++looked;
  const std::string_view block(buffer_.data(), looked);
  if (block.starts_with("\xEF\xBB\xBF")) begin_ = 3;  // a byte-order mark is no text
  if (block.find('\n') == std::string_view::npos && block.find('\r') != std::string_view::npos) lineEnd_ = '\r';
}

void LineReader::GoTo(std::int64_t position, std::int64_t lineNumber) {
  lineNumber_ = lineNumber;
  if (position >= bufferStart_ && position <= bufferStart_ + static_cast<std::int64_t>(end_)) {
    begin_ = static_cast<std::size_t>(position - bufferStart_);
    return;
  }
  begin_ = end_ = 0;
  bufferStart_ = position;
}

// Goes on where the first bytes of the line, `searched` of them, hold no line end.
bool LineReader::ReadLongLine(std::string_view& line, std::size_t searched) {
  for (;;) {
    const char* const begin = buffer_.data() + begin_;
    const std::size_t length = end_ - begin_;
    const void* found = length > searched ? std::memchr(begin + searched, lineEnd_, length - searched) : nullptr;
    if (found != nullptr) {
      TakeLine(line, static_cast<std::size_t>(static_cast<const char*>(found) - begin));
      return true;
    }
    if (length > kLongestLine) ThrowTooLong();
    searched = length;
    if (FillMore()) continue;
    if (length == 0) return false;
    TakeLine(line, length);
    begin_ = end_;
    return true;
  }
}

// Moves the unfinished line to the front of the buffer and reads behind it; a line that fills the buffer doubles it.
bool LineReader::FillMore() const {
  if (!file_.IsOpen()) return false;
  if (begin_ > 0) {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    bufferStart_ += static_cast<std::int64_t>(begin_);
    end_ -= begin_;
    begin_ = 0;
  }
  if (end_ == buffer_.size()) buffer_.resize(buffer_.size() * 2);
  const std::size_t got =
      file_.ReadAt(bufferStart_ + static_cast<std::int64_t>(end_), buffer_.data() + end_, buffer_.size() - end_);
  end_ += got;
  return got > 0;
}

void LineReader::ThrowTooLong() const {
  throw Error(Path() + ", line " + std::to_string(lineNumber_ + 1) + ": is longer than " +
              std::to_string(kLongestLine >> 20) + " MB; this is not a text drawing, or its line ends are missing");
}

// What the program was started with is gone on with, not opened anew: ">>" must not lose what is there.
FileWriter::FileWriter(const std::string& path)
    : FileWriter(path == "/dev/stdout" ? sys::Duplicate(1) : sys::Open(path, Access::Create), path) {}

FileWriter::FileWriter(sys::Descriptor file, std::string path) : file_(std::move(file)), path_(std::move(path)) {
  if (!file_) throw Error(SystemReason(path_, "could not be created"));
  buffer_ = std::make_unique_for_overwrite<char[]>(kBufferSize);
}

FileWriter FileWriter::Nameless(std::string_view prefix) {
  std::string path;
  sys::Descriptor file = CreateUnique(JoinPath(TempFolder(), std::string(prefix)), path);
  if (!file || !sys::Unlink(path)) ThrowNoTempFile(path);
  return FileWriter(std::move(file), std::move(path));
}

FileWriter& FileWriter::WriteLong(std::string_view text) {
  Flush();
  if (text.size() > kBufferSize) {
    WriteOut(text.data(), text.size());
  } else {
    std::memcpy(buffer_.get(), text.data(), text.size());
    used_ = text.size();
  }
  return *this;
}

void FileWriter::WriteOut(const char* bytes, std::size_t count) {
  if (!sys::Write(file_, bytes, count)) throw Error(SystemReason(path_, "could not be written"));
  written_ += static_cast<std::int64_t>(count);
}

void FileWriter::Flush() { WriteOut(buffer_.get(), std::exchange(used_, 0)); }

void FileWriter::Overwrite(std::int64_t offset, std::string_view bytes) {
  Flush();
  if (!sys::WriteAt(file_, bytes.data(), bytes.size(), offset)) {
    throw Error(SystemReason(path_, "could not be written"));
  }
}

void FileWriter::Append(const std::string& path) {
  BinaryFile source(path);
  Append(source);
}

void FileWriter::Append(BinaryFile& source) {
  Flush();
  const auto block = std::make_unique_for_overwrite<char[]>(kCopyBlock);
  std::int64_t copied = 0;
  while (const std::size_t got = source.ReadAt(copied, block.get(), kCopyBlock)) {
    WriteOut(block.get(), got);
    copied += static_cast<std::int64_t>(got);
  }
}

void FileWriter::Close() {
  if (!IsOpen()) return;
  Flush();
  if (!sys::Close(file_)) throw Error(SystemReason(path_, "could not be written"));
}

BinaryFile FileWriter::ReadBack() {
  Flush();
  return BinaryFile(std::move(file_), path_);
}

TempFile::TempFile(std::string_view prefix) {
  const std::string folder = TempFolder();
  const std::string name = std::string(prefix).append(kOfTheProgram);
  RemoveAbandoned(folder, name);
  do {
    file_ = CreateUnique(JoinPath(folder, name), path_);
    if (!file_) ThrowNoTempFile(std::exchange(path_, {}));
  } while (!TakeForOwn(file_));
}

TempFile& TempFile::operator=(TempFile&& other) noexcept {
  if (this != &other) {
    Delete();
    path_ = std::exchange(other.path_, {});
    file_ = std::move(other.file_);
  }
  return *this;
}

sys::Descriptor TempFile::TakeHandle() {
  sys::Descriptor file = sys::Duplicate(file_.Number());
  if (!file) ThrowNoTempFile(path_);
  return file;
}

std::string TempFile::Keep() {
  const std::string kept = FolderOf(path_) + Replaced(FileNameOf(path_), kOfTheProgram, "");
  if (!sys::RenameNew(path_, kept)) ThrowNoTempFile(kept);
  file_ = sys::Descriptor();
  path_.clear();
  return kept;
}

void TempFile::Delete() {
  if (!path_.empty()) sys::Unlink(path_);
  path_.clear();
  file_ = sys::Descriptor();
}

std::string TempFileName(std::string_view prefix) { return TempFile(prefix).Keep(); }

Spool::Spool(const std::string& path, const std::function<void()>& eachBlock)
    : source_(path == "-" ? "standard input" : path) {
  BinaryFile pipe = BinaryFile::Pipe(path == "-" ? sys::Duplicate(0) : sys::Open(path, Access::ReadPipe), source_);
  FileWriter copy = FileWriter::Nameless("tesselink");
  std::vector<char> block(kCopyBlock);
  while (const std::size_t got = pipe.ReadAt(0, block.data(), block.size())) {
    copy.Write({block.data(), got});
    if (eachBlock) eachBlock();
  }
  file_ = copy.ReadBack();
  path_ = "/dev/fd/" + std::to_string(file_.Number());
}

std::string Spool::Named(std::string text) const { return Replaced(std::move(text), path_, source_); }

void CheckCreatable(const std::string& path, bool removable) {
  const std::string target = FollowLinks(path);
  sys::Status status;
  if (!sys::StatusOf(target, status)) throw Error(SystemReason(path, "could not be created"));
  // Opening a device or a pipe may wait, or mean something to whoever reads it.
  if (status.kind == sys::FileKind::Other) return;
  if (sys::Open(target, status.Exists() ? Access::Overwrite : Access::CreateNew)) {
    if (!status.Exists()) sys::Unlink(target);
    return;
  }
  const Error failure(SystemReason(path, "could not be created"));
  std::string beside;
  const bool isFile = status.kind == sys::FileKind::Regular && target == path;
  if (!removable || !isFile || !CreateUnique(path + ".", beside)) throw failure;
  sys::Unlink(beside);
}

void RemoveFile(const std::string& path) noexcept {
  sys::Status status;
  if (sys::StatusOf(path, status, sys::Links::Keep) && status.kind == sys::FileKind::Regular) sys::Unlink(path);
}

void RemoveWritten(const std::string& path) noexcept {
  try {
    RemoveFile(FollowLinks(path));
  } catch (const std::exception&) {  // no memory for a name: the file stays
  }
}

}  // namespace tesselink
