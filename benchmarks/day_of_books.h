// DayOfBooks: real books on the screen over a day of many trades: the frame of a terminal, the objects of the plug-in,
// and trades as messages. Requires StartWindows().
#pragma once

#include <benchmark/benchmark.h>
#include <wx/eventfilter.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <set>
#include <utility>
#include <vector>

#include "book_windows/windows/book_screen.h"
#include "book_windows/windows/trade_book_bar.h"
#include "toolkit/bars/docking_manager.h"

// Records the painted windows. A global filter, because wxWidgets 3.2 fails with handlers that come and go.
class PaintWatch : public wxEventFilter {
 public:
  PaintWatch() { wxEvtHandler::AddFilter(this); }
  ~PaintWatch() override { wxEvtHandler::RemoveFilter(this); }
  PaintWatch(const PaintWatch&) = delete;
  PaintWatch& operator=(const PaintWatch&) = delete;
  int FilterEvent(wxEvent& event) override {
    if (event.GetEventType() == wxEVT_PAINT && Painted.insert(event.GetEventObject()).second)
      Begun.emplace_back(event.GetEventObject(), std::chrono::system_clock::now());
    return Event_Skip;
  }
  void Forget() {
    Painted.clear();
    Begun.clear();
  }
  std::set<const wxObject*> Painted;
  std::vector<std::pair<const wxObject*, std::chrono::system_clock::time_point>> Begun;  // the first paint of each
};

// Makes an empty folder current, for the settings of books, and restores the former one.
class OwnFolder {
 public:
  OwnFolder();
  ~OwnFolder();
  OwnFolder(const OwnFolder&) = delete;
  OwnFolder& operator=(const OwnFolder&) = delete;

 private:
  std::filesystem::path Former;
};

class DayOfBooks {
 public:
  using Messages = std::vector<std::vector<std::uint8_t>>;

  explicit DayOfBooks(std::size_t trades);
  ~DayOfBooks();
  DayOfBooks(const DayOfBooks&) = delete;
  DayOfBooks& operator=(const DayOfBooks&) = delete;

  std::size_t Count() const { return State.TradeStore.TradeNumbers.All().size(); }
  // The day was created for that many trades and is not much longer now.
  bool Fits(std::size_t trades) const;
  // Returns to the trades that it was created with.
  void BeginAnew();

  // The messages of that many new trades.
  Messages NewTrades(std::size_t count);
  void Play(const Messages& messages);

  CTradeBookBar& NewestBook() { return BarOf(*Books().BarsById.rbegin()->second); }
  void OpenBooks(std::size_t count);
  void CloseBooks();
  // Resizes the newest book to that many columns and rows in view.
  void FitNewestBook(int columns, int rows);

  // Return after the rows of every book are painted: now, or after a beat.
  void Paint();
  void PaintBeat();
  // When each book was painted in the last of these two: when the paint of the next window began, or the call ended.
  std::vector<std::chrono::system_clock::time_point> PaintedAt() const;

  BookRegistry& Books() noexcept { return Screen.Registry; }
  static CTradeBookBar& BarOf(const Book& book) { return dynamic_cast<CTradeBookBar&>(*book.Window); }

 private:
  void ServeUntilPainted();
  bool BooksArePainted() const;

  OwnFolder Folder;
  CQORPFrame* Main;  // destroys itself and the books in it
  PaintWatch Watch;
  std::chrono::system_clock::time_point AllPainted;
  CQORTradeImpl Decoder;
  PluginState State;
  CQORDLLComman Functions;
  std::size_t Trades;
  std::uint32_t NextRecord = 0;
  TradeBookScreen Screen;
};

// Kept from one figure to the next, because a million trades take seconds, and one at a time, because one frame would
// cover the books of another. Null without a display, which is told.
DayOfBooks* DayOf(benchmark::State& state, std::size_t trades);
