// CTradeBookGrid: the grid of a book. It shows the rows of its Book and hands it what the user does: the menu's
// commands, the exports, the properties.
#pragma once

#include <wx/font.h>

#include <filesystem>

#include "book_windows/model/book.h"
#include "grid_base/windows/base_grid.h"
#include "grid_ops/exports/csv_export.h"
#include "grid_ops/exports/exchange_files.h"
#include "grid_ops/rows/selection_totals.h"
#include "toolkit/properties/property_list.h"

class CTradeBookGrid;
class TradeBookScreen;
class wxDC;
class wxUpdateUIEvent;

// The commands of a book that write files, from the save dialog to the report.
class ExportCommands {
 public:
  ExportCommands(TradeBookScreen& screen, CTradeBookGrid& grid) : Screen(screen), Grid(grid) {}

  void ExportCsv(const CsvCommand& command);
  void WriteExchangeFiles();

 private:
  void ExportManually(const CsvCommand& command);
  // Runs the writer under a wait cursor and shows its progress in the book.
  template <typename Write>
  void ShowRunning(Write write);
  // Asks for the file, writes it, reports and remembers the folder.
  template <typename Write>
  void ExportToChosenFile(const CsvCommand& command, Write write);
  void Report(std::wstring_view text) const;
  void RememberFolder(const CsvCommand& command, const std::filesystem::path& proposal,
                      const std::filesystem::path& chosen);
  GridColumns Columns() const;
  std::vector<GridRowRange> Selections() const;
  void WriteCsv(const CsvCommand& command, const std::filesystem::path& path, const ExportProgress& progress);
  TradeFileRun TradeFiles(const GridColumns& columns) const;

  TradeBookScreen& Screen;
  CTradeBookGrid& Grid;
};

// The eleven properties of a book in the terminal's pane, and what a change of each does to the grid.
class GridProperties {
 public:
  GridProperties(TradeBookScreen& screen, Book& book, CTradeBookGrid& grid);

  // Fills the list with the properties of this grid and tells the terminal.
  void PopulateProperties(CQORPPropList& list);
  // Applies an item of the last filled list; any other is ignored.
  void ApplyProperty(const CQORPProp& property);
  // Applies the loaded settings of the book to the grid.
  void ShowSettings();

 private:
  struct Row;
  static const Row kRows[];

  std::unique_ptr<CQORPProp> MakeItem(const Row& row, int id) const;
  // False if the change ends with a warning and is not saved.
  bool TakeValue(const Row& row, const CQORPProp::Value& value);
  bool WarnsOfOpenBooks();
  void FreezeColumns();
  void ShowSwitch(bool GridSettings::*flag);

  TradeBookScreen& Screen;
  Book& Shown;
  GridSettings& Settings;
  CTradeBookGrid& Grid;
};

// The stored block of a font as a font of the window system, and back. A missing face becomes the nearest one.
wxFont WindowFontOf(const GridFont& block);
GridFont FontBlockOf(const wxFont& font);

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
  void FollowNewRows() override { CountRows(false); }
  // Reads the records.
  std::unique_ptr<GridFinder> MakeFinder(const std::wstring& text, const std::vector<int>& columns) const override;
  // The headers take the marks of the book's sort.
  void ShowSort();
  GridFont StoredFont() const;

  // What several selected rows come to: a text for their count and for each side; empty for one row or none. Summed
  // only if rows or selection have changed.
  const std::vector<std::wstring>& SelectionTexts();
  std::wstring SelectionText() override;

  // The display callback.
  bool ShowCell(int row, int column, CQORPGridCell& cell) const;

  std::wstring EmptyText() const override { return std::wstring(Shown.EmptyText()); }
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

  // The last answer of SelectionTexts, and of what it was.
  struct KnownSelection {
    std::vector<RowSpan> Rows;
    bool Replaced = false;  // since then
    std::vector<std::wstring> Texts;
  };

  TradeBookScreen& Screen;
  ExportCommands Exports;
  KnownSelection Known;
};
