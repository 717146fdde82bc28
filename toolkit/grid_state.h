// GridState: what the parts of one grid share: its columns, its selection, its switches and what is being dragged. The
// control owns it; the parts read it and change it by the user's hand. Used on the calling thread of the windows only.
#pragma once

#include <map>
#include <string>

#include "toolkit/cell_colors.h"
#include "toolkit/columns_info.h"
#include "toolkit/grid_ctrl.h"
#include "toolkit/row_selection.h"

struct GridFilters {
  std::wstring TextOf(int column) const {
    const auto at = Texts.find(column);
    return at == Texts.end() ? std::wstring() : at->second;
  }

  bool Shown = false;
  std::wstring Prompt;                // in an empty field
  std::map<int, std::wstring> Texts;  // by column; none is empty
  int LastEdited = -1;
};

struct GridState {
  CQORPGridColumnsInfo Columns;
  RowSelection Selection;
  CQORPGridCtrl::DisplayCallback Display;
  GridTheme Theme;
  GridFilters Filters;

  bool MultipleSort = false;
  bool HeaderShown = true;
  bool RowHeaderShown = true;
  bool GridLines = true;
  bool MarkSorted = false;
  bool WholeRow = true;
  bool Alternate = false;
  int FreezeCount = 0;
  int CurrentColumn = -1;

  int DraggedColumn = -1;  // its header follows the mouse
  int DropPlace = -1;      // the place before which it would go
};
