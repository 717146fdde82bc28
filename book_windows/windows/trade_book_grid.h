// CTradeBookGrid: the table of trades in a book. Which trades, in which order and with which totals is BookRows' and
// BookTotals' business; the grid shows it.
#pragma once

#include "book_windows/model/book_state.h"
#include "book_windows/windows/export_commands.h"
#include "book_windows/windows/grid_properties.h"
#include "grid_base/windows/base_grid.h"
#include "grid_ops/rows/book_rows.h"
#include "grid_ops/rows/book_totals.h"

class BookList;
class CTradeBookBar;
class wxDC;
class wxUpdateUIEvent;

class CTradeBookGrid : public CVELDSGridCtrl {
 public:
  CTradeBookGrid(BookList& list, CTradeBookBar& parentBar);

  bool Create(wxWindow* parent, int id) override;

  // Brings count of rows, current row, selection and sort columns in line with the rows; called after every change of
  // them. Where rows have only come in, current row and selection stay with their trades; where they were replaced,
  // with their places.
  void RefreshRows(bool replaced);
  // Current row and selection follow the trades that have come in since the last beat: before what is selected is read.
  void FollowNewRows() { CountRows(false); }
  void RecountTotals();
  // A trade has become a row: totals only, nothing is painted.
  void AddToTotals(const TradeRecord& record);
  // The Exchange and SecurityID cells of the current row; false without one.
  bool SelectedSecurity(std::string& exchange, std::string& securityId);

  // The grid's display callback.
  bool ShowCell(int row, int column, CQORPGridCell& cell) const;

  void ResetColumns() override;
  void SaveColumnProfile() override;
  void RemoveSort() override;
  void ToggleSortColumn(int column) override;
  void OnFilterBarChanged(int column, const std::wstring& text) override;
  void OnFilterBarClearAll() override;
  void PopulateProperties(CQORPPropList& list) override { Properties.PopulateProperties(list); }
  // Every open book takes it over.
  void ApplyProperties(CQORPProp& property) override;
  std::span<const CQORPMenuItem> ContextMenu() const override;
  void OnShowContextMenu(const wxPoint& point) override;
  bool PreTranslateMessage(wxKeyEvent& event) override;
  // Texts stand a little above and to the right of their cells' middle.
  void OnDrawValue(wxRect& rect) const override;

  BookRows Rows;
  BookTotals Totals;
  SummaryLine Line;
  BookState State;
  GridProperties Properties;
  bool ExchangeFormatFlag = false;

 private:
  void BuildColumns();
  void SetStoredFont();
  void TellTerminal();
  void ResortRows();
  void BeginVirtualMode();
  void CountRows(bool replaced);
  AverageBasis Basis() const;
  std::vector<SortState> SortStates() const;
  void DropLostSorts();
  void ShowReplacedRows();

  // The commands of the menu: trade_book_commands.cpp.
  void BindCommands();
  bool CopyGuard();
  void OnCopy();
  void OnCopyHtml();
  void OnSizeToFit();
  std::vector<int> TitleWidths(wxDC& dc) const;
  std::vector<int> WidestCells(wxDC& dc) const;
  void OnProperty();
  void UpdateHtmlCopy(wxUpdateUIEvent& event);
  void UpdateSelectedColumns(wxUpdateUIEvent& event);
  template <int kId>
  void ExportCsv() {
    Exports.ExportCsv(kId);
  }
  void WriteExchangeFiles() { Exports.WriteExchangeFiles(); }
  struct Command;
  static const Command kCommands[];

  BookList& List;
  CTradeBookBar& ParentBar;
  ExportCommands Exports;
};
