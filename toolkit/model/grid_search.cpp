#include "toolkit/model/grid_search.h"

#include <algorithm>
#include <cstdint>

#include "foundations/text_tools.h"

namespace {
constexpr int kRowsAtATime = 256;
}  // namespace

CellTextFinder::CellTextFinder(const std::wstring& text, std::vector<int> columns, CellText textOf)
    : Wanted(LowerWide(text)), Columns(std::move(columns)), TextOf(std::move(textOf)) {}

int CellTextFinder::FindRow(int row, int step, int count) {
  for (; count > 0; --count, row += step)
    if (std::ranges::any_of(Columns, [&](int column) { return Holds(row, column); })) return row;
  return -1;
}

bool CellTextFinder::Holds(int row, int column) {
  if (Wanted.empty()) return false;
  Lower = TextOf(row, column);
  LowerInPlace(Lower);
  return Lower.find(Wanted) != std::wstring::npos;
}

int GridSearch::PlaceOf(int column) const {
  const auto at = std::ranges::find(Columns, column);
  return at == Columns.end() ? -1 : static_cast<int>(at - Columns.begin());
}

void GridSearch::Begin(std::unique_ptr<GridFinder> finder, std::vector<int> columns, int rows, const Start& start) {
  Finder = std::move(finder);
  Columns = std::move(columns);
  Rows = rows;
  Step = start.Downwards ? 1 : -1;
  const bool hasRow = start.Cell.Row >= 0 && start.Cell.Row < rows;
  FirstRow = hasRow ? start.Cell.Row : start.Downwards ? 0 : rows - 1;
  const int place = hasRow ? PlaceOf(start.Cell.Column) : -1;
  FirstPlace = place < 0 ? FrontPlace() : place + (start.Behind ? Step : 0);
  Next = Part::Head;
  Looked = 0;
  Wrapped = false;
  Cell = {};
  Now = Rows > 0 && !Columns.empty() ? GridSearchState::Searching : GridSearchState::NotFound;
}

void GridSearch::Stop() {
  Now = GridSearchState::Idle;
  Finder.reset();
}

GridSearchState GridSearch::Advance(const std::function<bool()>& isTimeUp) {
  while (Now == GridSearchState::Searching) {
    AdvanceOnce();
    if (isTimeUp()) break;
  }
  if (Now != GridSearchState::Searching) Finder.reset();
  return Now;
}

void GridSearch::AdvanceOnce() {
  switch (Next) {
    case Part::Head:
      return SearchHead();
    case Part::Rows:
      return SearchRows();
    case Part::Tail:
      return SearchTail();
  }
}

// From the place to the one before the end, in the direction of the search.
bool GridSearch::FindInRow(int row, int place, int end) {
  for (; place != end; place += Step) {
    const int column = Columns[static_cast<std::size_t>(place)];
    if (!Finder->Holds(row, column)) continue;
    Cell = {row, column};
    Now = GridSearchState::Found;
    return true;
  }
  return false;
}

void GridSearch::SearchHead() {
  if (FindInRow(FirstRow, FirstPlace, EndPlace())) return;
  Row = FirstRow + Step;
  Next = Part::Rows;
}

void GridSearch::SearchRows() {
  if (Row < 0 || Row >= Rows) {
    Wrapped = true;
    Row = Step > 0 ? 0 : Rows - 1;
  }
  if (Wrapped && Row == FirstRow) {
    Next = Part::Tail;
    return;
  }
  const int toEnd = Step > 0 ? Rows - Row : Row + 1;
  int count = std::min(kRowsAtATime, Wrapped ? (FirstRow - Row) * Step : toEnd);
  const int found = Finder->FindRow(Row, Step, count);
  if (found >= 0) {
    if (FindInRow(found, FrontPlace(), EndPlace())) return;
    count = (found - Row) * Step + 1;
  }
  Row += Step * count;
  Looked += count;
}

void GridSearch::SearchTail() {
  if (!FindInRow(FirstRow, FrontPlace(), FirstPlace)) Now = GridSearchState::NotFound;
}

void GridSearch::InsertRows(int before, int rows) {
  Rows += rows;
  if (FirstRow >= before) FirstRow += rows;
  if (Row >= before) Row += rows;
  if (Cell.Row >= before) Cell.Row += rows;
}

void GridSearch::SetRows(int rows) {
  Rows = rows;
  FirstRow = std::min(FirstRow, Rows - 1);
  Row = std::min(Row, Step > 0 ? Rows : Rows - 1);
  if (Cell.Row >= Rows) Cell = {};
  if (Rows == 0 && Now == GridSearchState::Searching) Now = GridSearchState::NotFound;
}

int GridSearch::Percent() const noexcept {
  return Rows == 0 ? 100 : static_cast<int>(std::min<std::int64_t>(100, std::int64_t{100} * Looked / Rows));
}
