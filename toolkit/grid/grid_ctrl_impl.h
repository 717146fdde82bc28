// CQORPGridCtrl::Impl: the parts of a grid and the events of its window.
#pragma once

#include <wx/event.h>

#include "toolkit/grid/filter_fields.h"
#include "toolkit/grid/find_bar.h"
#include "toolkit/grid/grid_ctrl.h"
#include "toolkit/grid/grid_input.h"
#include "toolkit/grid/grid_speaker.h"
#include "toolkit/grid/grid_state.h"
#include "toolkit/grid/grid_view.h"

class CQORPGridCtrl::Impl {
 public:
  explicit Impl(CQORPGridCtrl& owner)
      : Owner(owner),
        Speaker(owner, State),
        Filters(owner, State),
        Rows(owner, State, Filters, Header, Speaker),
        Header(owner, State, Filters, Speaker),
        Find(owner, State, Rows) {}

  void MakeView();
  void NameForReaders(const std::wstring& name);
  void AdjustLayout() {
    if (View) View->ApplyState();
    Speaker.Changed();
    Find.ColumnsChanged();
  }
  void Repaint() {
    if (View) View->RepaintRows();
    Speaker.Changed();
  }

  CQORPGridCtrl& Owner;
  GridState State;
  GridSpeaker Speaker;
  GridFilterBar Filters;
  GridRowsInput Rows;
  GridHeaderInput Header;
  GridFind Find;
  GridView* View = nullptr;
  bool Virtual = false;
  std::wstring Name = L"Grid";  // for screen readers

 private:
  void FillOwner();
  void ScaleColumns(int fromDpi, int toDpi);
  void OnKey(wxKeyEvent& event);
  void OnContextMenu(wxContextMenuEvent& event);
  wxPoint MenuPoint() const;
};

// Copy the selected rows, or all rows without a selection, with the visible columns in display order, to the clipboard.
// False, without any change, if there are no rows or the clipboard is not available.
bool CopyRows(const GridState& state);        // text and HTML
bool CopyRowsAsHtml(const GridState& state);  // HTML only, with a row of titles
