#include "benchmarks/day_of_books.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "benchmarks/million_trades.h"
#include "benchmarks/sample_messages.h"
#include "benchmarks/window_loop.h"
#include "host_link/messages/packet_writer.h"

namespace {

constexpr double kMostGrowth = 1.5;
constexpr int kRoundsToFit = 50;

// The functions of the terminal that a book needs.
std::uint32_t GiveBarId(const char*, const char*) {
  static std::uint32_t last = 0;
  return ++last;
}
void* FindFunction(const char* name) {
  return std::strcmp(name, "GetPluginBarID") == 0 ? reinterpret_cast<void*>(&GiveBarId) : nullptr;
}

std::filesystem::path FolderOfBooks() {
  return std::filesystem::temp_directory_path() / "tradebook_bench";
}

}  // namespace

OwnFolder::OwnFolder() : Former(std::filesystem::current_path()) {
  std::filesystem::create_directories(FolderOfBooks());
  std::filesystem::current_path(FolderOfBooks());
}

OwnFolder::~OwnFolder() {
  std::error_code ignored;
  std::filesystem::current_path(Former, ignored);
  std::filesystem::remove_all(FolderOfBooks(), ignored);
}

DayOfBooks::DayOfBooks(std::size_t trades)
    : Main(new CQORPFrame(nullptr, wxID_ANY, L"Terminal", wxRect(0, 0, 600, 300))),
      State(Decoder),
      Functions(FindFunction),
      Trades(trades),
      Screen(State, Functions, {}) {
  State.TradeStore.AutoTradeWriteCSV = false;
  Main->Show();
  BeginAnew();
}

DayOfBooks::~DayOfBooks() {
  Main->Destroy();
  ServeWindows();
}

bool DayOfBooks::Fits(std::size_t trades) const {
  return trades == Trades && static_cast<double>(Count()) < kMostGrowth * static_cast<double>(Trades);
}

void DayOfBooks::BeginAnew() {
  State.TradeStore.OnClearTrades();
  State.TradeStore.OnDownloadEnd();
  while (Count() < Trades) PlayTrade(State.TradeStore, DayRecord(NextRecord++));
}

DayOfBooks::Messages DayOfBooks::NewTrades(std::size_t count) {
  Messages messages;
  for (std::size_t i = 0; i < count; ++i) {
    CQORPacketWriter writer(0);
    Decoder.EncodeRecord(writer, DayRecord(NextRecord++), false, 9101, false);
    writer.Finish();
    messages.emplace_back(writer.GetData(), writer.GetData() + writer.GetSize());
  }
  return messages;
}

void DayOfBooks::Play(const Messages& messages) {
  for (const auto& message : messages) {
    CQORPacketReader reader(message.data(), static_cast<std::uint16_t>(message.size()));
    OpenSample(reader, 9101);
    State.TradeStore.OnTrade(reader);
  }
}

void DayOfBooks::OpenBooks(std::size_t count) {
  while (count-- > 0) Books().OpenNewBook();
  Paint();
}

void DayOfBooks::CloseBooks() {
  while (!Books().BarsById.empty()) Main->GetDockingManager().DestroyBar(&NewestBook());
  ServeWindows();
}

void DayOfBooks::FitNewestBook(int columns, int rows) {
  CTradeBookBar& bar = NewestBook();
  CTradeBookGrid& grid = *bar.Grid();
  int width = 0;
  for (int column = 0; column < grid.GetColumnCount(); ++column) {
    grid.GetColumnsInfo().SetColumnVisible(column, column < columns);
    if (column < columns) width += grid.GetColumnsInfo().GetColumnWidth(column);
  }
  grid.AdjustLayout();
  for (int round = 0; round < kRoundsToFit; ++round) {
    const wxSize wanted(width, rows * std::max(grid.CellRect(0, 0).height, 1));
    const wxSize missing = wanted - grid.GetRowsWindow()->GetClientSize();
    if (missing != wxSize()) bar.FloatControlBar({wxPoint(0, 0), bar.GetFloatRect().GetSize() + missing});
    ServeWindows();
  }
}

void DayOfBooks::Paint() {
  Watch.Forget();
  for (const auto& [id, book] : Books().BarsById) BarOf(*book).Grid()->RedrawRows();
  ServeUntilPainted();
}

void DayOfBooks::PaintBeat() {
  Watch.Forget();
  Books().RepaintAllBooks();
  ServeUntilPainted();
}

void DayOfBooks::ServeUntilPainted() {
  while (!BooksArePainted()) ServeWindows();
  AllPainted = std::chrono::system_clock::now();
}

std::vector<std::chrono::system_clock::time_point> DayOfBooks::PaintedAt() const {
  std::vector<std::chrono::system_clock::time_point> times;
  for (auto window = Watch.Begun.begin(); window != Watch.Begun.end(); ++window) {
    const bool isBook = std::ranges::any_of(Screen.Registry.BarsById, [&](const auto& book) {
      return BarOf(*book.second).Grid()->GetRowsWindow() == window->first;
    });
    if (isBook) times.push_back(window + 1 == Watch.Begun.end() ? AllPainted : (window + 1)->second);
  }
  return times;
}

bool DayOfBooks::BooksArePainted() const {
  return std::ranges::all_of(Screen.Registry.BarsById, [this](const auto& book) {
    return Watch.Painted.contains(BarOf(*book.second).Grid()->GetRowsWindow());
  });
}

DayOfBooks* DayOf(benchmark::State& state, std::size_t trades) {
  static std::unique_ptr<DayOfBooks> day;
  if (!StartWindows()) {
    state.SkipWithError("there is no display");
    return nullptr;
  }
  if (day == nullptr || !day->Fits(trades)) {
    day.reset();
    day = std::make_unique<DayOfBooks>(trades);
  }
  return day.get();
}
