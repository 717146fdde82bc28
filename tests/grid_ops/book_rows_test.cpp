#include "grid_ops/rows/book_rows.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "tests/grid_ops/twin_book.h"
#include "tests/support/wire_bytes.h"

namespace {

struct Dice {
  std::mt19937 Numbers;
  unsigned operator()() { return static_cast<unsigned>(Numbers()); }
};
template <typename Value, std::size_t kCount>
Value& Of(Dice& dice, Value (&values)[kCount]) {
  return values[dice() % kCount];
}

const SlowKey kSecurities[] = {{"NSE", "1"}, {"NSE", "2"}, {"nse", "1"}, {"NSEFO", ""}};

std::string RandomFields(Dice& dice) {
  static const char* const kSymbols[] = {"Border", "abc", "ABC", "M\xDCLL\xC4", "buy or sell", ""};
  static const char* const kTimes[] = {"20240229-10:15:00", "20240229-09:15:00", "10:15", ""};
  static constexpr std::uint32_t kQuantities[] = {0, 1, 7, 100, 0x7FFFFFFF, 0xFFFFFFFF};
  static constexpr double kPrices[] = {0, 100.25, 99.6, 1e20, 0.05, -3.5, 100.5, 101.5}, kMultipliers[] = {1, 50, 0};
  const SlowKey& security = Of(dice, kSecurities);
  return WireText(55010, security.first) + WireText(55104, security.second) + WireText(55103, Of(dice, kSymbols)) +
         WireText(55116, Of(dice, kTimes)) + WireU8(101, dice() % 4) + WireU32(20014, Of(dice, kQuantities)) +
         WireDouble(40002, Of(dice, kPrices)) + WireDouble(40004, Of(dice, kPrices)) +
         WireDouble(40008, Of(dice, kMultipliers));
}

std::string RandomAmendment(Dice& dice) {
  return WireU32(20008, 1 + dice() % 50) + WireU32(20084, dice() % 4) + WireU32(20103, dice() % 3) +
         WireU32(20104, dice() % 3) + WireText(55100, std::to_string(dice() % 1000)) +
         (dice() % 2 ? WireText(55010, "NSE") + WireText(55104, "2") : WireU8(101, dice() % 3));
}

void ChangeOneBook(TwinBook& book, Dice& dice) {
  static constexpr std::pair<int, const wchar_t*> kFilters[] = {
      {0, L"DEF"},  {12, L"or"},   {12, L"order"}, {12, L"M\xFCl"},   {16, L"buy or sell"}, {16, L"b"},    {18, L"1"},
      {20, L".05"}, {21, L"<100"}, {21, L"100"},   {21, L"!"},        {34, L"x"},           {36, L"10:1"}, {37, L"x"},
      {37, L"X"},   {38, L"x"},    {-1, L"x"},     {12, L"\xC4\x42"}, {12, L"\xE4\x62"},    {12, L" "}};
  static constexpr int kColumns[] = {0, 2, 6, 9, 11, 12, 16, 18, 20, 28, 36, 37}, kStates[] = {1, -1, 0};
  const auto& [column, text] = Of(dice, kFilters);
  const unsigned choice = dice() % 9;
  if (choice < 3) return book.Change(column, choice == 0 ? L"" : text);
  if (choice == 3) return book.ClearFilters();
  if (choice == 4) return book.Both([](auto& any) { any.RebuildRows(); });
  if (choice == 5) return book.Both([](auto& any) { any.CopyAllRows(); });
  if (choice == 6) return book.CountTotals(dice() % 2);
  if (choice == 7) {
    book.KeepTo(dice() % 3 ? Of(dice, kSecurities) : SlowKey{});
    if (dice() % 2) book.Both([](auto& any) { any.CollectSecurityRows(); });
    return;
  }
  SlowSort sort;
  for (unsigned i = dice() % 4; i > 0; --i) sort.emplace_back(Of(dice, kColumns), Of(dice, kStates));
  book.Sort(sort);
}

void PlayStep(Desk& desk, Dice& dice) {
  const unsigned step = dice() % 100;
  if (step < 40) return desk.Trade(1 + dice() % 50, RandomFields(dice));
  if (step < 52) return desk.Play(9112, RandomAmendment(dice));
  if (step < 57) return desk.Play(8112);
  // No message starts a second download with the trades still there, but the merge handles it.
  if (step == 57) desk.Cache.DownloadComplete = false;
  if (step == 58) return desk.Play(30022);
  if (step < 62) (step < 61 ? desk.Market.Selected : desk.Market.Restored) = Of(dice, kSecurities);
  ChangeOneBook(*desk.Twins[dice() % desk.Twins.size()], dice);
}

TEST(BookRowsTest, AgreesWithTheSlowBook) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    Dice dice{std::mt19937(seed)};
    Desk desk;
    desk.Market.Multipliers = {{kSecurities[0], 0.5}, {kSecurities[1], 0}};
    desk.Open("plain");
    desk.Open("security").KeepTo(kSecurities[0]);
    desk.Open("bar").Change(16, L"buy");
    desk.Open("sorted").Sort({{20, 1}});
    for (int step = 0; step < 400; ++step) {
      PlayStep(desk, dice);
      for (const auto& book : desk.Twins) ASSERT_EQ(book->Difference(), "") << "seed " << seed << ", step " << step;
    }
  }
}

TEST(BookRowsTest, KeepsOrderAndKeys) {
  Desk desk;
  TwinBook& book = desk.Open("book");
  const auto trade = [&](std::uint32_t id, double price, const char* security = "1") {
    desk.Trade(id, WireText(55010, "NSE") + WireText(55104, security) + WireDouble(40002, price));
  };
  const auto collect = [](auto& any) { any.CollectSecurityRows(); };
  TradeRecord stranger{};
  stranger.VELDTradeID = 9;
  // clang-format off
  const struct {
    const char* What;
    std::function<void()> Action;
    const char* Rows;
  } kRows[] = {
      {"first", [&] { desk.Play(8112); trade(1, 10); trade(2, 20, "2"); trade(3, 10); }, "^2=3 ^1=2 ^0=1 next ^3"},
      {"equal ones as they stood", [&] { book.Sort({{20, 1}}); }, "0=3 1=1 2=2 next ^3"},
      {"falling too", [&] { book.Sort({{20, -1}}); }, "0=2 1=3 2=1 next ^3"},
      {"later ones, the newest first", [&] { trade(4, 9, "2"); trade(5, 1, "2"); }, "0=2 1=3 2=1 ^4=5 ^3=4 next ^5"},
      {"no filter, next as in the cache", [&] { book.ClearFilters(); }, "0=2 1=3 2=1 ^4=5 ^3=4 next ^5"},
      {"unsorted", [&] { book.Sort({}); }, "^4=5 ^3=4 ^2=3 ^1=2 ^0=1 next ^5"},
      {"a security", [&] { book.KeepTo({"NSE", "1"}); book.Both(collect); }, "^1=3 ^0=1 next ^2"},
      {"others stay out", [&] { trade(6, 1, "2"); trade(7, 1); }, "^2=7 ^1=3 ^0=1 next ^3"},
      {"the next key left", [&] { book.Sort({}); }, "^6=7 ^5=6 ^4=5 ^3=4 ^2=3 ^1=2 ^0=1 next ^3"},
      {"in place of 4", [&] { trade(8, 1); }, "^6=7 ^5=6 ^4=5 ^3=8 ^2=3 ^1=2 ^0=1 next ^4"},
      {"in place of 1", [&] { book.RefilterRow(stranger); }, "^6=7 ^5=6 ^4=5 ^3=8 ^2=3 ^1=2 ^0=9 next ^1"},
      {"a row already", [&] { book.RefilterRow(stranger); }, "^6=7 ^5=6 ^4=5 ^3=8 ^2=3 ^1=2 ^0=9 next ^0"},
      {"any security", [&] { desk.Play(8112); }, "^7=8 ^6=7 ^5=6 ^4=5 ^3=4 ^2=3 ^1=2 ^0=1 next ^8"},
      {"the bar alone", [&] { book.Change(20, L"1"); book.Change(20, L"20"); }, "^0=2 next ^1"},
      {"a sort under a filter ends", [&] { book.Change(20, L"1"); book.Sort({{20, 1}}); book.Sort({}); },
       "^5=8 ^4=7 ^3=6 ^2=5 ^1=3 ^0=1 next ^6"},
      {"bar and security", [&] { book.Both([](auto& any) { any.RebuildRows(); }); }, "^3=8 ^2=7 ^1=3 ^0=1 next ^4"},
      {"the next key stays", [&] { desk.Play(30022); }, "next ^4"},
  };
  // clang-format on
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.What);
    row.Action();
    EXPECT_EQ(book.RowText(), row.Rows);
    EXPECT_EQ(book.Difference(), "");
  }
}

// Keys in any order, so that runs start, merge and lie side by side.
TEST(RowMapTest, AgreesWithAnOrderedMap) {
  TradeRecord records[50];
  Dice dice{std::mt19937(5)};
  for (int round = 0; round < 200; ++round) {
    RowMap map;
    std::map<std::int32_t, TradeRecord*> slow;
    for (int step = 0; step < 30; ++step) {
      const std::int32_t key = static_cast<std::int32_t>(dice() % 24) + (dice() % 8 ? 0 : -0x7FFFFFFF - 1);
      TradeRecord* record = &Of(dice, records);
      map.Store(key, record);
      slow[key] = record;
      std::size_t row = 0;
      ASSERT_EQ(map.Size(), slow.size());
      for (const auto& [slowKey, slowRecord] : slow) {
        ASSERT_EQ(map.KeyAt(row), slowKey);
        ASSERT_EQ(map.RecordAt(row++), slowRecord);
      }
    }
  }
}

}  // namespace
