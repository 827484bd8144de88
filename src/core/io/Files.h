// SPDX-License-Identifier: MIT
// Files as the filters use them: positional binary reads, lines, buffered text output, temporary files. Every failure
// is an Error that names the file and the system's reason.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/io/Numbers.h"
#include "core/io/System.h"

namespace tesselink {

/// A file open for binary reading: a regular one at any position, or a pipe from its beginning to its end.
class BinaryFile {
 public:
  BinaryFile() = default;
  /// Opens a file. Throws Error when it cannot be opened or is no regular file.
  explicit BinaryFile(const std::string& path);
  /// Takes over a regular file that is open for reading.
  BinaryFile(sys::Descriptor file, std::string path);
  /// Takes over a pipe, or whatever has no positions; its size is what has been read of it.
  static BinaryFile Pipe(sys::Descriptor file, std::string path);

  bool IsOpen() const { return static_cast<bool>(file_); }
  bool IsPipe() const { return isPipe_; }
  const std::string& Path() const { return path_; }
  /// Length in bytes when it was opened.
  std::int64_t Size() const { return size_; }
  /// The system's handle; 0 while no file is open.
  int Number() const { return IsOpen() ? file_.Number() : 0; }
  /// Reads up to `count` bytes from a position counted from 0 and returns how many there were; of a pipe, those behind
  /// the ones read before. Throws Error when the read fails, and when the file has become shorter.
  std::size_t ReadAt(std::int64_t offset, void* into, std::size_t count);
  void Close() { *this = BinaryFile(); }

 private:
  sys::Descriptor file_;
  std::string path_;
  std::int64_t size_ = 0;
  bool isPipe_ = false;
};

/// A buffered view of a BinaryFile. It reads ahead while it is used in file order and reads little where positions
/// jump, so that neither a long file nor a shuffled index costs more than its bytes.
class ReadWindow {
 public:
  /// The most bytes that one call of At may ask for.
  static constexpr std::size_t kCapacity = std::size_t{1} << 16;

  explicit ReadWindow(BinaryFile& file) : file_(&file) {}

  /// The bytes from a position on, `count` of them or as many as the file holds; valid until the next call.
  std::span<const std::byte> At(std::int64_t offset, std::size_t count) {
    if (offset < start_ || offset + static_cast<std::int64_t>(count) > start_ + static_cast<std::int64_t>(filled_)) {
      Refill(offset, count);
    }
    const auto begin = static_cast<std::size_t>(offset - start_);
    if (begin >= filled_) return {};
    return {buffer_.get() + begin, count < filled_ - begin ? count : filled_ - begin};
  }

  /// Forgets what was read, for a file that was opened anew.
  void Reset() { filled_ = 0; }

 private:
  void Refill(std::int64_t offset, std::size_t count);

  BinaryFile* file_;
  std::unique_ptr<std::byte[]> buffer_;
  std::int64_t start_ = 0;
  std::size_t filled_ = 0;
  std::size_t ahead_ = 4096;
};

/// The bytes that FindInLineBlock looks at.
inline constexpr std::size_t kLineBlock = 16;

/// Where a byte comes first within a block; kLineBlock when it is not there.
inline std::size_t FindInLineBlock(const char* block, char wanted) {
#if defined(__SSE2__)
  using Bytes = char __attribute__((vector_size(kLineBlock)));
  Bytes bytes;
  std::memcpy(&bytes, block, sizeof bytes);
  // A bit for each byte that is the wanted one.
  const auto found = static_cast<unsigned>(__builtin_ia32_pmovmskb128(Bytes(bytes == Bytes{} + wanted)));
  return static_cast<std::size_t>(std::countr_zero(found | 1U << kLineBlock));
#else
  const void* found = std::memchr(block, wanted, kLineBlock);
  return found == nullptr ? kLineBlock : static_cast<std::size_t>(static_cast<const char*>(found) - block);
#endif
}

/// Reads a text file line by line. A line ends at a line feed, or at a carriage return in a file that has no line
/// feed in its first block; carriage returns before a line feed are dropped. A last line without an end is a line.
class LineReader {
 public:
  /// A longer line ends the reading with an Error: no drawing has one, and memory stays bounded.
  static constexpr std::size_t kLongestLine = std::size_t{6} << 20;

  LineReader() = default;
  /// Opens a file. Throws Error when it cannot be opened or is no regular file.
  explicit LineReader(const std::string& path) : LineReader(BinaryFile(path)) {}
  /// Reads the lines of a file, or of a pipe as they come.
  explicit LineReader(BinaryFile file);

  bool IsOpen() const { return file_.IsOpen(); }
  const std::string& Path() const { return file_.Path(); }
  std::int64_t Size() const { return file_.Size(); }
  int Number() const { return file_.Number(); }
  /// The next line without its end; false when there is none. The view holds until the next call.
  bool ReadLine(std::string_view& line) {
    // Lines of a few bytes are the rule: blocks of them find their end sooner than a call does.
    const char* const begin = buffer_.data() + begin_;
    const std::size_t available = end_ - begin_;
    std::size_t searched = 0;
    for (; searched < kShortLine && searched + kLineBlock <= available; searched += kLineBlock) {
      const std::size_t found = FindInLineBlock(begin + searched, lineEnd_);
      if (found == kLineBlock) continue;
      TakeLine(line, searched + found);
      return true;
    }
    return ReadLongLine(line, searched);
  }
  /// The bytes from the next line on of which there are at least `count` in memory; null where there are fewer. For
  /// callers that know lines by their bytes and take them with PassLine.
  const char* Ahead(std::size_t count) const {
    return end_ - begin_ >= count && lineEnd_ == '\n' ? buffer_.data() + begin_ : nullptr;
  }
  /// Takes a line that was looked at, by its length with the line feed at its end.
  void PassLine(std::size_t length) {
    begin_ += length;
    ++lineNumber_;
  }
  /// Whether every byte of the file has been consumed. Of a pipe this may read on, and the line read last is gone.
  bool AtEnd() const { return Position() >= file_.Size() && !(file_.IsPipe() && FillMore()); }
  /// Bytes consumed so far.
  std::int64_t Position() const { return bufferStart_ + static_cast<std::int64_t>(begin_); }
  /// Goes on behind a line that was read before, by what Position and LineNumber were then; not of a pipe.
  void GoTo(std::int64_t position, std::int64_t lineNumber);
  /// The number of the line last read, from 1.
  std::int64_t LineNumber() const { return lineNumber_; }

 private:
  static constexpr std::size_t kShortLine = 32;

  // The first `length` bytes of what is buffered, up to a line end behind them.
  void TakeLine(std::string_view& line, std::size_t length) {
    const char* const begin = buffer_.data() + begin_;
    begin_ += length + 1;
    ++lineNumber_;
    while (length > 0 && begin[length - 1] == '\r') --length;
    line = std::string_view(begin, length);
  }
  bool ReadLongLine(std::string_view& line, std::size_t searched);
  bool FillMore() const;
  [[noreturn]] void ThrowTooLong() const;

  mutable BinaryFile file_;
  mutable std::vector<char> buffer_;
  mutable std::size_t begin_ = 0, end_ = 0;
  mutable std::int64_t bufferStart_ = 0;
  std::int64_t lineNumber_ = 0;
  char lineEnd_ = '\n';
};

/// Buffered output of text, whose lines end with carriage return and line feed, or of bytes. A failed write throws
/// Error at once or, at the latest, from Close.
class FileWriter {
 public:
  FileWriter() = default;
  /// Creates a file, replacing an existing one.
  explicit FileWriter(const std::string& path);
  /// Takes over a file that is open for writing.
  FileWriter(sys::Descriptor file, std::string path);
  /// A file in the system's temporary folder, made with a prefix but without a name that stays, to be read back.
  static FileWriter Nameless(std::string_view prefix);
  FileWriter(FileWriter&&) = default;
  FileWriter& operator=(FileWriter&&) = default;

  bool IsOpen() const { return static_cast<bool>(file_); }
  const std::string& Path() const { return path_; }

  FileWriter& Write(std::string_view text) {
    if (text.size() > kBufferSize - used_) return WriteLong(text);
    used_ += text.copy(buffer_.get() + used_, text.size());
    return *this;
  }
  FileWriter& Number(double value) {
    used_ += static_cast<std::size_t>(FormatNumber(Room(), value) - (buffer_.get() + used_));
    return *this;
  }
  FileWriter& Single(float value) {
    used_ += static_cast<std::size_t>(FormatSingle(Room(), value) - (buffer_.get() + used_));
    return *this;
  }
  FileWriter& Integer(std::int64_t value) {
    used_ += static_cast<std::size_t>(FormatInteger(Room(), value) - (buffer_.get() + used_));
    return *this;
  }
  FileWriter& EndLine() { return Write("\r\n"); }
  FileWriter& Line(std::string_view text) { return Write(text).EndLine(); }

  /// Appends the bytes of a whole file.
  void Append(const std::string& path);
  void Append(BinaryFile& source);
  /// Replaces the byte written last.
  void ReplaceLast(char byte) {
    if (used_ > 0) {
      buffer_[used_ - 1] = byte;
    } else {
      Overwrite(Size() - 1, {&byte, 1});
    }
  }
  /// Replaces bytes that were written before; what follows is appended as before.
  void Overwrite(std::int64_t offset, std::string_view bytes);
  /// Bytes written so far, those of the buffer included.
  std::int64_t Size() const { return written_ + static_cast<std::int64_t>(used_); }
  /// Writes out what is buffered and closes the file.
  void Close();
  /// Ends the writing of a nameless file and gives what was written, for reading.
  BinaryFile ReadBack();
  /// Closes the file without writing out what is buffered.
  void Discard() { *this = FileWriter(); }

 private:
  static constexpr std::size_t kBufferSize = std::size_t{1} << 17;

  char* Room() {
    if (kNumberTextSize > kBufferSize - used_) Flush();
    return buffer_.get() + used_;
  }
  FileWriter& WriteLong(std::string_view text);
  void WriteOut(const char* bytes, std::size_t count);
  void Flush();

  sys::Descriptor file_;
  std::string path_;
  std::unique_ptr<char[]> buffer_;
  std::size_t used_ = 0;
  std::int64_t written_ = 0;  // bytes that have left the buffer
};

/// A fresh, empty file in the system's temporary folder, readable by its owner alone, that is deleted with the object:
/// for what is opened again by name. Files of the same prefix that killed programs have left are deleted with it.
class TempFile {
 public:
  TempFile() = default;
  /// Creates the file; its name begins with the prefix. Throws Error when the folder does not take one.
  explicit TempFile(std::string_view prefix);
  TempFile(TempFile&& other) noexcept : path_(std::exchange(other.path_, {})), file_(std::move(other.file_)) {}
  TempFile& operator=(TempFile&& other) noexcept;
  ~TempFile() { Delete(); }

  const std::string& Path() const { return path_; }
  /// The file open for writing, from where the last one to write has left it.
  sys::Descriptor TakeHandle();
  /// Lets the file live on, under the name that is returned.
  std::string Keep();

 private:
  void Delete();

  std::string path_;
  sys::Descriptor file_;  // holds the lock that tells this file from an abandoned one
};

/// What comes through a pipe or from standard input, copied into a file without a name, for those who read it twice or
/// at any position.
class Spool {
 public:
  /// Copies until the end of a pipe, or of standard input, whose path is "-". `eachBlock` is called now and then and
  /// may throw to end it.
  explicit Spool(const std::string& path, const std::function<void()>& eachBlock = {});

  /// Opens the copy by name, as long as the object lives.
  const std::string& Path() const { return path_; }
  std::int64_t Size() const { return file_.Size(); }
  BinaryFile& File() { return file_; }
  /// The text with the name of the source in place of the copy's path.
  std::string Named(std::string text) const;

 private:
  std::string source_, path_;
  BinaryFile file_;
};

/// The name of a fresh, empty file in the system's temporary folder.
std::string TempFileName(std::string_view prefix);
/// The system's temporary folder. Throws Error when there is none.
std::string TempFolder();
/// Letters and digits that nobody guesses, for the name of a file.
std::string RandomLetters(std::size_t count);
/// The path with links of its last name followed, as far as they lead; that file need not exist. The system's names of
/// open files, as behind "/dev/stdout", are not followed.
std::string FollowLinks(const std::string& path);
/// Finds out whether a file could be created under a path, and leaves what is there as it is. Throws Error when it
/// could not. `removable`: an old file may be removed first, which takes no right to write into it.
void CheckCreatable(const std::string& path, bool removable);
/// Deletes a file; a device or a pipe, and a link, is left where it is. Whether it was deleted does not matter.
void RemoveFile(const std::string& path) noexcept;
/// Deletes what was written under a name, through a link too, so that nothing half-written looks whole.
void RemoveWritten(const std::string& path) noexcept;
/// "path: what: reason", the reason being the system's for the last failed call.
std::string SystemReason(const std::string& path, std::string_view what);

/// Replaces one text by another wherever it occurs.
std::string Replaced(std::string text, std::string_view from, std::string_view to);

}  // namespace tesselink
