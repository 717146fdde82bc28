// DayOfBooks: real books on the screen over a day of many trades: a terminal's frame, the plug-in's objects behind it,
// and trades that come in as messages. Not a figure: book_windows_bench.cpp. Needs StartWindows(). Used on the one
// thread of the program.
#pragma once

#include <wx/eventfilter.h>

#include <cstdint>
#include <filesystem>
#include <set>
#include <vector>

#include "book_windows/windows/book_list.h"
#include "book_windows/windows/trade_book_bar.h"
#include "toolkit/bars/frame.h"

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

// While it lives the current folder is an empty one of its own: books keep their settings there.
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
  // The day was made for that many trades, and has not become much longer since.
  bool Fits(std::size_t trades) const;
  // Down to the trades that it was made for.
  void BeginAnew();

  // The messages of so many trades that the day does not have yet.
  Messages NewTrades(std::size_t count);
  void Play(const Messages& messages);

  CTradeBookBar& NewestBook() { return *List.BarsById.rbegin()->second; }
  void OpenBooks(std::size_t count);
  void CloseBooks();
  // So many columns and rows in view in the newest book.
  void FitNewestBook(int columns, int rows);

  // These return when the rows of every book have been painted: as they are, or after a beat.
  void Paint();
  void PaintBeat();

  BookList& Books() noexcept { return List; }

 private:
  void ServeUntilPainted();
  bool BooksArePainted() const;

  OwnFolder Folder;
  CQORPFrame* Main;  // destroys itself and the books in it
  PaintWatch Watch;
  CQORTradeImpl Decoder;
  PluginState State;
  CQORDLLComman Functions;
  std::size_t Trades;
  std::uint32_t NextRecord = 0;
  BookList List;
};
