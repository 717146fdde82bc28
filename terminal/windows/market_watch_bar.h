// CMarketWatchBar: the bar that holds the market watch. Not its rows: terminal/market_watch.h. The main thread only.
#pragma once

#include "terminal/windows/market_watch_grid.h"
#include "toolkit/docking_control_bar.h"

class CMarketWatchBar : public CQORPDockingControlBar {
 public:
  // False when no window could be made.
  bool Create(CQORPDockingManager& manager, std::uint32_t id, MarketWatch& rows, std::function<void()> opened);
  CMarketWatchGrid& Grid() const noexcept { return *Rows; }

  // Places of the bar and of its columns.
  void Save(WindowMemory& memory);
  // As they were, else as a tab with its columns as they are.
  void Restore(WindowMemory& memory);

  void OnBarFocus() override;
  void OnPressCloseButton() override;
  int OnTabCloseButton() override;

  // Called when the user has closed the bar.
  std::function<void()> Closed;

 private:
  CMarketWatchGrid* Rows = nullptr;  // a child window
};
