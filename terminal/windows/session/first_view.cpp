#include "terminal/windows/session/first_view.h"

#include <cmath>

namespace {
constexpr double kBookShare = 0.45;  // of the height of the frame
}

void FirstView::Begin() {
  if (!Books.Shown().empty()) return;
  if (CQORPDockingControlBar* book = OpenBookOfAll()) PlaceBelow(*book);
  Windows.Watch().SetFocus();
}

void FirstView::Restore() {
  const std::vector<CQORPDockingControlBar*> books = Books.Shown();
  for (CQORPDockingControlBar* book : books) book->ShowControlBar(false);
  Windows.Reset();
  for (CQORPDockingControlBar* book : books) {
    if (book != books.front()) book->TabControlBar();
    book->ShowControlBar(true, false);
  }
  CQORPDockingControlBar* below = books.empty() ? OpenBookOfAll() : books.front();
  if (below != nullptr) PlaceBelow(*below);
  Windows.Watch().ShowControlBar(true);
}

// The plug-in asks for the current row of the market watch, which has none meanwhile. Null if no book has come.
CQORPDockingControlBar* FirstView::OpenBookOfAll() {
  MarketWatchGrid& watch = Windows.Watch().Grid();
  const int current = watch.GetCurSel();
  watch.SetCurSel(-1);
  OpenBook();
  if (current >= 0) watch.SetCurSel(current);
  return Books.Current();
}

void FirstView::PlaceBelow(CQORPDockingControlBar& book) {
  book.DockControlBar(DockSide::Bottom, static_cast<int>(std::lround(kBookShare * SessionWindows::FirstRect().height)));
}
