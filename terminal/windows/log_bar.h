// CLogBar: the bar that holds the log of messages. Not its rows: log_grid.h. The main thread only.
#pragma once

#include "terminal/windows/log_grid.h"
#include "terminal/windows/terminal_bar.h"

class CLogBar : public CTerminalBar {
 public:
  CLogBar() : CTerminalBar(L"LogBar") {}
  // False when no window could be made.
  bool Create(CQORPDockingManager& manager, std::uint32_t id, CMessageLog& log);
  CLogGrid& Grid() const noexcept { return *Rows; }
  // To be called on the beat; a bar that is not shown costs nothing.
  void ShowChanges();

  void OnBarFocus() override;

 private:
  void PlaceFirst() override;  // at the bottom, hidden

  CLogGrid* Rows = nullptr;  // a child window
};
