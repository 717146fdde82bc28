// The rows of a grid as clipboard data: text for editors, an HTML table for spreadsheets and mail.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "toolkit/model/columns_info.h"
#include "toolkit/model/row_selection.h"

// The selected rows, or all rows without a selection, with the visible columns in display order. Cell is called once
// for each cell, row by row; its text is used before the next call.
struct RowsToCopy {
  const CQORPGridColumnsInfo& Columns;
  const RowSelection& Selection;
  std::function<std::wstring_view(int row, int column)> Cell;
};

struct CopiedRows {
  std::wstring Text;  // cells separated by tabs, rows terminated by the line end
  std::string Html;   // UTF-8: one <table>
};

// Control characters in a cell become blanks, so that tabs and line ends only separate cells.
CopiedRows CopyAsTextAndHtml(const RowsToCopy& rows, std::wstring_view lineEnd);

// The table only, with a row of titles.
std::string CopyAsHtml(const RowsToCopy& rows);
