// How many bytes a field's value takes, which follows from its tag alone. Not the decoding of values: that is
// CQORPacketReader. Pure; any thread.
#pragma once

#include <cstdint>

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
