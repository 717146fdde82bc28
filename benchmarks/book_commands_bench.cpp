// Commands in a book of a million trades: a letter in the filter bar, a header click, the largest copy, "Size To Fit".
// Measures processor time. Skipped without a display.
#include <benchmark/benchmark.h>
#include <wx/dcclient.h>
#include <wx/textctrl.h>

#include <memory>

#include "benchmarks/day_of_books.h"
#include "benchmarks/million_trades.h"
#include "benchmarks/window_loop.h"
#include "grid_ops/columns/trade_columns.h"
#include "grid_ops/exports/csv_export.h"

namespace {

constexpr int kSymbol = 12, kPrice = 20;
constexpr int kMeasuredRows = 1000;

// One day for all figures here; null without a display.
DayOfBooks* OpenDay(benchmark::State& state) {
  static std::unique_ptr<DayOfBooks> day;
  if (!StartWindows()) {
    state.SkipWithError("there is no display");
    return nullptr;
  }
  if (day == nullptr) day = std::make_unique<DayOfBooks>(kMillion);
  day->OpenBooks(1);
  return day.get();
}

void TypeFilterLetter(benchmark::State& state) {
  DayOfBooks* day = OpenDay(state);
  if (day == nullptr) return;
  CTradeBookGrid& grid = *day->NewestBook().Grid();
  grid.ToggleFilterBar();
  grid.EditFilter(kSymbol);
  int rows = 0;
  for (auto _ : state) {
    dynamic_cast<wxTextCtrl&>(*grid.GetFilterEdit()).WriteText(L"A");
    day->Paint();
    state.PauseTiming();
    rows = grid.GetVirtualRows();
    grid.SetFilterText(kSymbol, L"");
    day->Paint();
    state.ResumeTiming();
  }
  if (rows == 0 || rows == kMillion) state.SkipWithError("the letter filters nothing");
  day->CloseBooks();
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(TypeFilterLetter)->Iterations(10)->Unit(benchmark::kMillisecond);

// A click that sorts by price; the click that ends the sort is not measured.
void ClickHeader(benchmark::State& state) {
  DayOfBooks* day = OpenDay(state);
  if (day == nullptr) return;
  CTradeBookGrid& grid = *day->NewestBook().Grid();
  for (auto _ : state) {
    grid.ToggleSortColumn(kPrice);
    day->Paint();
    state.PauseTiming();
    if (grid.GetColumnsInfo().GetColumnState(kPrice) != 1) state.SkipWithError("the click does not sort");
    grid.RemoveSort();
    day->Paint();
    state.ResumeTiming();
  }
  day->CloseBooks();
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(ClickHeader)->Iterations(10)->Unit(benchmark::kMillisecond);

// The first rows of the newest book, as many as a copy may have.
void SelectMost(CTradeBookGrid& grid) {
  grid.ShowAllColumns();
  grid.SetCurSel(kMostCopiedRows - 1);
  wxKeyEvent home(wxEVT_KEY_DOWN);
  home.m_keyCode = WXK_HOME;
  home.SetShiftDown(true);
  grid.GetRowsWindow()->GetEventHandler()->ProcessEvent(home);
}

void CopyMostRows(benchmark::State& state) {
  DayOfBooks* day = OpenDay(state);
  if (day == nullptr) return;
  CTradeBookGrid& grid = *day->NewestBook().Grid();
  SelectMost(grid);
  if (grid.GetSelection(0).Bottom - grid.GetSelection(0).Top != kMostCopiedRows - 1)
    state.SkipWithError("other rows are selected");
  for (auto _ : state)
    if (!grid.Copy()) state.SkipWithError("the clipboard was not to be had");
  day->CloseBooks();
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(CopyMostRows)->Iterations(5)->Unit(benchmark::kMillisecond);

// Only the texts of the same cells.
void ShowMostRows(benchmark::State& state) {
  DayOfBooks* day = OpenDay(state);
  if (day == nullptr) return;
  const CTradeBookGrid& grid = *day->NewestBook().Grid();
  CQORPGridCell cell;
  for (auto _ : state)
    for (int row = 0; row < kMostCopiedRows; ++row)
      for (int column = 0; column < kTradeColumnCount; ++column) {
        grid.ShowCell(row, column, cell);
        benchmark::DoNotOptimize(cell);
      }
  day->CloseBooks();
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(ShowMostRows)->Iterations(5)->Unit(benchmark::kMillisecond);

void SizeToFit(benchmark::State& state) {
  DayOfBooks* day = OpenDay(state);
  if (day == nullptr) return;
  CTradeBookGrid& grid = *day->NewestBook().Grid();
  for (auto _ : state) grid.RunContextMenu({L"Column Header", L"Size To Fit"});
  day->CloseBooks();
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(SizeToFit)->Iterations(1)->Unit(benchmark::kMillisecond);

// The cost of measuring, with a thousandth of the rows.
void MeasureThousandRows(benchmark::State& state) {
  DayOfBooks* day = OpenDay(state);
  if (day == nullptr) return;
  const CTradeBookGrid& grid = *day->NewestBook().Grid();
  wxClientDC dc(grid.GetRowsWindow());
  dc.SetFont(grid.GetGridFont());
  CQORPGridCell cell;
  int widest = 0;
  for (auto _ : state)
    for (int row = 0; row < kMeasuredRows; ++row)
      for (int column = 0; column < kTradeColumnCount; ++column) {
        grid.ShowCell(row, column, cell);
        widest = std::max(widest, dc.GetTextExtent(cell.Text).x);
      }
  benchmark::DoNotOptimize(widest);
  day->CloseBooks();
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(MeasureThousandRows)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
