#include "grid_ops/rows/selection_totals.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/plain_book.h"

namespace {

class Selection : public ::testing::Test {
 protected:
  void Add(std::uint8_t side, std::uint32_t quantity, double price, double multiplier) {
    TradeRecord record{};
    record.Side = side;
    record.Quantity = quantity;
    record.Price = price;
    record.Multiplier = multiplier;
    Records.push_back(record);
  }
  void StoreRows() {
    for (std::size_t i = 0; i < Records.size(); ++i) Book.Rows.Rows.Store(static_cast<int>(i), &Records[i]);
  }
  std::wstring Texts(const std::vector<RowSpan>& selected, const NumberMarks& marks = {}) {
    std::wstring all;
    for (const std::wstring& text : SumSelection(Book.Rows, selected).Texts(marks)) all += text + L"|";
    return all;
  }

  const TradeBooks NoBooks;
  CQORTradeImpl Decoder;
  TradeCache Cache{Decoder, NoBooks, "."};
  PlainBook Book{Cache};
  std::vector<TradeRecord> Records;
};

TEST_F(Selection, TellsSidesWithMarks) {
  Add(1, 100, 101.75, 1);
  Add(2, 5, 20.5, 100);
  Add(1, 1100, 10.25, 10);
  Add(7, 9, 9, 9);
  Add(2, 0xFFFFFFFF, 2.5, 1);
  Add(1, 2'000'000'000, 1, 1);
  Add(1, 2'000'000'000, 1, 1);
  StoreRows();
  Book.Rows.Rows.Store(7, nullptr);
  const std::pair<std::vector<RowSpan>, const wchar_t*> rows[] = {
      {{RowSpan{0, 1}}, L"2 rows|Buy 1: 100 at 101.75, amt 10,175.00|Sell 1: 5 at 20.50, amt 10,250.00|"},
      {{RowSpan{0, 0}, {2, 2}}, L"2 rows|Buy 2: 1,200 at 17.88, amt 122,925.00|"},
      {{RowSpan{3, 3}}, L"1 row|"},
      {{RowSpan{4, 4}}, L"1 row|Sell 1: -1 at 2.50, amt -2.50|"},
      {{RowSpan{5, 99}}, L"2 rows|Buy 2: 4,000,000,000 at 1.00, amt 4,000,000,000.00|"},
      {{RowSpan{90, 99}}, L"0 rows|"},
      {{}, L"0 rows|"},
  };
  for (const auto& [selected, text] : rows) EXPECT_EQ(Texts(selected), text);
  EXPECT_EQ(Texts({{2, 2}}, {L'.', L','}), L"1 row|Buy 1: 1.100 at 10,25, amt 112.750,00|");
}

// All rows come to the totals of the book, any selection to the sum of its parts.
TEST_F(Selection, AgreesWithTheTotalsOfTheBook) {
  std::mt19937 numbers(3);
  const auto dice = [&numbers](unsigned end) { return static_cast<std::uint32_t>(numbers() % end); };
  for (int i = 0; i < 3000; ++i) Add(static_cast<std::uint8_t>(dice(4)), dice(900), dice(64) * 0.25, 1 + dice(3));
  StoreRows();
  Book.RecountTotals();
  const SelectionTotals all = SumSelection(Book.Rows, std::vector<RowSpan>{{0, 2999}});
  EXPECT_EQ(std::tuple(all.Buy.Quantity, all.Sell.Quantity, all.Rows),
            std::tuple(Book.Totals.BuyQty, Book.Totals.SellQty, 3000));
  EXPECT_EQ(std::pair(all.Buy.Amount, all.Sell.Amount), std::pair(Book.Totals.BuyAmt, Book.Totals.SellAmt));
  const SelectionTotals parts = SumSelection(Book.Rows, std::vector<RowSpan>{{0, 255}, {256, 256}, {257, 2999}});
  EXPECT_EQ(std::pair(parts.Buy.Amount, parts.Sell.Rows), std::pair(all.Buy.Amount, all.Sell.Rows));
}

}  // namespace
