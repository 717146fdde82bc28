// The settings of books as the process's store keeps them: one group for all books, which a new book takes over and
// each change and each close of a book writes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "grid_base/settings/grid_font.h"
#include "toolkit/model/cell_colors.h"

struct PluginState;

// What a new grid has, where nothing is stored.
struct GridSettings {
  std::optional<GridFont> Font;  // to be written the grid's current one; nothing where none is stored
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

// Both put the two switches that all books share into the plug-in's state, or take them from it. Reading is false, and
// changes nothing, where there is no such key.
bool ReadGridSettings(const std::wstring& key, GridSettings& settings, PluginState& state);
void WriteGridSettings(const std::wstring& key, const GridSettings& settings, const PluginState& state);
