// GridSettings: colours, font and switches of a book's grid. All books share one stored group: a new book reads it,
// each change and each close writes it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "grid_base/settings/registry_store.h"
#include "toolkit/model/cell_colors.h"

struct PluginState;

// Defaults are those of a new grid without stored settings.
struct GridSettings {
  std::optional<GridFont> Font;  // nothing if none is stored
  ColorRef BuyColor = 0xFF0000;
  ColorRef SellColor = 0x0000FF;
  ColorRef FontBuyColor = 0xFFFFFF;
  ColorRef FontSellColor = 0xFFFFFF;
  std::int32_t ColumnFreeze = 0;
  bool WholeRowSel = true;
  bool GridLine = true;
  bool HeaderHide = false;
};

inline constexpr const wchar_t* kGridSettingsKey = L"TradeBook";

// Both include the two switches of the plug-in's state. Reading returns false and changes nothing without such a key.
bool ReadGridSettings(const std::wstring& key, GridSettings& settings, PluginState& state);
void WriteGridSettings(const std::wstring& key, const GridSettings& settings, const PluginState& state);
