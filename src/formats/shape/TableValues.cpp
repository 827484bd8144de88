// SPDX-License-Identifier: MIT
#include "formats/shape/TableValues.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <string_view>

#include "core/io/Paths.h"
#include "formats/shape/Bytes.h"

namespace tesselink {
namespace {

constexpr std::int64_t kDefaultBlock = 512;
constexpr std::byte kEndOfText{0x1A};

template <typename T>
void AppendNumber(std::string& text, T value) {
  std::array<char, 32> digits;
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  if (error == std::errc()) text.append(digits.data(), end);
}

std::int32_t Level7Number(std::span<const std::byte> bytes) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(BigEndian32(bytes.data())) ^ 0x80000000U);
}

// Ten-thousandths as an amount.
void AppendAmount(std::string& text, std::int64_t value) {
  constexpr std::uint64_t kUnit = 10000;
  const bool negative = value < 0;
  const std::uint64_t size = negative ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
  if (negative) text += '-';
  AppendNumber(text, size / kUnit);
  std::string decimals = std::to_string(kUnit + size % kUnit);
  decimals[0] = '.';
  text += decimals;
}

// A Julian day, and milliseconds.
bool AppendTime(std::string& text, std::int32_t day, std::int32_t milliseconds) {
  constexpr std::int32_t kJulianOf1970 = 2440588, kFirst = 1721426, kLast = 5373484, kDay = 86'400'000;
  if (day == 0 && milliseconds == 0) return true;
  if (day < kFirst || day > kLast || milliseconds < 0 || milliseconds > kDay) return false;
  // FoxPro rounds a second down to its last millisecond.
  const std::int32_t seconds = std::min((milliseconds + 1) / 1000, kDay / 1000 - 1);
  const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{day - kJulianOf1970}}};
  std::array<char, 48> written;
  const int length = std::snprintf(written.data(), written.size(), "%04d-%02u-%02uT%02d:%02d:%02d",
                                   static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                                   static_cast<unsigned>(date.day()), seconds / 3600, seconds / 60 % 60, seconds % 60);
  text.append(written.data(), static_cast<std::size_t>(length));
  return true;
}

// Where lines were broken by width, they are no lines.
void RemoveSoftBreaks(std::string& text) {
  constexpr std::string_view kSoft = "\x8D\n";
  std::size_t to = 0;
  for (std::size_t from = 0; from < text.size();) {
    const bool soft = std::string_view(text).substr(from, kSoft.size()) == kSoft;
    if (!soft) text[to++] = text[from];
    from += soft ? kSoft.size() : 1;
  }
  text.resize(to);
}

bool IsBlank(std::span<const std::byte> bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](std::byte b) { return b == std::byte{' '}; });
}

}  // namespace

bool IsBinaryType(char type, std::size_t length, bool isFoxPro) {
  switch (type) {
    case 'I':
    case '+':
      return length == 4;
    case 'B':
      return isFoxPro && length == 8;
    case 'O':
    case 'Y':
    case 'T':
    case '@':
      return length == 8;
    default:
      return false;
  }
}

bool AppendValue(std::string& text, char type, std::span<const std::byte> bytes, bool isLevel7) {
  if (IsBlank(bytes)) return true;
  switch (type) {
    case 'I':
    case '+':
      AppendNumber(text, isLevel7 ? Level7Number(bytes) : LittleEndian<std::int32_t>(bytes.data()));
      return true;
    case 'B':
    case 'O': {
      const auto value = LittleEndian<double>(bytes.data());
      if (!std::isfinite(value)) return false;
      AppendNumber(text, value);
      return true;
    }
    case 'Y':
      AppendAmount(text, LittleEndian<std::int64_t>(bytes.data()));
      return true;
    default:
      return AppendTime(text, LittleEndian<std::int32_t>(bytes.data()), LittleEndian<std::int32_t>(&bytes[4]));
  }
}

bool MemoFile::OpenBeside(const std::string& tablePath) {
  Close();
  std::string path = PartnerFile(tablePath, "FPT");
  isFoxPro_ = !path.empty();
  if (!isFoxPro_) path = PartnerFile(tablePath, "DBT");
  if (path.empty()) return false;
  file_ = BinaryFile(path);
  const auto header = window_.At(0, 24);
  if (header.size() < 24) return true;
  blockSize_ = isFoxPro_ ? std::to_integer<std::int64_t>(header[6]) * 256 + std::to_integer<std::int64_t>(header[7])
                         : LittleEndian<std::uint16_t>(&header[20]);
  // A .dbt of dBase III has whatever there.
  if (blockSize_ == 0 || (!isFoxPro_ && blockSize_ % kDefaultBlock != 0)) blockSize_ = isFoxPro_ ? 1 : kDefaultBlock;
  return true;
}

void MemoFile::Close() {
  file_.Close();
  window_.Reset();
  blockSize_ = kDefaultBlock;
}

MemoFile::Found MemoFile::Read(std::int64_t block, std::string& bytes) {
  constexpr std::int64_t kHead = 8;
  constexpr std::int32_t kText = 1;
  bytes.clear();
  if (block <= 0 || block > file_.Size() / blockSize_) return Found::Nothing;
  const std::int64_t at = block * blockSize_;
  const auto head = window_.At(at, static_cast<std::size_t>(kHead));
  const bool whole = std::ssize(head) == kHead;
  if (isFoxPro_) {
    if (!whole || BigEndian32(head.data()) != kText) return Found::Nothing;
    return ReadCounted(at + kHead, BigEndian32(&head[4]), bytes);
  }
  // dBase IV counts, itself included; III goes on to an end mark.
  if (whole && LittleEndian<std::uint32_t>(head.data()) == 0x0008FFFF) {
    return ReadCounted(at + kHead, LittleEndian<std::int32_t>(&head[4]) - kHead, bytes);
  }
  return head.empty() ? Found::Nothing : ReadToMark(at, bytes);
}

MemoFile::Found MemoFile::ReadCounted(std::int64_t at, std::int64_t length, std::string& bytes) {
  if (length < 0 || length > file_.Size() - at) return Found::Nothing;
  const std::int64_t wanted = std::min(length, kLongest);
  while (std::ssize(bytes) < wanted) {
    const std::int64_t got = std::ssize(bytes);
    const auto piece = window_.At(at + got, std::min(static_cast<std::size_t>(wanted - got), ReadWindow::kCapacity));
    if (piece.empty()) return Found::Cut;
    bytes.append(reinterpret_cast<const char*>(piece.data()), piece.size());
  }
  return wanted < length ? Found::Cut : Found::Whole;
}

MemoFile::Found MemoFile::ReadToMark(std::int64_t at, std::string& bytes) {
  while (std::ssize(bytes) < kLongest) {
    const auto piece = window_.At(at + std::ssize(bytes), static_cast<std::size_t>(kDefaultBlock));
    const auto end = std::find(piece.begin(), piece.end(), kEndOfText);
    bytes.append(reinterpret_cast<const char*>(piece.data()), static_cast<std::size_t>(end - piece.begin()));
    if (end == piece.end() && !piece.empty()) continue;
    RemoveSoftBreaks(bytes);
    return Found::Whole;
  }
  return Found::Cut;
}

}  // namespace tesselink
