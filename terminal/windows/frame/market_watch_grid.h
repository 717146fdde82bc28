// The grid of the market watch.
#pragma once

#include <functional>

#include "terminal/watch/market_watch.h"
#include "terminal/windows/frame/list_grid.h"

// Of a text on the background of windows. Requires: the trend is not None.
ColorRef TrendColor(Trend trend);

// Shows the rows of a MarketWatch in the colours of their changes.
class MarketWatchGrid : public ListGrid {
 public:
  // The rows must outlive the grid; a double click or Enter on a row calls opened.
  MarketWatchGrid(MarketWatch& rows, std::function<void()> opened);
  bool Create(wxWindow* parent, int id) override;

  // The current row; null for none.
  const WatchRow* Selected() const;
  // The first row with that id; clears the filter if that hides it.
  bool Select(const std::string& securityId);

 private:
  void Dress(ListRow row, std::size_t column, CQORPGridCell& cell) const override;

  MarketWatch& Watch;
};
