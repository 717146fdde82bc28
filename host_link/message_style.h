// The plug-in's button and icon codes of message boxes and the style bits that they stand for. Pure; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

// By button code: OK, yes-no, OK-cancel, retry-cancel, abort-retry-ignore, cancel-try-continue, yes-no-cancel, and the
// two custom buttons.
inline constexpr std::uint32_t kCustomButtonsStyle = 256;
inline constexpr std::uint32_t kButtonStyles[] = {0, 4, 1, 5, 2, 6, 3, kCustomButtonsStyle};
inline constexpr std::uint32_t kCustomButtonIds[] = {1000, 1001};

// By icon code: hand, exclamation, question, information, user icon, none, and one of no name.
inline constexpr std::uint32_t kIconStyles[] = {0x10, 0x30, 0x20, 0x40, 0x80, 0, 0x70};

inline constexpr std::uint32_t kRightToLeftStyle = 0x80000;

// The style bits of a box; a code outside its table adds none.
constexpr std::uint32_t MessageStyle(std::uint32_t button, std::uint32_t icon, std::uint32_t extraStyle,
                                     bool rightToLeft) noexcept {
  std::uint32_t style = extraStyle;
  if (button < std::size(kButtonStyles)) style |= kButtonStyles[button];
  if (icon < std::size(kIconStyles)) style |= kIconStyles[icon];
  if (rightToLeft) style |= kRightToLeftStyle;
  return style;
}
