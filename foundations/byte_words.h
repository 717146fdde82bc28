// Numbers as little-endian bytes at any place: of messages, stored settings and packed records. Alignment does not
// matter.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>

static_assert(std::endian::native == std::endian::little, "values are copied to and from bytes as they are");

template <typename Value>
Value LoadValue(const void* place) noexcept {
  Value value;
  std::memcpy(&value, place, sizeof value);
  return value;
}

template <typename Value>
void StoreValue(void* place, const Value& value) noexcept {
  std::memcpy(place, &value, sizeof value);
}

template <typename Value>
std::string BytesOfValue(const Value& value) {
  return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

// One and the high bit in each of eight bytes.
inline constexpr std::uint64_t kByteOnes = 0x0101010101010101, kByteHighs = 0x8080808080808080;

// The lowest bit that is set is the high bit of the first zero byte; 0 if the word has no zero byte.
constexpr std::uint64_t ZeroBytes(std::uint64_t word) noexcept {
  return (word - kByteOnes) & ~word & kByteHighs;
}
