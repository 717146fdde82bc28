// BookDriver: does to the grid of a book what a user does with mouse and keys: clicks headers, selects rows, runs the
// context menu. Typing into the filter bar is FilterTypist's.
//
// Each gives back why it could not be done, in words for the user; empty when it was done.
#pragma once

#include <wx/accel.h>
#include <wx/window.h>

#include <string>
#include <vector>

#include "terminal/script/key_press.h"
#include "toolkit/grid/grid_ctrl.h"

namespace BookDriver {

// The first grid below the window; null for none.
CQORPGridCtrl* FindGrid(const wxWindow* window);
// The column with that title; -1 for none.
int FindColumn(const CQORPGridCtrl& grid, const std::wstring& title);

// Brings the header into view first. With Ctrl the click selects the column.
std::string ClickHeader(CQORPGridCtrl& grid, const std::wstring& title, bool ctrl);
// From the first to the last, both counted from 1.
std::string SelectRows(CQORPGridCtrl& grid, int first, int last);
// Comes back when the command is through, dialogs included.
std::string RunMenu(CQORPGridCtrl& grid, const std::vector<std::wstring>& texts);
std::string ExpectRows(const CQORPGridCtrl& grid, int count);

}  // namespace BookDriver

// FindChild: the first window below another one that is of a class and fits a condition, depth first.

// Null for none.
template <typename Control, typename Fits>
Control* FindChild(const wxWindow& window, Fits fits) {
  for (wxWindow* child : window.GetChildren()) {
    auto* control = dynamic_cast<Control*>(child);
    if (control != nullptr && fits(*control)) return control;
    if (Control* below = FindChild<Control>(*child, fits)) return below;
  }
  return nullptr;
}

// Keys as wxWidgets numbers them.

// The key code; 0 for a key that wxWidgets does not know.
int WxKeyCode(const KeyPress& key);
// The held keys as wxACCEL_ bits, which are those of wxMOD_ too.
int WxHeldKeys(const KeyPress& key);
