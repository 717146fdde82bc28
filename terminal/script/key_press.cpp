#include "terminal/script/key_press.h"

#include <cctype>

namespace {

struct KeyName {
  const char* Name;
  std::uint8_t Code;
};
// Letters and digits are their own codes and stand for themselves.
constexpr KeyName kKeys[] = {
    {"Backspace", 0x08}, {"Tab", 0x09},    {"Enter", 0x0D},  {"Escape", 0x1B}, {"Space", 0x20}, {"PageUp", 0x21},
    {"PageDown", 0x22},  {"End", 0x23},    {"Home", 0x24},   {"Left", 0x25},   {"Up", 0x26},    {"Right", 0x27},
    {"Down", 0x28},      {"Insert", 0x2D}, {"Delete", 0x2E}, {"Menu", 0x5D},   {"F1", 0x70},    {"F2", 0x71},
    {"F3", 0x72},        {"F4", 0x73},     {"F5", 0x74},     {"F6", 0x75},     {"F7", 0x76},    {"F8", 0x77},
    {"F9", 0x78},        {"F10", 0x79},    {"F11", 0x7A},    {"F12", 0x7B},
};

struct HeldName {
  const char* Name;
  bool KeyPress::*Place;
};
constexpr HeldName kHeld[] = {{"Ctrl", &KeyPress::Ctrl}, {"Shift", &KeyPress::Shift}, {"Alt", &KeyPress::Alt}};

char Upper(char c) {
  return static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
}

bool SameName(std::string_view text, std::string_view name) {
  if (text.size() != name.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i)
    if (Upper(text[i]) != Upper(name[i])) return false;
  return true;
}

bool IsOwnCode(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

std::uint8_t CodeOf(std::string_view name) {
  if (name.size() == 1 && IsOwnCode(Upper(name[0]))) return static_cast<std::uint8_t>(Upper(name[0]));
  for (const KeyName& key : kKeys)
    if (SameName(name, key.Name)) return key.Code;
  return 0;
}

bool TakeHeld(std::string_view name, KeyPress& key) {
  for (const HeldName& held : kHeld) {
    if (!SameName(name, held.Name) || key.*held.Place) continue;
    key.*held.Place = true;
    return true;
  }
  return false;
}

}  // namespace

std::optional<KeyPress> ParseKeyPress(std::string_view text) {
  KeyPress key;
  for (std::size_t plus = text.find('+'); plus != std::string_view::npos; plus = text.find('+')) {
    if (!TakeHeld(text.substr(0, plus), key)) return std::nullopt;
    text.remove_prefix(plus + 1);
  }
  key.Code = CodeOf(text);
  return key.Code == 0 ? std::nullopt : std::optional(key);
}

std::string KeyPressText(const KeyPress& key) {
  std::string name;
  if (IsOwnCode(static_cast<char>(key.Code))) name = static_cast<char>(key.Code);
  for (const KeyName& row : kKeys)
    if (row.Code == key.Code) name = row.Name;
  if (name.empty()) return {};
  std::string text;
  for (const HeldName& held : kHeld)
    if (key.*held.Place) text += std::string(held.Name) + "+";
  return text + name;
}
