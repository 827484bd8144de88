#include "core/io/Files.h"

#include <cerrno>
#include <filesystem>
#include <random>
#include <system_error>

#include "core/io/Errors.h"

namespace tesselink {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kFirstLineBlock = std::size_t{1} << 17;
constexpr std::size_t kCopyBlock = std::size_t{1} << 18;

FileHandle OpenForReading(const std::string& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    throw Error(path + ": is not a regular file; give the path of a file on a disk");
  }
  FileHandle file(std::fopen(path.c_str(), "rb"));
  if (!file) throw Error(SystemReason(path, "could not be opened for reading"));
  std::setvbuf(file.get(), nullptr, _IONBF, 0);
  return file;
}

std::string RandomSuffix() {
  static constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz0123456789";
  std::random_device device;
  std::uniform_int_distribution<std::size_t> pick(0, kLetters.size() - 1);
  std::string suffix(10, ' ');
  for (char& c : suffix) c = kLetters[pick(device)];
  return suffix;
}

// Creates a file that did not exist before; its name is `stem` with random letters behind it.
FileHandle CreateUnique(const std::string& stem, std::string& path) {
  for (int attempt = 0; attempt < 100; ++attempt) {
    path = stem + RandomSuffix();
    FileHandle file(std::fopen(path.c_str(), "wbx"));
    if (file) {
      std::error_code ignored;
      fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write, ignored);
      return file;
    }
    if (errno != EEXIST) break;
  }
  return nullptr;
}

}  // namespace

std::string SystemReason(const std::string& path, std::string_view what) {
  return path + ": " + std::string(what) + ": " + std::generic_category().message(errno);
}

BinaryFile::BinaryFile(const std::string& path) : file_(OpenForReading(path)), path_(path) {
  std::error_code error;
  const std::uintmax_t size = fs::file_size(path, error);
  if (error) throw Error(path + ": could not be read: " + error.message());
  size_ = static_cast<std::int64_t>(size);
}

int BinaryFile::Number() const {
  if (!file_) return 0;
#ifdef _WIN32
  return _fileno(file_.get());
#else
  return fileno(file_.get());
#endif
}

std::size_t BinaryFile::ReadAt(std::int64_t offset, void* into, std::size_t count) {
  if (offset < 0 || offset >= size_) return 0;
  static_assert(sizeof(long) >= sizeof(std::int64_t), "positions beyond 2 GB need a 64-bit seek");
  if (offset != position_ && std::fseek(file_.get(), static_cast<long>(offset), SEEK_SET) != 0) {
    throw Error(SystemReason(path_, "could not be read"));
  }
  const std::size_t got = std::fread(into, 1, count, file_.get());
  position_ = offset + static_cast<std::int64_t>(got);
  if (got < count && std::ferror(file_.get()) != 0) throw Error(SystemReason(path_, "could not be read"));
  return got;
}

void ReadWindow::Refill(std::int64_t offset, std::size_t count) {
  if (!buffer_) buffer_ = std::make_unique_for_overwrite<std::byte[]>(kCapacity);
  const bool inOrder = offset >= start_ && offset <= start_ + static_cast<std::int64_t>(filled_);
  ahead_ = inOrder ? (ahead_ * 4 < kCapacity ? ahead_ * 4 : kCapacity) : 1024;
  const std::size_t wanted = count < ahead_ ? ahead_ : count;
  start_ = offset;
  filled_ = file_->ReadAt(offset, buffer_.get(), wanted < kCapacity ? wanted : kCapacity);
}

LineReader::LineReader(const std::string& path) : file_(path), buffer_(kFirstLineBlock) {
  FillMore();
  std::size_t looked = end_;
  // The line feed that belongs to a block's last byte is the first of the next.
  if (end_ > 0 && buffer_[end_ - 1] == '\r' && FillMore()) ++looked;
  const std::string_view block(buffer_.data(), looked);
  if (block.starts_with("\xEF\xBB\xBF")) begin_ = 3;  // a byte-order mark is no text
  if (block.find('\n') == std::string_view::npos && block.find('\r') != std::string_view::npos) lineEnd_ = '\r';
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
bool LineReader::FillMore() {
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
  if (got == 0 && bufferStart_ + static_cast<std::int64_t>(end_) < file_.Size()) {
    throw Error(Path() + ": became shorter while it was read");
  }
  end_ += got;
  return got > 0;
}

void LineReader::ThrowTooLong() const {
  throw Error(Path() + ", line " + std::to_string(lineNumber_ + 1) + ": is longer than " +
              std::to_string(kLongestLine >> 20) + " MB; this is not a text drawing, or its line ends are missing");
}

FileWriter::FileWriter(const std::string& path) : path_(path) {
  file_.reset(std::fopen(path.c_str(), "wb"));
  if (!file_) throw Error(SystemReason(path, "could not be created"));
  std::setvbuf(file_.get(), nullptr, _IONBF, 0);
  buffer_ = std::make_unique_for_overwrite<char[]>(kBufferSize);
}

FileWriter::FileWriter(FileHandle file, std::string path)
    : file_(std::move(file)), path_(std::move(path)), buffer_(std::make_unique_for_overwrite<char[]>(kBufferSize)) {
  std::setvbuf(file_.get(), nullptr, _IONBF, 0);
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
  if (std::fwrite(bytes, 1, count, file_.get()) != count) throw Error(SystemReason(path_, "could not be written"));
  written_ += static_cast<std::int64_t>(count);
}

void FileWriter::Flush() { WriteOut(buffer_.get(), std::exchange(used_, 0)); }

void FileWriter::Overwrite(std::int64_t offset, std::string_view bytes) {
  Flush();
  if (std::fseek(file_.get(), static_cast<long>(offset), SEEK_SET) != 0 ||
      std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size() ||
      std::fseek(file_.get(), 0, SEEK_END) != 0) {
    throw Error(SystemReason(path_, "could not be written"));
  }
}

void FileWriter::Append(const std::string& path) {
  Flush();
  BinaryFile source(path);
  const auto block = std::make_unique_for_overwrite<char[]>(kCopyBlock);
  std::int64_t copied = 0;
  while (copied < source.Size()) {
    const std::size_t got = source.ReadAt(copied, block.get(), kCopyBlock);
    if (got == 0) throw Error(path + ": became shorter while it was read");
    WriteOut(block.get(), got);
    copied += static_cast<std::int64_t>(got);
  }
}

void FileWriter::Close() {
  if (!file_) return;
  Flush();
  if (std::fclose(file_.release()) != 0) throw Error(SystemReason(path_, "could not be written"));
}

TempFile::TempFile(std::string_view prefix) {
  std::error_code error;
  const fs::path folder = fs::temp_directory_path(error);
  if (error)
    throw Error("The system's temporary folder does not exist: " + error.message() + "; set TMPDIR to one that does");
  file_ = CreateUnique((folder / prefix).string(), path_);
  if (!file_) {
    const Error failure(SystemReason(std::exchange(path_, {}), "a temporary file could not be created") +
                        "; set TMPDIR to a folder with room");
    throw failure;
  }
}

TempFile& TempFile::operator=(TempFile&& other) noexcept {
  if (this != &other) {
    Delete();
    path_ = std::exchange(other.path_, {});
    file_ = std::move(other.file_);
  }
  return *this;
}

std::string TempFile::Keep() {
  file_.reset();
  return std::exchange(path_, {});
}

void TempFile::Delete() {
  file_.reset();
  if (path_.empty()) return;
  std::error_code ignored;
  fs::remove(path_, ignored);
  path_.clear();
}

std::string TempFileName(std::string_view prefix) { return TempFile(prefix).Keep(); }

void MoveFile(const std::string& from, const std::string& to) {
  std::error_code error;
  fs::rename(from, to, error);
  if (!error) return;
  std::string beside;
  FileHandle file = CreateUnique(to + ".", beside);
  if (!file) throw Error(SystemReason(to, "could not be written"));
  file.reset();
  fs::copy_file(from, beside, fs::copy_options::overwrite_existing, error);
  if (!error) fs::rename(beside, to, error);
  std::error_code ignored;
  if (error) {
    fs::remove(beside, ignored);
    throw Error(to + ": could not be written: " + error.message());
  }
  fs::remove(from, ignored);
}

void CheckCreatable(const std::string& path, bool removable) {
  std::error_code ignored;
  const fs::file_status status = fs::status(path, ignored);
  const bool existed = fs::exists(status);
  // Opening a device or a pipe may wait, or mean something to whoever reads it.
  if (existed && !fs::is_regular_file(status) && !fs::is_directory(status)) return;
  if (FileHandle(std::fopen(path.c_str(), "ab"))) {
    if (!existed) RemoveWritten(path);
    return;
  }
  const Error failure(SystemReason(path, "could not be created"));
  std::string beside;
  if (!removable || !fs::is_regular_file(fs::symlink_status(path, ignored)) || !CreateUnique(path + ".", beside)) {
    throw failure;
  }
  fs::remove(beside, ignored);
}

void RemoveFile(const std::string& path) noexcept {
  std::error_code error;
  if (fs::is_regular_file(fs::symlink_status(path, error))) fs::remove(path, error);
}

void RemoveWritten(const std::string& path) noexcept {
  std::error_code error;
  const fs::path target = fs::canonical(path, error);
  if (!error && fs::is_regular_file(target, error)) fs::remove(target, error);
}

}  // namespace tesselink
