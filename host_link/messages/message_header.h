// The ten bytes that open every message, and the numbers of the format.
//
//   message := 0x23 u16 1 u16 mode 0x23 u16 10001 u16 length body[length]
//   body    := field*            (mode 0; compressed in mode 1, enciphered in mode 2)
//   field   := 0x23 u16 tag value
//
// All words are little-endian, nothing is aligned. The first field of every body is tag 10002, the message number.
// The header is matched as a whole, not read as fields.
#pragma once

#include <cstdint>

#include "foundations/byte_words.h"

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

// How many bytes a field's value takes, which follows from its tag alone.

// One range of tags, up to and with its last tag; the range before it ends one below.
struct SkipRule {
  std::uint16_t LastTag;
  std::uint16_t Width;  // bytes of the value; kCountedWidth for a u16 count and that many bytes
};

inline constexpr std::uint16_t kCountedWidth = 0xFFFF;
inline constexpr std::uint16_t kSectionTerminator = 65535;

inline constexpr SkipRule kSkipRules[] = {
    {0, 0},     {10000, 1}, {20000, 2},  {30000, 4}, {35000, 8},
    {40000, 4}, {45000, 8}, {50000, 16}, {55000, 8}, {65000, kCountedWidth},
    {65535, 0},
};

// The width of a tag's value by the table above. Linear in the eleven rows.
constexpr std::uint16_t ValueWidth(std::uint16_t tag) noexcept {
  const SkipRule* rule = kSkipRules;
  while (tag > rule->LastTag) ++rule;
  return rule->Width;
}

namespace skip_rule_checks {
constexpr bool RisesToTheLastTag() {
  for (unsigned i = 1; i < sizeof(kSkipRules) / sizeof(SkipRule); ++i)
    if (kSkipRules[i - 1].LastTag >= kSkipRules[i].LastTag) return false;
  return kSkipRules[sizeof(kSkipRules) / sizeof(SkipRule) - 1].LastTag == 65535;
}
static_assert(RisesToTheLastTag());
}  // namespace skip_rule_checks
