// CMarketWatchBar: the bar that holds the market watch. Not its rows: terminal/market_watch.h. The main thread only.
#pragma once

#include "terminal/windows/market_watch_grid.h"
#include "terminal/windows/terminal_bar.h"

class CMarketWatchBar : public CTerminalBar {
 public:
  CMarketWatchBar() : CTerminalBar(L"MarketWatchBar") {}
  // False when no window could be made.
  bool Create(CQORPDockingManager& manager, std::uint32_t id, MarketWatch& rows, std::function<void()> opened);
  CMarketWatchGrid& Grid() const noexcept { return *Rows; }

  // Places of the bar and of its columns.
  void Save(WindowMemory& memory) override;
  void Restore(WindowMemory& memory) override;

  void OnBarFocus() override;

 private:
  void PlaceFirst() override;  // a tab

  CMarketWatchGrid* Rows = nullptr;  // a child window
};
