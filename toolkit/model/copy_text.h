// What the rows of a grid become on the clipboard: text for editors, an HTML table for spreadsheets and mails.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "toolkit/model/columns_info.h"
#include "toolkit/model/row_selection.h"

// The selected rows, or all without a selection, and of them the visible columns as they stand on the screen. Cell is
// asked once for each cell, row by row; its text need not outlive the next question.
struct RowsToCopy {
  const CQORPGridColumnsInfo& Columns;
  const RowSelection& Selection;
  std::function<std::wstring_view(int row, int column)> Cell;
};

struct CopiedRows {
  std::wstring Text;  // cells with a tab between them, rows with the line end behind each
  std::string Html;   // UTF-8: one <table>
};

// Control characters within a cell become blanks in text and HTML, so that every cell stays one.
CopiedRows CopyAsTextAndHtml(const RowsToCopy& rows, std::wstring_view lineEnd);

// The table alone, under a row of titles.
std::string CopyAsHtml(const RowsToCopy& rows);
