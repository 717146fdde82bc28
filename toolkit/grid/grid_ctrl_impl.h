// CQORPGridCtrl::Impl: the parts that a grid is made of, and how the events of its window reach them.
#pragma once

#include <wx/event.h>

#include "toolkit/grid/filter_fields.h"
#include "toolkit/grid/grid_ctrl.h"
#include "toolkit/grid/grid_header_input.h"
#include "toolkit/grid/grid_rows_input.h"
#include "toolkit/grid/grid_state.h"
#include "toolkit/grid/grid_view.h"

class CQORPGridCtrl::Impl {
 public:
  explicit Impl(CQORPGridCtrl& owner)
      : Owner(owner), Filters(owner, State), Rows(owner, State, Filters, Header), Header(owner, State, Filters) {}

  void MakeView();
  void NameForReaders(const std::wstring& name);
  void AdjustLayout() {
    if (View) View->ApplyState();
  }
  void Repaint() {
    if (View) View->RepaintRows();
  }

  CQORPGridCtrl& Owner;
  GridState State;
  GridFilterBar Filters;
  GridRowsInput Rows;
  GridHeaderInput Header;
  GridView* View = nullptr;
  bool Virtual = false;
  std::wstring Name = L"Grid";  // that a screen reader tells

 private:
  void FillOwner();
  void ScaleColumns(int fromDpi, int toDpi);
  void OnKey(wxKeyEvent& event);
  void OnContextMenu(wxContextMenuEvent& event);
  wxPoint MenuPoint() const;
};

// What a grid copies: its selected rows, or all of them without a selection, with the visible columns as they stand on
// the screen, as text and as an HTML table, onto the clipboard.
struct GridState;

// Both are false, and leave the clipboard as it was, where there are no rows or the clipboard could not be had.
bool CopyRows(const GridState& state);        // text and HTML
bool CopyRowsAsHtml(const GridState& state);  // HTML alone, under a row of titles
