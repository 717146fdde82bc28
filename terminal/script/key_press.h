// KeyPress: a key with its held keys, by name and by virtual-key code, in which plug-ins name the key of their menu
// entry.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct KeyPress {
  std::uint8_t Code = 0;  // 0: no key
  bool Ctrl = false;
  bool Shift = false;
  bool Alt = false;
  bool operator==(const KeyPress&) const = default;
};

// "F8", "Ctrl+Shift+End", "a": names in any case, held keys first; nothing for other texts.
std::optional<KeyPress> ParseKeyPress(std::string_view text);
// As menus show it; empty for a code without a name.
std::string KeyPressText(const KeyPress& key);
