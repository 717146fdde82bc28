// PluginState: the plug-in's one global object: the trade cache, the books, what is the same for all of them. Made when
// the module is loaded and destroyed when it is unloaded.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "book_windows/model/book_windows.h"
#include "grid_ops/columns/filter_key.h"
#include "grid_ops/exports/csv_export.h"
#include "host_link/host_functions/function_table.h"
#include "trade_data/cache/trade_cache.h"

class CQORPProp;

// The items that a property list was last filled with, by their ids. For comparing: they belong to the list.
using PropertyItems = std::vector<const CQORPProp*>;

struct PluginState {
  explicit PluginState(CQORTradeImpl& decoder);

  std::filesystem::path WorkingFolder;  // the process's current folder at load
  TradeBooks BooksByKey;
  TradeCache TradeStore;
  BookWindows* Windows = nullptr;

  FilterKey SelectedKey{};  // the last answer to the question what is selected in another window
  FilterKey RestoredKey{};  // the security of the book that was last brought back
  SecurityMasterData SelectedMaster;

  std::uint32_t LastNum = 0;             // of the newest book
  bool MultipleTradeBookDisable = true;  // many books are allowed while it is set: meant so
  std::uint32_t WarnCount = 0;           // of warnings that other books are open, since it was last set
  PropertyItems Properties;

  ExportFolders Exports;       // what the save dialogs start from
  std::string SavedTradePath;  // as config.ini has it, where this process has written it

  // Two values of message 30026 that nothing reads.
  std::uint32_t RestoreNumber = 0;
  std::uint64_t RestoreAddress = 0;
};
