// CDlgTradeBook: fills a book's bar: the grid on top, under it one line of totals. It has no rule of its own but where
// things stand. Used on the terminal's calling thread only.
#pragma once

#include <wx/stopwatch.h>

#include "book_windows/trade_book_grid.h"
#include "toolkit/dialog.h"
#include "toolkit/progress_bar.h"

class CDlgTradeBook : public CQORPDialog {
 public:
  CDlgTradeBook(BookList& list, CTradeBookBar& parentBar);

  // False when a window could not be made.
  bool CreateOn(wxWindow& bar);
  // Writes what of the line has changed since it was last written.
  void ShowSummary(SummaryLine& line);
  void ShowAverages(bool shown);
  // In place of the line of totals, until it is told of none.
  void ShowProgress(std::size_t rowsDone, std::size_t rowsInAll);
  void HideProgress();

  CTradeBookGrid* Grid;  // a child window

 private:
  void SetSummaryFont();
  void PlaceGrid();
  wxRect SummaryPlace() const;

  CQORPProgressBar* Progress = nullptr;  // a child window
};

// Shows the progress of an export in a book while it lives, once it has taken a moment.
class ProgressShown {
 public:
  explicit ProgressShown(CDlgTradeBook& dialog) : Dialog(dialog) {}
  ~ProgressShown() { Dialog.HideProgress(); }
  ProgressShown(const ProgressShown&) = delete;
  ProgressShown& operator=(const ProgressShown&) = delete;

  void Tell(std::size_t rowsDone, std::size_t rowsInAll) const {
    if (Begun.Time() >= kShownAfterMs) Dialog.ShowProgress(rowsDone, rowsInAll);
  }

 private:
  static constexpr long kShownAfterMs = 250;
  CDlgTradeBook& Dialog;
  wxStopWatch Begun;
};
