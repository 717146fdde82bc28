// The font of a grid as settings store it: a block of 92 bytes, the same on both platforms.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "grid_base/settings/registry.h"

// The block, little-endian, in stored order.
struct GridFont {
  std::int32_t Height = 0;  // in pixels; negative: of the characters without the space above them
  std::int32_t Width = 0;
  std::int32_t Escapement = 0;  // tenths of a degree, as Orientation
  std::int32_t Orientation = 0;
  std::int32_t Weight = 0;  // 400 normal, 700 bold
  std::uint8_t Italic = 0;
  std::uint8_t Underline = 0;
  std::uint8_t StrikeOut = 0;
  std::uint8_t CharSet = 0;
  std::uint8_t OutPrecision = 0;
  std::uint8_t ClipPrecision = 0;
  std::uint8_t Quality = 0;
  std::uint8_t PitchAndFamily = 0;
  char16_t FaceName[32] = {};  // ends with a NUL
};
static_assert(sizeof(GridFont) == 92);

// Nothing if there are too few bytes for a font; more bytes are ignored.
std::optional<GridFont> FontFromBytes(std::span<const std::uint8_t> bytes);
bool WriteFont(CQORPRegistry& settings, const GridFont& font);

// Cuts a name that is too long for the block.
void SetFaceName(GridFont& font, std::wstring_view name);

// The font stored as "Font" in the section; nothing if the section has no font. Without the section, the current font
// in bold "MS Sans Serif". The second form reads the process's store.
std::optional<GridFont> LoadGridFont(CQORPRegistry& settings, const std::wstring& section, GridFont currentFont);
std::optional<GridFont> LoadGridFont(const std::wstring& section, const GridFont& currentFont);
