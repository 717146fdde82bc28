// CTradeBookGrid: the grid of a book. It shows the rows of its Book and hands it what the user does.
#pragma once

#include "book_windows/model/book.h"
#include "book_windows/windows/export_commands.h"
#include "book_windows/windows/grid_properties.h"
#include "grid_base/windows/base_grid.h"

class TradeBookScreen;
class wxDC;
class wxUpdateUIEvent;

class CTradeBookGrid : public CVELDSGridCtrl {
 public:
  CTradeBookGrid(TradeBookScreen& screen, Book& book);

  bool Create(wxWindow* parent, int id) override;

  // Turns on virtual rows and gives each column's sort state.
  std::vector<int> BeginVirtualMode();
  // Shows the count of rows. New rows keep current row and selection with their trades; replaced ones with their
  // places.
  void RefreshRows(bool replaced);
  // Current row and selection follow the trades that came in since the last refresh: call it before reading them.
  void FollowNewRows() { CountRows(false); }
  // The headers take the marks of the book's sort.
  void ShowSort();
  GridFont StoredFont() const;

  // The display callback.
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
  static std::span<const CQORPMenuItem> GridMenu();
  std::span<const CQORPMenuItem> ContextMenu() const override { return GridMenu(); }
  void OnShowContextMenu(const wxPoint& point) override;
  bool PreTranslateMessage(wxKeyEvent& event) override;
  // Shifts the text of a cell a little up and to the right.
  void OnDrawValue(wxRect& rect) const override;

  Book& Shown;
  GridProperties Properties;
  bool ExchangeFormatFlag = false;

 private:
  void BuildColumns();
  void SetStoredFont();
  void TellTerminal();
  void CountRows(bool replaced);
  std::vector<int> SortMarks() const;

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
  void WriteExchangeFiles() { Exports.WriteExchangeFiles(); }
  struct Command;
  static const Command kCommands[];
  static const Command* FindCommand(int id);

  TradeBookScreen& Screen;
  ExportCommands Exports;
};
