// SPDX-License-Identifier: MIT
// Numbers as shapefiles and dBase tables store them, from bytes of any alignment.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tesselink {

static_assert(std::endian::native == std::endian::little, "the file layouts are read as the machine's own numbers");

template <typename T>
T LittleEndian(const std::byte* bytes) {
  T value;
  std::memcpy(&value, bytes, sizeof value);
  return value;
}

template <typename T>
void PutLittleEndian(char* bytes, T value) {
  std::memcpy(bytes, &value, sizeof value);
}

inline void PutBigEndian32(char* bytes, std::int32_t value) {
  PutLittleEndian(bytes, __builtin_bswap32(static_cast<std::uint32_t>(value)));
}

inline std::int32_t BigEndian32(const std::byte* bytes) {
  return static_cast<std::int32_t>(__builtin_bswap32(LittleEndian<std::uint32_t>(bytes)));
}

}  // namespace tesselink
