// BookDriver: clicks headers, selects rows and runs the context menu of a book as a user does. FilterTypist types into
// the filter bar.
//
// Each function returns why it failed, in words for the user; empty on success.
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

// Scrolls the header into view. With Ctrl the click selects the column.
std::string ClickHeader(CQORPGridCtrl& grid, const std::wstring& title, bool ctrl);
// From the first to the last, both counted from 1.
std::string SelectRows(CQORPGridCtrl& grid, int first, int last);
// Returns after the command, dialogs included.
std::string RunMenu(CQORPGridCtrl& grid, const std::vector<std::wstring>& texts);
std::string ExpectRows(const CQORPGridCtrl& grid, int count);

}  // namespace BookDriver
