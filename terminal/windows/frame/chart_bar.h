// ChartBar: the bar of the chart. At first it is hidden, at the right.
#pragma once

#include <functional>

#include "terminal/windows/frame/chart_view.h"
#include "terminal/windows/frame/terminal_bars.h"

class ChartBar : public TerminalBar {
 public:
  ChartBar() : TerminalBar(L"ChartBar") {}
  // False when no window could be made. selectedRows shows the times of the rows that are selected in a book.
  bool Create(CQORPDockingManager& manager, std::uint32_t id, const TradeLedger& trades,
              std::function<void()> selectedRows);
  ChartView& View() const noexcept { return *Picture; }
  // Call on the beat; a hidden bar costs nothing.
  void ShowChanges();

  void OnBarFocus() override;

 private:
  void PlaceFirst() override;

  ChartView* Picture = nullptr;  // a child window
};
