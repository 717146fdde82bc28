// Real books on the screen: repaint, refresh beat, many trades into ten books, opening a book. Measures processor time,
// so that waits for screen and window manager do not count. Skipped without a display.
#include <benchmark/benchmark.h>
#include <wx/dcmemory.h>
#include <wx/frame.h>
#include <wx/panel.h>

#include <memory>
#include <string>

#include "benchmarks/day_of_books.h"
#include "benchmarks/million_trades.h"
#include "benchmarks/window_loop.h"

namespace {

constexpr int kRowsInView = 45;
constexpr int kColumns = 20;
constexpr std::size_t kNewTrades = 1000;
constexpr std::size_t kBooks = 10;
constexpr int kBeats = 40;  // ten seconds

void RepaintBook(benchmark::State& state) {
  DayOfBooks* day = DayOf(state, static_cast<std::size_t>(state.range(0)));
  if (day == nullptr) return;
  day->OpenBooks(1);
  day->FitNewestBook(kColumns, kRowsInView);
  CTradeBookGrid& grid = *day->NewestBook().Grid();
  grid.SetCurSel(grid.GetVirtualRows() / 2);
  int cells = 0;
  grid.EnableVirtualMode([&](int row, int column, CQORPGridCell& cell) {
    ++cells;
    return grid.ShowCell(row, column, cell);
  });
  day->Paint();
  for (auto _ : state) {
    cells = 0;
    day->Paint();
  }
  // The system may request one row more than it shows.
  if (cells < kRowsInView * kColumns || cells > (kRowsInView + 1) * kColumns)
    state.SkipWithError("other cells were painted than those in view");
  day->CloseBooks();
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(RepaintBook)->Arg(1000)->Arg(kMillion)->Iterations(40)->Unit(benchmark::kMillisecond);

// Only the texts of such a book, drawn by the same library.
void DrawBookTexts(benchmark::State& state) {
  DayOfBooks* day = DayOf(state, kMillion);
  if (day == nullptr) return;
  day->OpenBooks(1);
  std::vector<std::wstring> texts;
  CQORPGridCell cell;
  for (int row = 0; row < kRowsInView; ++row)
    for (int column = 0; column < kColumns; ++column) {
      day->NewestBook().Grid()->ShowCell(row, column, cell);
      texts.push_back(cell.Text);
    }
  wxBitmap bitmap(kColumns * 70, kRowsInView * 20);
  wxMemoryDC dc(bitmap);
  dc.SetFont(day->NewestBook().Grid()->GetGridFont());
  for (auto _ : state)
    for (std::size_t i = 0; i < texts.size(); ++i)
      dc.DrawText(texts[i], static_cast<int>(i % kColumns) * 70, static_cast<int>(i / kColumns) * 20);
  day->CloseBooks();
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(DrawBookTexts)->Iterations(40)->Unit(benchmark::kMillisecond);

// From the command until the book is painted.
void OpenBookWindow(benchmark::State& state) {
  DayOfBooks* day = DayOf(state, kMillion);
  if (day == nullptr) return;
  int rows = 0;
  for (auto _ : state) {
    day->Books().OnBookCommand();
    day->Paint();
    state.PauseTiming();
    rows = day->NewestBook().Grid()->GetVirtualRows();
    day->CloseBooks();
    state.ResumeTiming();
  }
  if (rows != static_cast<int>(day->Count())) state.SkipWithError("the book lacks rows");
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(OpenBookWindow)->Iterations(10)->Unit(benchmark::kMillisecond);

// An empty window of that size.
void OpenEmptyWindow(benchmark::State& state) {
  if (!StartWindows()) {
    state.SkipWithError("there is no display");
    return;
  }
  PaintWatch watch;
  for (auto _ : state) {
    watch.Painted.clear();
    auto frame = new wxFrame(nullptr, wxID_ANY, L"Empty", {100, 100}, {629, 399});
    auto panel = new wxPanel(frame);
    frame->Show();
    while (!watch.Painted.contains(panel)) ServeWindows();
    state.PauseTiming();
    frame->Destroy();
    ServeWindows();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(OpenEmptyWindow)->Iterations(10)->Unit(benchmark::kMillisecond);

// Ten new books; at each beat that many trades have arrived in all of them and are painted.
void TenBooksOnScreen(benchmark::State& state) {
  DayOfBooks* day = DayOf(state, kMillion);
  if (day == nullptr) return;
  day->OpenBooks(kBooks);
  const std::size_t expected = day->Count() + kBeats * static_cast<std::size_t>(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    const DayOfBooks::Messages messages = day->NewTrades(static_cast<std::size_t>(state.range(0)));
    state.ResumeTiming();
    day->Play(messages);
    day->PaintBeat();
  }
  for (const auto& [id, book] : day->Books().BarsById)
    if (DayOfBooks::BarOf(*book).Grid()->GetVirtualRows() != static_cast<int>(expected))
      state.SkipWithError("a book lacks rows");
  day->CloseBooks();
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(TenBooksOnScreen)->Arg(0)->Arg(1250)->Iterations(kBeats)->Repetitions(3)->Unit(benchmark::kMillisecond);

// The beat without its repaint, a thousand trades after the last one, with the book scrolled down.
void BeatOfBook(benchmark::State& state) {
  const auto trades = static_cast<std::size_t>(state.range(0));
  DayOfBooks* day = DayOf(state, trades);
  if (day == nullptr) return;
  day->OpenBooks(1);
  CTradeBookGrid& grid = *day->NewestBook().Grid();
  for (auto _ : state) {
    state.PauseTiming();
    if (!day->Fits(trades)) day->BeginAnew();
    day->PaintBeat();
    grid.SetCurSel(grid.GetVirtualRows() / 2);
    day->Play(day->NewTrades(kNewTrades));
    day->Paint();
    state.ResumeTiming();
    day->Books().RepaintAllBooks();
  }
  if (grid.GetVirtualRows() != static_cast<int>(day->Count())) state.SkipWithError("the book lacks rows");
  day->CloseBooks();
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BeatOfBook)->Arg(kMillion)->Arg(10'000)->Iterations(40)->Unit(benchmark::kMicrosecond);

}  // namespace
