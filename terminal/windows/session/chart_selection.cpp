#include "terminal/windows/session/chart_selection.h"

#include "platform/locale.h"
#include "terminal/common/errors.h"
#include "terminal/windows/drivers/user_drivers.h"

namespace {

// The columns of a book that the chart reads, by their titles.
class BookColumns {
 public:
  explicit BookColumns(const CQORPGridCtrl& grid)
      : Grid(grid),
        Time(BookDriver::FindColumn(grid, L"ExchangeTradeTime")),
        Exchange(BookDriver::FindColumn(grid, L"Exchange")),
        SecurityID(BookDriver::FindColumn(grid, L"SecurityID")) {}

  std::string TimeOf(int row) const { return Text(row, Time); }
  std::string ExchangeOf(int row) const { return Text(row, Exchange); }
  std::string SecurityOf(int row) const { return Text(row, SecurityID); }

 private:
  std::string Text(int row, int column) const { return WideToCodePage(Grid.GetCellText(row, column)); }

  const CQORPGridCtrl& Grid;
  int Time;
  int Exchange;
  int SecurityID;
};

void SelectRowOf(const CQORPDockingControlBar& book, ChartModel& chart) {
  const CQORPGridCtrl* grid = BookDriver::FindGrid(&book);
  if (grid == nullptr) return;
  const BookColumns columns(*grid);
  const int row = grid->GetCurSel();
  const std::string security = columns.SecurityOf(row);
  if (!security.empty()) chart.Select(columns.ExchangeOf(row), security);
}

// Of the current row of a list; null for none.
template <typename Row>
void SelectOf(const Row* row, ChartModel& chart) {
  if (row != nullptr) chart.Select(row->Exchange, row->SecurityID);
}

std::vector<std::string> SelectedTimes(const CQORPGridCtrl& grid, const ChartModel& chart) {
  const BookColumns columns(grid);
  std::vector<std::string> times;
  for (int at = 0; at < grid.GetSelectionCount(); ++at) {
    const CQORPGridRange rows = grid.GetSelection(at);
    for (int row = rows.Top; row <= rows.Bottom; ++row)
      if (chart.IsOf(columns.ExchangeOf(row), columns.SecurityOf(row))) times.push_back(columns.TimeOf(row));
  }
  return times;
}

}  // namespace

void FollowSelection(const SessionWindows& windows, const BookBars& books) {
  if (!windows.Chart().IsBarShown()) return;
  ChartView& view = windows.Chart().View();
  const BookBars::SelectingBar last = books.LastSelecting();
  const CQORPDockingControlBar* book = last == BookBars::SelectingBar::Book ? books.Current() : nullptr;
  if (book != nullptr)
    SelectRowOf(*book, view.Model());
  else if (last == BookBars::SelectingBar::Positions)
    SelectOf(windows.Positions().Grid().Selected(), view.Model());
  else
    SelectOf(windows.Watch().Grid().Selected(), view.Model());
  view.ShowChanges();
}

void ShowSelectedRows(const SessionWindows& windows, BookBars& books) {
  const CQORPDockingControlBar* book = books.Current();
  const CQORPGridCtrl* grid = BookDriver::FindGrid(book);
  if (grid == nullptr) throw TerminalError(ExitCode::BadLines, "no book is open whose rows the chart could show");
  books.MakeCurrent(book);
  windows.Chart().ShowControlBar(true);
  ChartView& view = windows.Chart().View();
  SelectRowOf(*book, view.Model());
  view.Model().Update();
  if (!view.Model().ShowTimes(SelectedTimes(*grid, view.Model())))
    throw TerminalError(ExitCode::BadLines, "no rows with times are selected in the book \"" +
                                                Utf8OfCodePage(WideToCodePage(book->GetBarTitle())) + "\"");
  view.Redraw();
}
