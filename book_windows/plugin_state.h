// PluginState: the plug-in's one global object: the trade cache, the books, what is the same for all of them.
// Made when the module is loaded and destroyed when it is unloaded. Used on the terminal's calling thread only.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>

#include "book_windows/book_windows.h"
#include "host_link/function_table.h"
#include "trade_data/trade_cache.h"

// A security on an exchange, compared byte by byte.
struct FilterKey {
  char Exchange[49];
  char SecurityID[49];
};
static_assert(sizeof(FilterKey) == 98);

struct PluginState {
  explicit PluginState(CQORTradeImpl& decoder);

  std::filesystem::path WorkingFolder;  // the process's current folder at load
  TradeBooks BooksByKey;
  TradeCache TradeStore;
  BookWindows* Windows = nullptr;

  FilterKey SelectedKey{};  // the last answer to the question what is selected in another window
  SecurityMasterData SelectedMaster;

  // Two values of message 30026 that nothing reads.
  std::uint32_t RestoreNumber = 0;
  std::uint64_t RestoreAddress = 0;
};
