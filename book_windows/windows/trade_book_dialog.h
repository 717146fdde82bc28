// CDlgTradeBook: fills the bar of a book: the grid, and one line of totals below it.
#pragma once

#include "book_windows/windows/trade_book_grid.h"
#include "toolkit/dialogs/dialog.h"

class CDlgTradeBook : public CQORPDialog {
 public:
  CDlgTradeBook(TradeBookScreen& screen, Book& book);

  // False when a window could not be made.
  bool CreateOn(wxWindow& bar);
  // Writes the totals that have changed since they were last written.
  void ShowSummary();
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

  Book& Shown;
  wxWindow* Pointed = nullptr;  // the window of the line that the pointer is over
  wxWindow* Strip = nullptr;    // under the grid, with the controls of the line; a child window
};
