// GridFilterBar: editing of the filter fields under the headers of a grid. One text control lies over the field with
// the caret, moves with its column, and gets the keys first.
#pragma once

#include <wx/event.h>

#include <string>

#include "toolkit/grid/grid_state.h"
#include "toolkit/grid/grid_view.h"

class wxTextCtrl;

// Row changes, scrolling and new columns keep text, caret, selection and focus of the edit. It ends if its column or
// the bar is hidden, or if another window gets the focus. Its text is always that of the field.
//
// The edit is made at the first use and hidden between uses. It is a child of the header window of its column, and
// moves to the other header window if the column is frozen or unfrozen.
class GridFilterBar {
 public:
  enum class Caret { AtStart, AtEnd, AllSelected };

  GridFilterBar(CQORPGridCtrl& owner, GridState& state) : Owner(owner), State(state) {}

  // The view must outlive the bar.
  void SetView(GridView& view) { View = &view; }
  // False for a hidden column or bar.
  bool Edit(int column, Caret caret);
  // Edits the last field again, or the first one if that is hidden.
  bool EditAgain();
  void SetText(int column, const std::wstring& text);
  void ClearTexts();

  // Call this if columns, their places or the theme changed.
  void Follow();
  // Call this before the windows of the frozen columns are destroyed.
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
  wxTextCtrl* Field = nullptr;  // child of a header window
  int Column = -1;              // the edited one
};
