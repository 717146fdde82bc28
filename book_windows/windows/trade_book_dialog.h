// CDlgTradeBook: fills a book's bar: the grid on top, under it one line of totals. It has no rule of its own but where
// things stand.
#pragma once

#include "book_windows/windows/trade_book_grid.h"
#include "toolkit/dialogs/dialog.h"

class CDlgTradeBook : public CQORPDialog {
 public:
  CDlgTradeBook(BookList& list, CTradeBookBar& parentBar);

  // False when a window could not be made.
  bool CreateOn(wxWindow& bar);
  // Writes what of the line has changed since it was last written.
  void ShowSummary(SummaryLine& line);
  void ShowAverages(bool shown);

  CTradeBookGrid* Grid;  // a child window

 private:
  void MakeStrip();
  wxFont SummaryFont() const;
  bool LineFits(const wxFont& font) const;
  wxRect PlaceInStrip(const DialogControl& control) const;
  void PlaceControls();
  void TellUnderPointer(wxWindow& window);
  void TellAllTotals();

  wxWindow* Pointed = nullptr;  // the window of the line that the pointer is over
  wxWindow* Strip = nullptr;    // under the grid, with the controls of the line; a child window
};
