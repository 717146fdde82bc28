// KeyPress: a key with what is held down meanwhile, by name and by number. Numbers are the virtual-key codes in which a
// plug-in names the key of its menu entry.
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

// "F8", "Ctrl+Shift+End", "a": names in any case, held keys first. Nothing for any other text.
std::optional<KeyPress> ParseKeyPress(std::string_view text);
// As menus show it; empty for a code without a name.
std::string KeyPressText(const KeyPress& key);
