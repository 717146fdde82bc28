// Real books on the screen: their repaint, the beat that brings them up to date, a day's rush into ten of them, and the
// opening of one. Counted is processor time: waits for the screen's beat and the window manager are none. Needs a
// display; without one these figures are left out.
#include <benchmark/benchmark.h>
#include <wx/dcmemory.h>
#include <wx/eventfilter.h>

#include <cstring>
#include <memory>
#include <set>

#include "benchmarks/million_trades.h"
#include "benchmarks/sample_messages.h"
#include "benchmarks/window_loop.h"
#include "book_windows/book_list.h"
#include "book_windows/trade_book_bar.h"
#include "host_link/packet_writer.h"
#include "toolkit/frame.h"

namespace {

constexpr int kRowsInView = 45;
constexpr int kColumns = 20;
constexpr std::size_t kNewTrades = 1000;
constexpr std::size_t kBooks = 10;
constexpr int kBeats = 40;  // ten seconds
constexpr double kMostGrowth = 1.5;

// All of the terminal that a book needs.
std::uint32_t GiveBarId(const char*, const char*) {
  static std::uint32_t last = 0;
  return ++last;
}
void* FindFunction(const char* name) {
  return std::strcmp(name, "GetPluginBarID") == 0 ? reinterpret_cast<void*>(&GiveBarId) : nullptr;
}

// Which windows have been painted. wxWidgets 3.2 does not stand handlers that come and go.
class PaintWatch : public wxEventFilter {
 public:
  PaintWatch() { wxEvtHandler::AddFilter(this); }
  ~PaintWatch() override { wxEvtHandler::RemoveFilter(this); }
  PaintWatch(const PaintWatch&) = delete;
  PaintWatch& operator=(const PaintWatch&) = delete;
  int FilterEvent(wxEvent& event) override {
    if (event.GetEventType() == wxEVT_PAINT) Painted.insert(event.GetEventObject());
    return Event_Skip;
  }
  std::set<const wxObject*> Painted;
};

using Message = std::vector<std::uint8_t>;

// A terminal's frame, the plug-in behind it and a day of that many trades or a few more.
class Day {
 public:
  explicit Day(std::size_t trades)
      : Main(new CQORPFrame(nullptr, wxID_ANY, L"Terminal", wxRect(0, 0, 600, 300))),
        State(Decoder),
        Functions(FindFunction),
        Trades(trades),
        Books(State, Functions, 0) {
    State.TradeStore.AutoTradeWriteCSV = false;
    Main->Show();
    BeginAnew();
  }
  ~Day() {
    Main->Destroy();
    ServeWindows();
  }
  Day(const Day&) = delete;
  Day& operator=(const Day&) = delete;

  std::size_t Count() const { return State.TradeStore.TradeNumbers.All().size(); }
  bool Fits(std::size_t trades) const {
    return trades == Trades && static_cast<double>(Count()) < kMostGrowth * static_cast<double>(Trades);
  }
  void BeginAnew() {
    State.TradeStore.OnClearTrades();
    State.TradeStore.OnDownloadEnd();
    while (Count() < Trades) PlayTrade(State.TradeStore, DayRecord(NextRecord++));
  }

  // The messages of trades that the day does not have yet.
  std::vector<Message> NewTrades(std::size_t count) {
    std::vector<Message> messages;
    for (std::size_t i = 0; i < count; ++i) {
      CQORPacketWriter writer(0);
      Decoder.EncodeRecord(writer, DayRecord(NextRecord++), false, 9101, false);
      writer.Finish();
      messages.emplace_back(writer.GetData(), writer.GetData() + writer.GetSize());
    }
    return messages;
  }
  void Play(const std::vector<Message>& messages) {
    for (const Message& message : messages) {
      CQORPacketReader reader(message.data(), static_cast<std::uint16_t>(message.size()));
      OpenSample(reader, 9101);
      State.TradeStore.OnTrade(reader);
    }
  }

  CTradeBookBar& NewestBook() { return *Books.BarsById.rbegin()->second; }
  void OpenBooks(std::size_t count) {
    while (count-- > 0) Books.OpenNewBook();
    Paint();
  }
  void CloseBooks() {
    while (!Books.BarsById.empty()) Main->GetDockingManager().DestroyBar(&NewestBook());
    ServeWindows();
  }
  // Gives the newest book's rows the size of the cells that are to be in view.
  void FitNewestBook();

  // Returns when the rows of every book have been painted anew.
  void Paint() {
    Watch.Painted.clear();
    for (const auto& [id, bar] : Books.BarsById) bar->Grid()->RedrawRows();
    while (!BooksArePainted()) ServeWindows();
  }
  void PaintBeat() {
    Watch.Painted.clear();
    Books.RepaintAllBooks();
    while (!BooksArePainted()) ServeWindows();
  }

 private:
  bool BooksArePainted() const {
    for (const auto& [id, bar] : Books.BarsById)
      if (!Watch.Painted.contains(bar->Grid()->GetRowsWindow())) return false;
    return true;
  }

  CQORPFrame* Main;
  PaintWatch Watch;
  CQORTradeImpl Decoder;
  PluginState State;
  CQORDLLComman Functions;
  std::size_t Trades;
  std::uint32_t NextRecord = 0;

 public:
  BookList Books;
};

void Day::FitNewestBook() {
  CTradeBookBar& bar = NewestBook();
  CTradeBookGrid& grid = *bar.Grid();
  CQORPGridColumnsInfo& columns = grid.GetColumnsInfo();
  int width = 0;
  for (int column = 0; column < grid.GetColumnCount(); ++column) {
    columns.SetColumnVisible(column, column < kColumns);
    if (column < kColumns) width += columns.GetColumnWidth(column);
  }
  grid.AdjustLayout();
  for (int round = 0; round < 50; ++round) {
    const wxSize wanted(width, kRowsInView * std::max(grid.CellRect(0, 0).height, 1));
    const wxSize missing = wanted - grid.GetRowsWindow()->GetClientSize();
    if (missing != wxSize()) bar.FloatControlBar({wxPoint(0, 0), bar.GetFloatRect().GetSize() + missing});
    ServeWindows();
  }
}

// The day is kept from one figure to the next: a million trades take seconds. Null without a display.
Day* DayOf(benchmark::State& state, std::size_t trades) {
  static std::unique_ptr<Day> day;
  if (!StartWindows()) {
    state.SkipWithError("there is no display");
    return nullptr;
  }
  if (day == nullptr || !day->Fits(trades)) {
    day.reset();
    day = std::make_unique<Day>(trades);
  }
  return day.get();
}

void RepaintBook(benchmark::State& state) {
  Day* day = DayOf(state, static_cast<std::size_t>(state.range(0)));
  if (day == nullptr) return;
  day->OpenBooks(1);
  day->FitNewestBook();
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
  // The system may ask for a row more than it shows.
  if (cells < kRowsInView * kColumns || cells > (kRowsInView + 1) * kColumns)
    state.SkipWithError("other cells were painted than those in view");
  day->CloseBooks();
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(RepaintBook)->Arg(1000)->Arg(kMillion)->Iterations(40)->Unit(benchmark::kMillisecond);

// The texts of such a book alone, drawn by the same library.
void DrawBookTexts(benchmark::State& state) {
  Day* day = DayOf(state, kMillion);
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

// From the command until the book stands painted on the screen.
void OpenBookWindow(benchmark::State& state) {
  Day* day = DayOf(state, kMillion);
  if (day == nullptr) return;
  for (auto _ : state) {
    day->Books.OpenBookByCommand();
    day->Paint();
    state.PauseTiming();
    if (day->Books.BarsById.size() != 1 || day->NewestBook().Grid()->GetVirtualRows() != static_cast<int>(day->Count()))
      state.SkipWithError("the book lacks rows");
    day->CloseBooks();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(OpenBookWindow)->Iterations(10)->Unit(benchmark::kMillisecond);

// A window of that size with nothing in it.
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

// Ten books as they open; at each beat so many trades have come in, are taken by all of them and painted.
void TenBooksOnScreen(benchmark::State& state) {
  Day* day = DayOf(state, kMillion);
  if (day == nullptr) return;
  day->OpenBooks(kBooks);
  const std::size_t expected = day->Count() + kBeats * static_cast<std::size_t>(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    const std::vector<Message> messages = day->NewTrades(static_cast<std::size_t>(state.range(0)));
    state.ResumeTiming();
    day->Play(messages);
    day->PaintBeat();
  }
  for (const auto& [id, bar] : day->Books.BarsById)
    if (bar->Grid()->GetVirtualRows() != static_cast<int>(expected)) state.SkipWithError("a book lacks rows");
  day->CloseBooks();
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(TenBooksOnScreen)->Arg(0)->Arg(1250)->Iterations(kBeats)->Repetitions(3)->Unit(benchmark::kMillisecond);

// The beat without the painting that it asks for, a thousand trades after the last one, with the book scrolled down.
void BeatOfBook(benchmark::State& state) {
  const auto trades = static_cast<std::size_t>(state.range(0));
  Day* day = DayOf(state, trades);
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
    day->Books.RepaintAllBooks();
  }
  if (grid.GetVirtualRows() != static_cast<int>(day->Count())) state.SkipWithError("the book lacks rows");
  day->CloseBooks();
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BeatOfBook)->Arg(kMillion)->Arg(10'000)->Iterations(40)->Unit(benchmark::kMicrosecond);

}  // namespace
