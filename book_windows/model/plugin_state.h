// What all books share: PluginState, the plug-in's one global object, and the stored GridSettings.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "grid_base/settings/registry_store.h"
#include "grid_ops/exports/csv_export.h"
#include "grid_ops/rows/column_filter.h"
#include "host_link/host_functions/function_table.h"
#include "toolkit/model/cell_colors.h"
#include "trade_data/cache/trade_cache.h"

class CQORPProp;

// The items of the last filled property list, by id. Only for comparison: the list owns them.
using PropertyItems = std::vector<const CQORPProp*>;

// Trade cache, books by key, and what else all books share. Lives from load to unload of the module.
struct PluginState {
  explicit PluginState(CQORTradeImpl& decoder);

  std::filesystem::path WorkingFolder;  // the process's current folder at load
  TradeBooks BooksByKey;
  TradeCache TradeStore;

  FilterKey SelectedKey{};  // the last answer to message 32022
  std::string SelectedScriptName;
  FilterKey RestoredKey{};  // of the last restored book
  std::string RestoredScriptName;

  std::uint32_t LastNum = 0;             // of the newest book
  bool MultipleTradeBookDisable = true;  // Intentional: many books are allowed while it is set
  std::uint32_t WarnCount = 0;           // warnings about open books since the switch was last set
  PropertyItems Properties;

  ExportFolders Exports;      // where the save dialogs start
  std::string LastTradePath;  // the folder of key Trade in config.ini, if this process wrote it

  // Of message 30026; nothing reads them.
  std::uint32_t RestoreNumber = 0;
  std::uint64_t RestoreAddress = 0;
};

// Colours, font and switches of a book's grid. All books share one stored group: a new book reads it, each change and
// each close writes it. Defaults are those of a new grid without stored settings.
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
