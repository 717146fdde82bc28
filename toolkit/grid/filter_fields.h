// GridFilterBar: what the user does to the fields under the headers of a grid: one edit field lies over the field that
// has the caret, goes with its column wherever that goes, and takes the keys first.
#pragma once

#include <wx/event.h>

#include <string>

#include "toolkit/grid/grid_state.h"
#include "toolkit/grid/grid_view.h"

class wxTextCtrl;

// Promises: rows that come and go, scrolling and new columns leave text, caret, selection and focus of the edit alone;
// it ends where its column or the bar is hidden, or another window gets the focus. Its text always is the field's.
//
// The one edit is made when it is first needed and hidden between uses. It is a child of the window of its header, and
// moves to the other one where the column is frozen or no longer so.
class GridFilterBar {
 public:
  enum class Caret { AtStart, AtEnd, AllSelected };

  GridFilterBar(CQORPGridCtrl& owner, GridState& state) : Owner(owner), State(state) {}

  // The view must outlive the bar's use.
  void SetView(GridView& view) { View = &view; }
  // False for a hidden column or bar.
  bool Edit(int column, Caret caret);
  // The field that was edited last, or the first one where that is hidden.
  bool EditAgain();
  void SetText(int column, const std::wstring& text);
  void ClearTexts();

  // The columns, their places or what they are painted with changed.
  void Follow();
  // The windows of the frozen columns are about to go.
  void LeaveFrozenWindow();

  // Null while no field is edited.
  wxWindow* GetEdit() const;
  bool IsEdit(const wxObject* window) const { return Field != nullptr && window == FieldWindow(); }

 private:
  void MakeField();
  wxWindow* FieldWindow() const;
  bool HasFocus() const;
  void Place();
  void Dress();
  void MoveInto(wxWindow& parent);
  void PutCaret(Caret caret);
  void End();
  bool Store(int column, const std::wstring& text);
  void OnText();
  void OnKey(wxKeyEvent& event);
  bool LeaveByKey(int keyCode);
  bool MoveByKey(const wxKeyEvent& event);
  void EditNeighbour(int step, Caret caret);

  CQORPGridCtrl& Owner;
  GridState& State;
  GridView* View = nullptr;
  wxTextCtrl* Field = nullptr;  // belongs to the window of a header
  int Column = -1;              // that is edited
};
