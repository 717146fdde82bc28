// CQORPGridCtrl: a grid with virtual rows: it asks a callback for the cells that it paints and owns none. Columns can
// be hidden, locked, frozen, dragged to another place and resized; rows are selected whole, alone or in ranges; headers
// carry the marks and priorities of a sort.
#pragma once

#include <wx/panel.h>

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "toolkit/dialogs/context_menu.h"
#include "toolkit/model/cell_colors.h"
#include "toolkit/model/columns_info.h"
#include "toolkit/system/toolkit_export.h"

struct CQORPGridCell {
  std::wstring Text;
  std::optional<ColorRef> Background;  // the grid's own where empty
  std::optional<ColorRef> TextColor;
};

// Rows and columns of a selection, both ends included.
struct CQORPGridRange {
  int Top = -1;
  int Left = -1;
  int Bottom = -1;
  int Right = -1;
};

class TOOLKIT_EXPORT CQORPGridCtrl : public wxPanel {
 public:
  // Fills the cell of a row and a column; false leaves it empty. Column -1 asks about the row as a whole, which needs
  // no answer but true.
  using DisplayCallback = std::function<bool(int row, int column, CQORPGridCell& cell)>;

  CQORPGridCtrl();
  ~CQORPGridCtrl() override;
  // False when the window could not be made.
  virtual bool Create(wxWindow* parent, int id);

  // What changes columns through GetColumnsInfo is painted by the next AdjustLayout.
  CQORPGridColumnsInfo& GetColumnsInfo() noexcept;
  const CQORPGridColumnsInfo& GetColumnsInfo() const noexcept;
  // Behind all others; -1 and no column when that is not its index. Shown by the next AdjustLayout.
  int InsertColumn(int column, const std::wstring& header, int widthPx);
  int GetColumnCount() const { return GetColumnsInfo().GetColumnCount(); }
  std::wstring GetColumnName(int column) const { return GetColumnsInfo().GetColumnName(column); }
  // These change the column and the screen at once.
  void SetColumnVisible(int column, bool visible);
  void SetColumnWidth(int column, int widthPx);
  void SetColumnAlign(int column, int align);
  void SetColumnLocked(int column, bool locked);
  bool IsMultipleSort() const noexcept;
  void EnableMultipleSort(bool multiple);
  void RemoveSortColumn(int column);
  bool IsColumnSelected(int column) const { return GetColumnsInfo().IsColumnSelected(column); }
  // Widens or narrows the visible columns to their titles and the rows in view.
  void SizeToFit();
  // The first visible columns stay where they are while the others scroll; 0 or less for none. Locked columns stay in
  // any case; in a window too narrow for all of them only the first of them do.
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
  // The count of rows from now on. So many of them are inserted, the first of them at that place: current row,
  // selection and, unless the first row was in view, the rows in view stay with their trades. Others are new or gone at
  // the end.
  void SetVirtualRows(int count, int inserted = 0, int firstInserted = 0);
  int GetVirtualRows() const noexcept;

  // The current row; -1 for none.
  int GetCurSel() const;
  // Makes the row current and the only one selected, and brings it into view; -1 clears the selection. Without a
  // current column the first visible one becomes it.
  void SetCurSel(int row);
  void SelectAll();
  // Ranges of selected rows, from the top down.
  int GetSelectionCount() const;
  CQORPGridRange GetSelection(int index) const;
  int GetFirstVisibleRow() const;

  // The filter bar: a row of fields under the headers, one a column; an empty field shows the prompt. Hidden it keeps
  // its texts.
  void EnableFilterBar(bool shown, const std::wstring& prompt = L"<all>");
  bool IsFilterBarEnabled() const noexcept;
  // The text of a field as it was typed; writing it is as typing it.
  std::wstring GetFilterText(int column) const;
  void SetFilterText(int column, const std::wstring& text);
  // Puts the caret into the field, brought into view; false for a hidden column or bar.
  bool EditFilter(int column);

  // There are rows to copy.
  bool IsCopyEnabled() const { return GetVirtualRows() > 0; }
  // The selected rows, or all without a selection, with the visible columns as they stand on the screen: onto the
  // clipboard as text and HTML. False where the clipboard could not be had.
  bool Copy();
  // The same as HTML alone, under a row of titles.
  bool CopyHTML();

  // Runs the command of the context menu that stands under these texts, from the outermost menu down; texts count
  // without & and as they are shown. False where there is no such command or it is not enabled.
  bool RunContextMenu(const std::vector<std::wstring>& texts);

  // Brings columns, header and frozen part up to date and repaints.
  void AdjustLayout();
  void ReposItems() { AdjustLayout(); }
  // Repaints the rows at the next idle moment.
  void RedrawRows();
  // What a screen reader calls the rows; of a grid that has been created.
  void NameForReaders(const std::wstring& name);
  // Font of rows and header.
  void SetGridFont(const wxFont& font);
  wxFont GetGridFont() const;

  // A field of the filter bar was edited. The text is as it was typed; empty for none.
  virtual void OnFilterBarChanged(int /*column*/, const std::wstring& /*text*/) {}
  // Empties every field, without OnFilterBarChanged.
  virtual void OnFilterBarClearAll();
  // The narrowest that a column may be made, in pixels.
  virtual int OnGetColumnMinWidth(int column) const;
  // What RunContextMenu looks through and OnShowContextMenu shows. Commands and their updates come as menu events of
  // the grid.
  virtual std::span<const CQORPMenuItem> ContextMenu() const { return {}; }
  // A click on a header; the state and the sort are the derived grid's to change.
  virtual void ToggleSortColumn(int /*column*/) {}
  // A right click or the menu key, at a point of the screen.
  virtual void OnShowContextMenu(const wxPoint& /*point*/) {}
  // The grid got the focus.
  virtual void OnGridFocus() {}
  // A key before anything else sees it; true swallows it.
  virtual bool PreTranslateMessage(wxKeyEvent& /*event*/) { return false; }
  // The columns were changed by mouse: moved, resized, locked.
  virtual void OnColumnsChanged() {}

  // The rectangle that the text of a cell is laid out in, which the derived grid may shift; the cell itself to begin
  // with.
  virtual void OnDrawValue(wxRect& /*rect*/) const {}

  // For tests and for whatever sends events: the windows that take mouse and keys, in which the column stands; without
  // a column those of the part that scrolls.
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
