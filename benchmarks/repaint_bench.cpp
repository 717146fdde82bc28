// Repaint of the toolkit's grid: 45 rows of 20 columns on the screen, of a thousand rows and of a million. Measures
// processor time, so that waits for the screen do not count. Skipped without a display.
#include <benchmark/benchmark.h>
#include <wx/dcmemory.h>
#include <wx/frame.h>

#include <algorithm>
#include <string>

#include "benchmarks/window_loop.h"
#include "toolkit/grid/grid_ctrl.h"

namespace {

constexpr int kRowsInView = 45;
constexpr int kColumns = 20;
constexpr int kColumnWidth = 70;

// Of the same length for any row, so that the number of rows has no effect.
std::wstring CellText(int row, int column) {
  return std::to_wstring(100'000 + (row * 37 + column * 101) % 100'000);
}

class GridOnScreen {
 public:
  explicit GridOnScreen(int rows) : Frame(new wxFrame(nullptr, wxID_ANY, L"Repaint", {0, 0})) {
    Grid = new CQORPGridCtrl;
    Grid->Create(Frame, wxID_ANY);
    Grid->SetGridFont(wxFontInfo(8));
    for (int column = 0; column < kColumns; ++column) Grid->InsertColumn(column, L"Column", kColumnWidth);
    Grid->EnableRowHeader(false);
    Grid->EnableVirtualMode([this](int row, int column, CQORPGridCell& cell) {
      ++CellsAsked;
      cell.Text = CellText(row, column);
      cell.Background = row % 2 ? 0xFF0000 : 0x0000FF;
      cell.TextColor = 0xFFFFFF;
      return true;
    });
    Grid->SetVirtualRows(rows);
    Grid->GetRowsWindow()->Bind(wxEVT_PAINT, [this](wxPaintEvent& event) {
      Painted = true;
      event.Skip();
    });
    Frame->Show();
    Fit(rows);
  }
  ~GridOnScreen() {
    Frame->Destroy();
    ServeWindows();
  }
  GridOnScreen(const GridOnScreen&) = delete;
  GridOnScreen& operator=(const GridOnScreen&) = delete;

  // The painted cells.
  int Repaint() {
    CellsAsked = 0;
    Painted = false;
    Grid->RedrawRows();
    while (!Painted) ServeWindows();
    return CellsAsked;
  }

 private:
  // Sizes the window of the rows to the cells in view; the last row is whole.
  void Fit(int rows) {
    for (int round = 0; round < 50; ++round) {
      const wxSize wanted(kColumns * kColumnWidth, kRowsInView * std::max(Grid->CellRect(0, 0).height, 1));
      const wxSize missing = wanted - Grid->GetRowsWindow()->GetClientSize();
      if (missing != wxSize()) Frame->SetClientSize(Frame->GetClientSize() + missing);
      ServeWindows();
    }
    Grid->SetCurSel(rows / 2);
    Repaint();
  }

  wxFrame* Frame;
  CQORPGridCtrl* Grid = nullptr;
  int CellsAsked = 0;
  bool Painted = false;
};

void RepaintGrid(benchmark::State& state) {
  if (!StartWindows()) {
    state.SkipWithError("there is no display");
    return;
  }
  GridOnScreen screen(static_cast<int>(state.range(0)));
  int cells = 0;
  for (auto _ : state) cells = screen.Repaint();
  // The system may request one row more than it shows.
  if (cells < kRowsInView * kColumns || cells > (kRowsInView + 1) * kColumns)
    state.SkipWithError("other cells were painted than those in view");
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(RepaintGrid)->Arg(1000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

// Only the texts, drawn by the same library.
void DrawTexts(benchmark::State& state) {
  if (!StartWindows()) {
    state.SkipWithError("there is no display");
    return;
  }
  wxBitmap bitmap(kColumns * kColumnWidth, kRowsInView * 20);
  wxMemoryDC dc(bitmap);
  dc.SetFont(wxFontInfo(8));
  for (auto _ : state)
    for (int row = 0; row < kRowsInView; ++row)
      for (int column = 0; column < kColumns; ++column)
        dc.DrawText(CellText(row, column), column * kColumnWidth, row * 20);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(DrawTexts)->Unit(benchmark::kMillisecond);

}  // namespace
