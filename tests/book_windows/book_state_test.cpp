#include "book_windows/model/book_state.h"

#include <gtest/gtest.h>

namespace {

// What happens to a book, one letter a step: S and A begin a book of a security and of all trades, W is the menu
// command, E is Escape.
BookState After(const char* steps) {
  BookState book;
  for (; *steps != '\0'; ++steps) {
    if (*steps == 'S') book.BeginSecurity(BookState::ScriptTitleOf("NSEFO", "GOLD 201312"));
    if (*steps == 'A') book.BeginAll();
    if (*steps == 'W') book.Widen();
    if (*steps == 'E') book.Narrow();
  }
  return book;
}

TEST(BookStateTest, FollowsCommandAndEscape) {
  constexpr const char* kAll = "Trade Book : All";
  constexpr const char* kScript = "Trade Book : NSEFO GOLD 201312";
  const struct {
    const char* Steps;
    const char* Title;
    bool Filtered;
    const char* AllMark;
    bool Averages;
    const char* Key;
  } kRows[] = {
      {"A", kAll, false, kAll, false, "Trade Book : AllTradeBook 77"},
      {"S", kScript, true, "", true, "Trade Book : NSEFO GOLD 201312TradeBook 77"},
      {"SW", kAll, false, "", false, "Trade Book : AllTradeBook 77"},
      {"SWW", kAll, false, "", false, "Trade Book : AllTradeBook 77"},
      {"SWE", kScript, true, "", true, "Trade Book : NSEFO GOLD 201312TradeBook 77"},
      {"AE", "Trade Book : ", true, "", false, "Trade Book : TradeBook 77"},
      {"AEW", kAll, false, kAll, false, "Trade Book : AllTradeBook 77"},
      {"AEWE", "Trade Book : ", true, "", false, "Trade Book : TradeBook 77"},
      {"AEE", "Trade Book : ", true, "", false, "Trade Book : TradeBook 77"},
      {"SWEWE", kScript, true, "", true, "Trade Book : NSEFO GOLD 201312TradeBook 77"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.Steps);
    const BookState book = After(row.Steps);
    EXPECT_EQ(book.Title(), row.Title);
    EXPECT_EQ(book.Filtered, row.Filtered);
    EXPECT_EQ(book.AllMark, row.AllMark);
    EXPECT_EQ(book.ShowsAverages(), row.Averages);
    EXPECT_EQ(book.Key("TradeBook 7", 7), row.Key);
  }
}

}  // namespace
