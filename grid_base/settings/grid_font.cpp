#include "grid_base/settings/grid_font.h"

#include <algorithm>
#include <iterator>

#include "foundations/byte_words.h"
#include "foundations/text_tools.h"
#include "grid_base/settings/registry_store.h"

std::optional<GridFont> FontFromBytes(std::span<const std::uint8_t> bytes) {
  if (bytes.size() < sizeof(GridFont)) return std::nullopt;
  auto font = LoadValue<GridFont>(bytes.data());
  *std::rbegin(font.FaceName) = 0;
  return font;
}

bool WriteFont(CQORPRegistry& settings, const GridFont& font) {
  std::uint8_t bytes[sizeof font];
  StoreValue(bytes, font);
  return settings.Write(L"Font", bytes, sizeof bytes);
}

void SetFaceName(GridFont& font, std::wstring_view name) {
  const std::u16string units = WideToUtf16(name);
  std::fill(std::begin(font.FaceName), std::end(font.FaceName), u'\0');
  std::copy_n(units.begin(), std::min(units.size(), std::size(font.FaceName) - 1), font.FaceName);
}

std::optional<GridFont> LoadGridFont(CQORPRegistry& settings, const std::wstring& section, GridFont currentFont) {
  if (settings.OpenPath(section)) {
    std::vector<std::uint8_t> bytes;
    return settings.Read(L"Font", bytes) ? FontFromBytes(bytes) : std::nullopt;
  }
  SetFaceName(currentFont, L"MS Sans Serif");
  currentFont.Weight = 700;
  return currentFont;
}

std::optional<GridFont> LoadGridFont(const std::wstring& section, const GridFont& currentFont) {
  return LoadGridFont(*CQORPRegistrySP::Create(0, 1), section, currentFont);
}
