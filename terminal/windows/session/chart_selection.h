// What the chart shows: the security that is selected in market watch, positions or book, and the times of a book's
// selected rows.
#pragma once

#include "terminal/windows/session/session_windows.h"

// Shows the current row's security of the bar that had the focus last; without a current row the chart stays as it is.
// A no-op while the chart is hidden.
void FollowSelection(const SessionWindows& windows, const BookBars& books);

// Shows the chart, of the security of the current book's current row, over the times of the selected rows of that
// security, sorted or not. Throws TerminalError if there are none.
void ShowSelectedRows(const SessionWindows& windows, BookBars& books);
