// BookDriver: does to the grid of a book what a user does with mouse and keys: clicks headers, selects rows, runs the
// context menu. Typing into the filter bar is FilterTypist's.
//
// Each gives back why it could not be done, in words for the user; empty when it was done.
#pragma once

#include <wx/window.h>

#include <string>
#include <vector>

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
