// CQORPGridCtrl::Impl: the parts that a grid is made of, and how the events of its window reach them. Not what a part
// does. Used on the calling thread of the windows only.
#pragma once

#include <wx/event.h>

#include "toolkit/filter_bar.h"
#include "toolkit/grid_ctrl.h"
#include "toolkit/grid_header_input.h"
#include "toolkit/grid_rows_input.h"
#include "toolkit/grid_state.h"
#include "toolkit/grid_view.h"

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
