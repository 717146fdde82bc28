// The grid of the market watch.
#pragma once

#include <functional>

#include "terminal/program/window_memory.h"
#include "terminal/watch/market_watch.h"
#include "toolkit/grid/grid_ctrl.h"

// Shows the rows of a MarketWatch; a click on a header sorts them.
class MarketWatchGrid : public CQORPGridCtrl {
 public:
  // The rows must outlive the grid; a double click or Enter on a row calls opened.
  MarketWatchGrid(MarketWatch& rows, std::function<void()> opened) : Watch(rows), Opened(std::move(opened)) {}
  bool Create(wxWindow* parent, int id) override;

  // Shows changes; call on the beat.
  void ShowChanges();
  // The current row; null for none.
  const WatchRow* Selected() const;
  bool Select(const std::string& securityId);

  WatchPlace GetPlace() const;
  void SetPlace(const WatchPlace& place);

  void ToggleSortColumn(int column) override;
  bool PreTranslateMessage(wxKeyEvent& event) override;

 private:
  void AddColumns();
  bool ShowCell(int row, int column, CQORPGridCell& cell) const;
  void Sort(std::optional<int> column, bool rising);
  // Runs a change of the order of rows; the current row stays with its security.
  template <typename Change>
  void KeepSelected(Change change);

  MarketWatch& Watch;
  std::function<void()> Opened;
};
