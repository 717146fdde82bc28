#include "grid_ops/rows/book_totals.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/grid_ops/twin_book.h"
#include "tests/support/wire_bytes.h"

namespace {

// An average divides by the multiplier of the last buy, of the master, or of the record that came in.
TEST(BookTotalsTest, WritesChangedControlsOnly) {
  Desk desk;
  TwinBook& book = desk.Open("book");
  const auto trade = [&](unsigned side, std::uint32_t quantity, double price, double multiplier) {
    desk.Trade(desk.Executions + 1,
               WireU8(101, side) + WireU32(20014, quantity) + WireDouble(40002, price) + WireDouble(40008, multiplier));
  };
  const SlowMarket restored = {{"N", ""}, {"N", "1"}, {{{"N", "1"}, 2}}};
  // clang-format off
  const struct {
    std::function<void()> Action;
    const char* Line;  // texts, + or - for the colour, * if changed
  } kRows[] = {
      // Intentional: the line starts as if it showed -1, so a first net amount of -1 is not written.
      {[&] { desk.Play(8112); trade(1, 1, 1, 1); }, "1* 1.00* +* 0* 0.00* -* 1+*  "},
      {[&] { desk.Play(30022); desk.Play(8112); book.CountTotals(false); }, "0* 0.00* + 0 0.00 - 0+* 0.00+* "},
      {[&] { trade(1, 10, 2.5, 4); }, "10* 100.00* + 0 0.00 - 10+* -100.00-* "},
      {[&] { trade(3, 10, 2.5, 4); }, "10 100.00 + 0 0.00 - 10+ -100.00- "},
      {[&] { trade(1, 30, 5, 2); trade(2, 50, 3, 2); }, "40* 400.00* + 50* 300.00* - -10-* -100.00-* "},
      {[&] { book.CountTotals(true); }, "40+* 400.00+* 2.50+* 50-* 300.00-* 0.00-* -10-* -100.00-* "},
      {[&] { book.CountTotals(false); }, "40+ 400.00+ 2.50+ 50- 300.00- 0.00- -10- -100.00- "},
      {[&] { desk.Market = restored; book.CountTotals(false); }, "40+ 400.00+ 2.50+ 50- 300.00- 0.00- -10- -100.00- "},
      {[&] { book.KeepTo({"N", "2"}); book.CountTotals(false); },
       "40+ 400.00+ 5.00+* 50- 300.00- 3.00-* -10- -100.00- "},
      {[&] { desk.Market.Selected = {"N", "2"}; book.CountTotals(false); },
       "40+ 400.00+ 5.00+ 50- 300.00- 3.00- -10- -100.00- "},
      {[&] { book.KeepTo({}); trade(2, 0xFFFFFFF6u, 30, 4); },
       "40+ 400.00+ 2.50+* 40-* -900.00-* -5.62-* 0+* -1300.00-* "},
      {[&] { desk.Play(30022); book.CountTotals(true); }, "0+* 0.00+* 0.00+* 0-* 0.00-* 0.00-* 0+* 0.00+* "},
  };
  // clang-format on
  for (const auto& row : kRows) {
    row.Action();
    EXPECT_EQ(book.TakeLine(), row.Line);
    EXPECT_EQ(book.Difference(), "");
  }
}

TEST(SummaryLineTest, ListsAllTotals) {
  SummaryLine line;
  for (int i = 0; i < 8; ++i) line.Show(static_cast<SummaryValue>(i), -1234567890.5 + i);
  EXPECT_EQ(line.AllTotals(true),
            L"Buy: -1234567890\nBuyAmt: -1234567889.50\nBuyAvg: -1234567888.50\nSell: -1234567887\n"
            L"SellAmt: -1234567886.50\nSellAvg: -1234567885.50\nNet: -1234567884\nNetAmt: -1234567883.50");
  EXPECT_EQ(line.AllTotals(false),
            L"Buy: -1234567890\nBuyAmt: -1234567889.50\nSell: -1234567887\nSellAmt: -1234567886.50\n"
            L"Net: -1234567884\nNetAmt: -1234567883.50");
}

}  // namespace
