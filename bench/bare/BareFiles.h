// SPDX-License-Identifier: MIT
// Lines in and numbers out for the bare programs: blocks, and nothing checked.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <charconv>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace bare {

constexpr std::size_t kBlock = std::size_t{1} << 18;

/// The lines of a file, without their ends.
class Lines {
 public:
  explicit Lines(const char* path) : file_(::open(path, O_RDONLY)), buffer_(kBlock) {}
  ~Lines() { ::close(file_); }
  Lines(const Lines&) = delete;
  Lines& operator=(const Lines&) = delete;

  bool Next(std::string_view& line) {
    for (;;) {
      const char* const begin = buffer_.data() + begin_;
      if (const void* found = std::memchr(begin, '\n', end_ - begin_)) {
        auto length = static_cast<std::size_t>(static_cast<const char*>(found) - begin);
        begin_ += length + 1;
        if (length > 0 && begin[length - 1] == '\r') --length;
        line = {begin, length};
        return true;
      }
      std::memmove(buffer_.data(), begin, end_ - begin_);
      end_ -= begin_;
      begin_ = 0;
      const ssize_t got = ::read(file_, buffer_.data() + end_, buffer_.size() - end_);
      if (got <= 0) return false;
      end_ += static_cast<std::size_t>(got);
    }
  }

 private:
  int file_;
  std::vector<char> buffer_;
  std::size_t begin_ = 0, end_ = 0;
};

/// The bytes of a file, from its beginning on.
class Bytes {
 public:
  explicit Bytes(const char* path) : file_(::open(path, O_RDONLY)), buffer_(kBlock) {}
  ~Bytes() { ::close(file_); }
  Bytes(const Bytes&) = delete;
  Bytes& operator=(const Bytes&) = delete;

  /// The next bytes, until the next call; null where the file has fewer.
  const char* Take(std::size_t count) {
    if (end_ - begin_ < count && !Fill(count)) return nullptr;
    begin_ += count;
    return buffer_.data() + begin_ - count;
  }

 private:
  bool Fill(std::size_t count) {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
    if (buffer_.size() < count) buffer_.resize(count);
    while (end_ < count) {
      const ssize_t got = ::read(file_, buffer_.data() + end_, buffer_.size() - end_);
      if (got <= 0) return false;
      end_ += static_cast<std::size_t>(got);
    }
    return true;
  }

  int file_;
  std::vector<char> buffer_;
  std::size_t begin_ = 0, end_ = 0;
};

/// A file that is written in blocks.
class Output {
 public:
  explicit Output(const char* path)
      : file_(::open(path, O_WRONLY | O_CREAT | O_TRUNC, 0644)), buffer_(kBlock + kSlack), at_(buffer_.data()) {}
  ~Output() {
    Flush();
    ::close(file_);
  }
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  Output& Put(std::string_view text) {
    std::memcpy(at_, text.data(), text.size());
    at_ += text.size();
    if (at_ >= buffer_.data() + kBlock) Flush();
    return *this;
  }
  Output& Put(std::size_t number) {
    at_ = std::to_chars(at_, at_ + kSlack, number).ptr;
    return *this;
  }
  /// The text of %.15g. A whole number of thousandths of at most 15 digits is what those digits print.
  Output& Put(double value) {
    const double magnitude = value < 0 ? -value : value;
    const auto thousandths = static_cast<std::uint64_t>(magnitude * 1000 + 0.5);
    if (magnitude < 1e11 && static_cast<double>(thousandths) / 1000 == magnitude) {
      if (value < 0) *at_++ = '-';
      at_ = std::to_chars(at_, at_ + kSlack, thousandths / 1000).ptr;
      if (const auto rest = static_cast<unsigned>(thousandths % 1000)) {
        const char digits[] = {'.', static_cast<char>('0' + rest / 100), static_cast<char>('0' + rest / 10 % 10),
                               static_cast<char>('0' + rest % 10)};
        const std::size_t length = rest % 100 == 0 ? 2 : rest % 10 == 0 ? 3 : 4;
        std::memcpy(at_, digits, sizeof digits);
        at_ += length;
      }
    } else {
      at_ = std::to_chars(at_, at_ + kSlack, value, std::chars_format::general, 15).ptr;
    }
    return *this;
  }
  /// The text of %.7g.
  Output& PutSingle(double value) {
    at_ = std::to_chars(at_, at_ + kSlack, static_cast<float>(value), std::chars_format::general, 7).ptr;
    return *this;
  }
  void Append(const char* path) {
    Flush();
    const int source = ::open(path, O_RDONLY);
    for (ssize_t got = 0; (got = ::read(source, buffer_.data(), kBlock)) > 0;) {
      if (::write(file_, buffer_.data(), static_cast<std::size_t>(got)) != got) break;
    }
    ::close(source);
  }

 private:
  static constexpr std::size_t kSlack = 4096;  // beyond any text that is put at once

  void Flush() {
    const auto count = static_cast<std::size_t>(at_ - buffer_.data());
    if (::write(file_, buffer_.data(), count) != static_cast<ssize_t>(count)) _exit(1);
    at_ = buffer_.data();
  }

  int file_;
  std::vector<char> buffer_;
  char* at_;
};

}  // namespace bare
