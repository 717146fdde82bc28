// CDlgTradeBook: fills the bar of a book: the grid, and one line of totals below it.
#pragma once

#include <span>

#include "book_windows/windows/trade_book_grid.h"
#include "grid_ops/rows/book_totals.h"
#include "toolkit/dialogs/dialog.h"

// Resource 30027: controls and their places in dialog units.
inline constexpr int kBookDialog = 30027;
inline constexpr int kBookDialogWidth = 938, kBookDialogHeight = 32;
// Pixels of four units across and eight units down at 100 %, with the template's font "MS Shell Dlg" 8. The system font
// would make the line wider than a screen.
inline constexpr int kFourUnitsPx = 6, kEightUnitsPx = 13;

inline constexpr int kGridPlace = 30029;
inline constexpr DialogControl kBookDialogControls[] = {
    {kGridPlace, L"", 0, 0, 937, 16}, {30030, LabelOf(SummaryValue::BuyQty), 4, 19, 16, 8},
    {30031, L"", 22, 19, 50, 8},      {30032, LabelOf(SummaryValue::BuyAmt), 80, 19, 31, 8},
    {30033, L"", 112, 19, 105, 8},    {30034, LabelOf(SummaryValue::SellQty), 348, 19, 16, 8},
    {30035, L"", 367, 19, 50, 8},     {30036, LabelOf(SummaryValue::SellAmt), 422, 19, 30, 8},
    {30037, L"", 454, 19, 94, 8},     {30038, LabelOf(SummaryValue::NetQty), 712, 19, 15, 8},
    {30039, L"", 731, 19, 54, 8},     {30040, LabelOf(SummaryValue::NetAmt), 791, 19, 29, 8},
    {30041, L"", 825, 19, 107, 8},    {30042, LabelOf(SummaryValue::BuyAvg), 224, 19, 31, 8},
    {30043, L"", 258, 19, 85, 8},     {30044, LabelOf(SummaryValue::SellAvg), 552, 19, 31, 8},
    {30045, L"", 584, 19, 123, 8},
};
// The controls under the grid.
inline constexpr auto kLineControls = std::span(kBookDialogControls).subspan<1>();
static_assert(kBookDialogControls[0].Id == kGridPlace);

// The control of each total.
struct SummaryControl {
  SummaryValue Value;
  int Id;
};
inline constexpr SummaryControl kSummaryControls[] = {
    {SummaryValue::BuyQty, 30031},  {SummaryValue::BuyAmt, 30033},  {SummaryValue::BuyAvg, 30043},
    {SummaryValue::SellQty, 30035}, {SummaryValue::SellAmt, 30037}, {SummaryValue::SellAvg, 30045},
    {SummaryValue::NetQty, 30039},  {SummaryValue::NetAmt, 30041},
};
// Hidden in books of several securities.
inline constexpr int kAverageControls[] = {30042, 30043, 30044, 30045};

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
