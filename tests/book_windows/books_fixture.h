// BooksTest: books on the screen, in a terminal's frame.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "book_windows/windows/book_screen.h"
#include "book_windows/windows/trade_book_bar.h"
#include "tests/book_windows/book_desk.h"
#include "tests/toolkit/dialog_answers.h"
#include "tests/toolkit/gui_test.h"
#include "toolkit/bars/docking_manager.h"

class BooksTest : public GuiTest {
 protected:
  void SetUp() override;
  void TearDown() override;
  // A run of the plug-in over the files of the one before.
  void Start();
  void Stop();

  // Opens a book with no other having the focus, and waits until it is active.
  CTradeBookBar& Open();
  CTradeBookBar& OpenGold() {
    BookDesk::Select("COMEX", "GC1");
    return Open();
  }
  CTradeBookBar& BarOf(std::uint32_t id) { return WindowOf(*Registry().BarsById.find(id)->second); }
  static CTradeBookBar& WindowOf(const Book& book) { return dynamic_cast<CTradeBookBar&>(*book.Window); }
  BookRegistry& Registry() { return Screen->Registry; }
  PluginState& State() { return *Desk->State; }
  void FocusGrid(CTradeBookBar& bar);
  void Beat();

  static void ShowOnly(CTradeBookGrid& grid, const std::vector<int>& columns);
  static CQORPGridCell Cell(const CTradeBookBar& bar, int row, int column) {
    CQORPGridCell cell;
    bar.Grid()->ShowCell(row, column, cell);
    return cell;
  }
  static std::wstring Ids(const CTradeBookGrid& grid);
  static Bytes AddressOf(const void* window) { return Word(reinterpret_cast<std::uint64_t>(window), 8); }
  static std::wstring Summary(CTradeBookBar& bar, int id) { return bar.Dialog->GetStatic(id)->GetWindowText(); }

  std::optional<BookDesk> Desk;
  CQORPFrame* Main = nullptr;
  std::unique_ptr<TradeBookScreen> Screen;
  DialogAnswers Answers;
};
