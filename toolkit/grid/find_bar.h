// GridFindBar: the bar at the bottom of a grid in which a text to find is typed. GridFind: finding in a grid: the keys,
// the bar, the search in slices, and the cell that was found.
#pragma once

#include <wx/panel.h>
#include <wx/timer.h>

#include <chrono>
#include <functional>
#include <string>

#include "toolkit/grid/grid_input.h"
#include "toolkit/grid/grid_state.h"
#include "toolkit/grid/grid_view.h"
#include "toolkit/model/grid_search.h"

class CQORPStatic;
class wxTextCtrl;

class GridFindBar : public wxPanel {
 public:
  struct Listener {
    std::function<void()> TextChanged;
    std::function<void(bool downwards)> FindNext;
    std::function<void()> LeaveToRows;
    std::function<void()> Close;
  };
  GridFindBar(wxWindow& grid, Listener listener);

  wxTextCtrl& GetField() const { return *Field; }
  // Gives the field the focus and selects its text.
  void EditText();
  void ShowMessage(const std::wstring& text, bool isWarning = false);
  const std::wstring& GetMessage() const;

 private:
  void AddButton(const std::wstring& caption, const std::wstring& name, std::function<void()> press);
  void OnKey(wxKeyEvent& event);
  bool FindByKey(const wxKeyEvent& event);

  Listener Told;
  wxTextCtrl* Field = nullptr;  // children
  CQORPStatic* Message = nullptr;
};

// A search takes turns with the events of the windows, so that it never holds up typing. A change of the text starts it
// anew at the found cell or the current row; rows that come in move it along.
class GridFind {
 public:
  GridFind(CQORPGridCtrl& owner, GridState& state, GridRowsInput& rows);

  // The view must outlive this. layout is called if the height of the bar changes.
  void SetView(GridView& view, std::function<void()> layout);
  // Shows the bar and edits its text.
  void Open();
  void Close();
  // A key in the rows; true if it was handled.
  bool OnKey(const wxKeyEvent& event);
  // The window is the bar or in it.
  bool IsInBar(wxObject* window) const;
  // 0 while closed.
  int HeightPx() const;
  void Place(const wxRect& rect);
  // Null while closed.
  GridFindBar* GetBar() const;

  void InsertRows(int before, int rows);
  void SetRows(int rows);
  // These begin a search that is going on again.
  void RowsReplaced();
  void ColumnsChanged();
  bool IsSearching() const noexcept { return Search.State() == GridSearchState::Searching; }

 private:
  void MakeBar();
  void OnText();
  void FindNext(bool downwards);
  void Begin(bool downwards, bool behind);
  void Restart();
  void Slice();
  void ShowFound();
  void ShowProgress();
  void Unmark();
  std::wstring FoundText() const;

  CQORPGridCtrl& Owner;
  GridState& State;
  GridRowsInput& Rows;
  GridView* View = nullptr;
  GridFindBar* Bar = nullptr;  // child of the grid, made at the first use
  std::function<void()> Layout;
  GridSearch Search;
  bool Downwards = true;
  bool Behind = false;
  std::chrono::steady_clock::time_point Begun;
  wxTimer NextSlice;
};
