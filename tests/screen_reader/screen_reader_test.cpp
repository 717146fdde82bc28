// What a screen reader hears of the terminal: real windows, real keys, the real accessibility bus.
#include <gtest/gtest.h>

#include <fstream>

#include "tests/gateway/running_program.h"
#include "tests/screen_reader/reader.h"
#include "tests/support/own_folder.h"

namespace {

constexpr unsigned kDown = 0xFF54, kRight = 0xFF53, kTab = 0xFF09, kReturn = 0xFF0D;
constexpr const char* kBook = "Trade Book : All";

// A book of all trades, with the focus.
class ScreenReader : public OwnFolder {
 protected:
  void Open(const std::string& speed, const std::string& script) {
    std::ofstream(Folder / "script.txt") << script;
    Terminal =
        std::make_unique<RunningProgram>("terminal",
                                         std::vector<std::string>{"--work", (Folder / "work").string(), "--speed",
                                                                  speed, "--script", (Folder / "script.txt").string()},
                                         Folder / "output.txt");
  }
  // The book says a sentence that starts this way. What it said before was of the focus on its way.
  testing::AssertionResult Says(const std::string& start) {
    Said.clear();
    Listening.Next([&](const Heard& heard) {
      const bool says = heard.What == Told::Description && heard.Name == kBook;
      if (says) Said = heard.Text;
      return says && Said.starts_with(start);
    });
    return testing::AssertionResult(Said.starts_with(start)) << "not \"" << start << "\" but \"" << Said << '"';
  }

  std::string Said;
  Reader Listening;
  std::unique_ptr<RunningProgram> Terminal;
};

TEST_F(ScreenReader, HearsRowsColumnsAndFields) {
  Open("max", "wait played\nfocus none\nopen-book\nbook-menu Show Filter\n");
  // The book of a first start has been entered before, with the rows of that moment.
  const Heard entered = Listening.Next([](const Heard& heard) {
    return heard.What == Told::Focus && heard.Name == kBook &&
           heard.Description.find("row 1 of 13,612, ") != std::string::npos;
  });
  ASSERT_EQ(entered.Program, "Trading Terminal");
  EXPECT_TRUE(entered.Description.starts_with(
      "ExchangeTradeTime: 20140609-15:59:00, column 1 of 12, row 1 of 13,612, Exchange: OPRA, "))
      << entered.Description;
  Listening.Press(kDown);
  ASSERT_TRUE(Says("ExchangeTradeTime: 20140609-15:59:00, row 2 of 13,612, Exchange: OPRA, "));
  Listening.Press(kRight, true);
  ASSERT_TRUE(Says("Exchange: OPRA, column 2 of 12"));
  Listening.Press(kReturn, true);
  ASSERT_TRUE(Says("Exchange, sorted ascending: "));
  Listening.Press('f', true);
  ASSERT_EQ(Listening.Next(Told::Focus, "Filter of ExchangeTradeTime").Name, "Filter of ExchangeTradeTime");
  Listening.Press(kTab);
  EXPECT_EQ(Listening.Next(Told::Name, "Filter of Exchange").Text, "Filter of Exchange");
}

TEST_F(ScreenReader, HearsNothingOfTradesThatComeInAbove) {
  Open("60", "wait live\n");  // with the book of a first start
  ASSERT_EQ(Listening.Next(Told::Focus, kBook).Name, kBook);
  Listening.Press(kRight, true);
  ASSERT_TRUE(Says("Exchange: "));
  int totals = 0, descriptions = 0;  // the totals of the book change at each of its beats
  Listening.Next([&](const Heard& heard) {
    descriptions += heard.What == Told::Description ? 1 : 0;
    totals += heard.What == Told::Name ? 1 : 0;
    return totals == 60;
  });
  EXPECT_EQ(std::pair(totals, descriptions), std::pair(60, 0));
  Listening.Press(kDown);
  ASSERT_TRUE(Says("Exchange: "));
  EXPECT_TRUE(Said.find(", row ") != std::string::npos && Said.find(", row 2 of") == std::string::npos) << Said;
}

}  // namespace
