// PluginState: the plug-in's one global object: trade cache, books by key, and what all books share. Lives from load to
// unload of the module.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "grid_ops/exports/csv_export.h"
#include "grid_ops/rows/column_filter.h"
#include "host_link/host_functions/function_table.h"
#include "trade_data/cache/trade_cache.h"

class CQORPProp;

// The items of the last filled property list, by id. Only for comparison: the list owns them.
using PropertyItems = std::vector<const CQORPProp*>;

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
