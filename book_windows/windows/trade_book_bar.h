// CTradeBookBar: the docking bar that a book lives in, and what the trade cache sees of the book. It holds one dialog
// and answers for closing.
#pragma once

#include <string>

#include "book_windows/windows/trade_book_dialog.h"
#include "toolkit/bars/docking_control_bar.h"
#include "trade_data/cache/trade_cache.h"

// CVELDSDockingControlBar: the base of the plug-ins' bars, whose place is kept under the bar's own key, and
// CVELDMDIChildWnd: the frame that such a bar stands in as a tab.
class CVELDMDIChildWnd : public CQORPMDIChildWnd {
 public:
  // The focus passes to the bar that it holds.
  explicit CVELDMDIChildWnd(wxWindow* parent);
};

class CVELDSDockingControlBar : public CQORPDockingControlBar {
 public:
  // Under ProfileKey, whatever section and index the caller names.
  bool LoadState(CQORPRegistry& settings, const std::wstring& section, int index, std::uint32_t id) override;
  bool SaveState(CQORPRegistry& settings, const std::wstring& section, int index, std::uint32_t id) override;
  CQORPMDIChildWnd* CreateTabbedFrame(wxWindow* parent) override { return new CVELDMDIChildWnd(parent); }

  std::string ProfileKey;  // the book's key
};

class BookList;

class CTradeBookBar : public CVELDSDockingControlBar, public TradeBook {
 public:
  CTradeBookBar(BookList& list, std::string bookName);
  // A bar that goes with its frame leaves the list of books first.
  ~CTradeBookBar() override;

  // False when a window could not be made.
  bool CreateBook(CQORPDockingManager& manager, const wxRect& rect, std::uint32_t id);

  CTradeBookGrid* Grid() const noexcept { return Dialog == nullptr ? nullptr : Dialog->Grid; }
  const std::string& Name() const noexcept { return BookName; }
  // Rows, key, title and average controls follow the state of the grid's book.
  void FollowState();
  // Rows, totals and screen: at the beat, when rows have only come in and totals have followed, and after rows were
  // replaced.
  void RefreshBook(bool replaced);
  void ShowSummary();

  // The close by Escape: only of a floating bar.
  void CloseByEscape();
  void NarrowToFilter();

  void OnPressCloseButton() override;
  int OnTabCloseButton() override;
  bool PreTranslateMessage(wxKeyEvent& event) override;
  void OnBarFocus() override;

  bool HasGrid() const override { return Grid() != nullptr; }
  bool HasWindow() const override { return Grid() != nullptr; }
  bool FilterActive() const override { return HasGrid() && Grid()->Rows.Filters.Active(); }
  void MakeRoom(std::size_t rows) override {
    if (HasGrid()) Grid()->Rows.MakeRoom(rows);
  }
  bool AdmitRow(TradeRecord& record) override { return HasGrid() && Grid()->Rows.AdmitRow(record); }
  void UpdateTotals(const TradeRecord& record) override { Grid()->AddToTotals(record); }
  void RefilterRow(TradeRecord& record) override { Grid()->Rows.RefilterRow(record); }
  void CopyAllRows(const TradeNumberMap& trades, std::int32_t nextTradeNumber) override {
    Grid()->Rows.CopyAllRows(trades, nextTradeNumber);
  }
  void ClearRows() override { Grid()->Rows.ClearRows(); }

  CDlgTradeBook* Dialog = nullptr;  // a child window

 private:
  void PlaceDialog();
  void DrawFrame();

  BookList& List;
  std::string BookName;
};
