// CQORPGridCtrl: a grid with virtual rows: it asks a callback for each cell that it paints. Columns can be hidden,
// locked, frozen, moved and resized; rows can be selected in ranges; headers show sort marks and priorities.
#pragma once

#include <wx/panel.h>

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "toolkit/dialogs/popups.h"
#include "toolkit/model/cell_colors.h"
#include "toolkit/model/columns_info.h"
#include "toolkit/model/grid_search.h"
#include "toolkit/system/toolkit_export.h"

struct CQORPGridCell {
  std::wstring Text;
  std::optional<ColorRef> Background;  // empty: that of the grid
  std::optional<ColorRef> TextColor;
};

// A block of selected cells; Bottom and Right are included.
struct CQORPGridRange {
  int Top = -1;
  int Left = -1;
  int Bottom = -1;
  int Right = -1;
};

class TOOLKIT_EXPORT CQORPGridCtrl : public wxPanel {
 public:
  // Fills the cell of a row and a column; false leaves it empty. Column -1 stands for the whole row: return true.
  using DisplayCallback = std::function<bool(int row, int column, CQORPGridCell& cell)>;

  CQORPGridCtrl();
  ~CQORPGridCtrl() override;
  // False if the window could not be made.
  virtual bool Create(wxWindow* parent, int id);

  // Changes of the columns info are painted by the next AdjustLayout.
  CQORPGridColumnsInfo& GetColumnsInfo() noexcept;
  const CQORPGridColumnsInfo& GetColumnsInfo() const noexcept;
  // Appends a column; returns -1, without any effect, if the index is not that of the end. Painted by the next
  // AdjustLayout.
  int InsertColumn(int column, const std::wstring& header, int widthPx);
  int GetColumnCount() const { return GetColumnsInfo().GetColumnCount(); }
  std::wstring GetColumnName(int column) const { return GetColumnsInfo().GetColumnName(column); }
  // These repaint at once.
  void SetColumnVisible(int column, bool visible);
  void SetColumnWidth(int column, int widthPx);
  void SetColumnAlign(int column, int align);
  void SetColumnLocked(int column, bool locked);
  bool IsMultipleSort() const noexcept;
  void EnableMultipleSort(bool multiple);
  void RemoveSortColumn(int column);
  bool IsColumnSelected(int column) const { return GetColumnsInfo().IsColumnSelected(column); }
  // Fits the widths of the visible columns to their titles and the visible rows.
  void SizeToFit();
  // The first visible columns do not scroll; 0 or less for none. Locked columns never scroll. In a window that is too
  // narrow, fewer columns are frozen.
  void FreezeColumns(int count);

  void EnableHeader(bool shown);
  bool IsHeaderEnabled() const noexcept;
  void EnableRowHeader(bool shown);
  void EnableGridLines(bool shown);
  void EnableMarkSortedColumn(bool marked);
  void EnableWholeRowSelection(bool whole);
  void EnableAlternateRows(bool alternate);

  void EnableVirtualMode(DisplayCallback display);
  bool IsVirtualMode() const noexcept;
  // Sets the number of rows, of which so many are inserted at firstInserted: current row and selection stay with their
  // rows, and so do the rows in view, unless the first row is in view. All other rows are added or removed at the end.
  void SetVirtualRows(int count, int inserted = 0, int firstInserted = 0);
  int GetVirtualRows() const noexcept;

  // As shown, also of a hidden column; empty for a row or column that there is not.
  std::wstring GetCellText(int row, int column) const;

  // The current row; -1 for none.
  int GetCurSel() const;
  // Selects only this row, makes it current and scrolls to it; -1 clears the selection. The first visible column
  // becomes current if none is.
  void SetCurSel(int row);
  void SelectAll();
  // The ranges of selected rows, from top to bottom.
  int GetSelectionCount() const;
  CQORPGridRange GetSelection(int index) const;
  int GetFirstVisibleRow() const;

  // The filter bar has a field under each header; an empty field shows the prompt. A hidden bar keeps its texts.
  void EnableFilterBar(bool shown, const std::wstring& prompt = L"<all>");
  bool IsFilterBarEnabled() const noexcept;
  // The text as typed; setting it has the effect of typing it.
  std::wstring GetFilterText(int column) const;
  void SetFilterText(int column, const std::wstring& text);
  // Scrolls to the field and sets the caret in it; false for a hidden column or bar.
  bool EditFilter(int column);

  // Shows the bar at the bottom in which a text to find is typed, and edits its text. F3 does this too.
  void OpenFind();
  // The field of that bar and what the bar tells; null and empty while it is closed.
  wxWindow* GetFindEdit() const;
  std::wstring GetFindMessage() const;
  // A text is being looked for, in slices between other events.
  bool IsSearching() const noexcept;
  // The cell that was found last.
  GridCellPlace GetFoundCell() const;
  // The rows were replaced or sorted: a search that is going on begins again.
  void OnRowsReplaced();

  // True if there are rows to copy.
  bool IsCopyEnabled() const { return GetVirtualRows() > 0; }
  // Copies the selected rows, or all rows without a selection, with the visible columns in display order, to the
  // clipboard as text and HTML. False if the clipboard is not available.
  bool Copy();
  // The same as HTML only, with a row of titles.
  bool CopyHTML();

  // Runs the command of the context menu that has these texts, from the outermost menu down, as shown and without &.
  // False if there is no such command or it is disabled.
  bool RunContextMenu(const std::vector<std::wstring>& texts);

  // Updates columns, header and frozen part, and repaints.
  void AdjustLayout();
  void ReposItems() { AdjustLayout(); }
  // Repaints the rows at the next paint event.
  void RedrawRows();
  // The same for one row; a no-op for a row out of view.
  void RedrawRow(int row);
  // Sets the name that screen readers say; call Create before.
  void NameForReaders(const std::wstring& name);
  // Font of rows and header.
  void SetGridFont(const wxFont& font);
  wxFont GetGridFont() const;

  // Why there are no rows, painted in the middle of a grid without any; empty for nothing. Changes are painted by
  // RedrawRows and AdjustLayout.
  virtual std::wstring EmptyText() const { return {}; }
  // A field of the filter bar was edited; the text is as typed.
  virtual void OnFilterBarChanged(int /*column*/, const std::wstring& /*text*/) {}
  // Clears all fields, without OnFilterBarChanged.
  virtual void OnFilterBarClearAll();
  // The least width of a column, in pixels.
  virtual int OnGetColumnMinWidth(int column) const;
  // Finds a text in these columns, which are in display order; a derived grid may know a faster way than to make the
  // text of each cell. The finder is used while the grid lives.
  virtual std::unique_ptr<GridFinder> MakeFinder(const std::wstring& text, const std::vector<int>& columns) const;
  // What the selected rows come to, in one line; empty for nothing to tell. Cheap if nothing has changed.
  virtual std::wstring SelectionText() { return {}; }
  // The menu of RunContextMenu and OnShowContextMenu. Commands and their updates are menu events of the grid.
  virtual std::span<const CQORPMenuItem> ContextMenu() const { return {}; }
  // A header was clicked; the derived grid changes sort and column state.
  virtual void ToggleSortColumn(int /*column*/) {}
  // A right click or the menu key; a point of the screen.
  virtual void OnShowContextMenu(const wxPoint& /*point*/) {}
  // The grid got the focus.
  virtual void OnGridFocus() {}
  // A key before any other handler gets it; true consumes it.
  virtual bool PreTranslateMessage(wxKeyEvent& /*event*/) { return false; }
  // Called before rows are read or searched aside from painting: the derived grid calls SetVirtualRows if rows have
  // come since its last call.
  virtual void FollowNewRows() {}
  // The user moved, resized or locked columns.
  virtual void OnColumnsChanged() {}

  // The rectangle of the text of a cell, initially the cell; the derived grid may change it.
  virtual void OnDrawValue(wxRect& /*rect*/) const {}

  // For tests: the window of the column that gets mouse and keys; without a column that of the scrolled part.
  wxWindow* GetRowsWindow(int column = -1) const;
  wxWindow* GetHeaderWindow(int column = -1) const;
  // Places of a cell, a header and a field of the filter bar within those windows; empty when not in view.
  wxRect CellRect(int row, int column) const;
  wxRect HeaderRect(int column) const;
  wxRect FilterRect(int column) const;
  // The field that has the caret; null while none has.
  wxWindow* GetFilterEdit() const;

 private:
  class Impl;
  std::unique_ptr<Impl> Parts;
};
