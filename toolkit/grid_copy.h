// What a grid copies: its selected rows, or all of them without a selection, with the visible columns as they stand on
// the screen, as text and as an HTML table, onto the clipboard. Not the commands and their guards. Used on the calling
// thread of the windows only.
#pragma once

struct GridState;

// Both are false, and leave the clipboard as it was, where there are no rows or the clipboard could not be had.
bool CopyRows(const GridState& state);        // text and HTML
bool CopyRowsAsHtml(const GridState& state);  // HTML alone, under a row of titles
