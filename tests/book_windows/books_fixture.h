// What tests of books share: a terminal of functions that notes what the plug-in says, a frame, a list of books in a
// folder of their own, and trades as messages. Not what is tested. Used on the one thread of the tests.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "book_windows/windows/book_list.h"
#include "book_windows/windows/trade_book_bar.h"
#include "tests/toolkit/dialog_answers.h"
#include "tests/toolkit/gui_test.h"
#include "toolkit/bars/frame.h"

// What the plug-in sent to the terminal, and what the terminal's focused window answers to 32022.
struct BookTerminal {
  PluginState* State = nullptr;
  FilterKey Answer{};
  std::vector<std::uint16_t> Messages;
  std::vector<std::uint8_t> LastMessage;
  std::vector<std::string> BarIds;
  std::uint32_t LastId = 0;  // the number in the book's name
  bool GivesOneId = false;
  bool KnowsSecurities = false;
  const char* SecurityName = "GOLD 201312";
  double Multiplier = 0;  // of every security
};
extern BookTerminal terminal;

FilterKey KeyOf(const char* exchange, const char* securityId);

class BooksTest : public GuiTest {
 protected:
  void SetUp() override;
  void TearDown() override;
  void Start();
  void Stop();

  CTradeBookBar& Open();
  CTradeBookBar& BarOf(std::uint32_t id) { return *std::prev(List->BarsById.upper_bound(id))->second; }
  void FocusMain();  // no book has the focus then
  CTradeBookBar& OpenFor(const char* exchange, const char* securityId);
  void Trade(std::uint32_t id, const char* exchange, const char* securityId, std::uint8_t side, std::uint32_t quantity,
             double price, std::uint16_t number = 9101);
  void Beat();

  static std::wstring Cell(CTradeBookBar& bar, int row, const char* key);
  static std::wstring Summary(CTradeBookBar& bar, int id) { return bar.Dialog->GetStatic(id)->GetWindowText(); }

  std::filesystem::path Folder;
  CQORTradeImpl Decoder;
  CQORPFrame* Main = nullptr;
  std::unique_ptr<PluginState> State;
  std::unique_ptr<CQORDLLComman> Functions;
  std::unique_ptr<BookList> List;
};
