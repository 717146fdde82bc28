// The ten bytes that open every message, and the numbers of the format.
//
//   message := 0x23 u16 1 u16 mode 0x23 u16 10001 u16 length body[length]
//   body    := field*            (mode 0; compressed in mode 1, enciphered in mode 2)
//   field   := 0x23 u16 tag value
//
// All words are little-endian, nothing is aligned. The first field of every body is tag 10002, the message number.
// The header is matched whole and never walked as fields. Pure; any thread.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

static_assert(std::endian::native == std::endian::little, "values are copied to and from the wire as they stand");

inline constexpr std::uint8_t kFieldMark = 0x23;
inline constexpr std::uint16_t kProtocolWord = 1;
inline constexpr std::uint16_t kLengthTag = 10001;
inline constexpr std::uint16_t kHeaderSize = 10;
inline constexpr std::uint16_t kProtocolOffset = 1;
inline constexpr std::uint16_t kModeOffset = 3;
inline constexpr std::uint16_t kSecondMarkOffset = 5;
inline constexpr std::uint16_t kLengthTagOffset = 6;
inline constexpr std::uint16_t kLengthOffset = 8;

inline constexpr std::uint16_t kModePlain = 0;
inline constexpr std::uint16_t kModeCompressed = 1;
inline constexpr std::uint16_t kModeEnciphered = 2;
inline constexpr std::uint16_t kModeEncipheredByReader = 100;

// An unaligned little-endian value at a place in a message.
template <typename Value>
Value LoadValue(const std::uint8_t* place) noexcept {
  Value value;
  std::memcpy(&value, place, sizeof value);
  return value;
}

template <typename Value>
void StoreValue(std::uint8_t* place, Value value) noexcept {
  std::memcpy(place, &value, sizeof value);
}
