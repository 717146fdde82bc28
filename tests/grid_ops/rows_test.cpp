// The rows and totals of books, beside the slow book.
#include <gtest/gtest.h>

#include <cstring>
#include <deque>
#include <functional>
#include <random>

#include "tests/grid_ops/slow_book.h"
#include "tests/support/plain_book.h"
#include "tests/support/wire_bytes.h"
#include "tests/trade_data/deliver.h"

namespace {

// A book and its slow book, driven alike.
struct TwinBook {
  explicit TwinBook(const TradeCache& cache) : Fast(cache), Slow(cache) {}
  template <typename Act>
  void Both(Act act) {
    act(Fast.Rows);
    act(Slow);
  }
  void Change(int column, const std::wstring& text) {
    EXPECT_EQ(Fast.Rows.OnFilterBarChanged(column, text), Slow.OnFilterBarChanged(column, text));
  }
  void ClearFilters() {
    Fast.Rows.OnFilterBarClearAll();
    if (!Slow.Filters.empty()) Slow.Filters.clear(), Slow.OnFilterBarUpdate();
  }
  void Sort(const std::vector<SortState>& sort) {
    Both([&](auto& book) { book.ResortRows(sort); });
  }
  // An empty key makes it a book of all securities.
  void KeepTo(const SlowKey& security) {
    Both([&](auto& book) { book.Filtered = !security.first.empty(); });
    Slow.Security = security;
    std::strcpy(Fast.Rows.Security.Exchange, security.first.c_str());
    std::strcpy(Fast.Rows.Security.SecurityID, security.second.c_str());
  }

  // The first difference, or empty.
  std::string Difference();
  // Rows as key=id and the next key; a key near the highest is ^ and its distance from it.
  std::string RowText() const;
  // The eight controls in order: text, + or - for the colour, * if changed since the last call.
  std::string TakeLine();

  PlainBook Fast;
  SlowBook Slow;
};

std::string TwinBook::Difference() {
  const BookRows& fast = Fast.Rows;
  std::size_t row = 0;
  for (const auto& [key, record] : Slow.Rows) {
    if (fast.RecordAt(row) != record || fast.Rows.KeyAt(row) != key) return "row " + std::to_string(row);
    ++row;
  }
  if (fast.RowCount() != row || fast.RecordAt(row) != nullptr) return "a row beyond the end";
  if (fast.NextRowKey != Slow.NextRowKey) return "next key";
  const std::map<int, std::wstring> filters(Slow.Filters.begin(), Slow.Filters.end());
  for (int column = -1; column <= 38; ++column)
    if (fast.Filters.TextOf(column) != (filters.contains(column) ? filters.at(column) : L"")) return "filter text";
  return "";
}

std::string TwinBook::RowText() const {
  const auto name = [](std::int32_t key) {
    return key > 0x40000000 ? "^" + std::to_string(0x7FFFFFFF - key) : std::to_string(key);
  };
  std::string text;
  for (const auto& [key, record] : Slow.Rows) text += name(key) + "=" + std::to_string(TradeIdOf(*record)) + " ";
  return text + "next " + name(Slow.NextRowKey);
}

std::string TwinBook::TakeLine() {
  std::string text;
  for (int i = 0; i < 8; ++i) {
    const SummaryLine::Control& control = Fast.Line.Of(static_cast<SummaryValue>(i));
    const std::wstring wide = Fast.Line.TextOf(static_cast<SummaryValue>(i));
    text.append(wide.begin(), wide.end());
    if (control.Color) text += *control.Color == TradeColor::Buy ? "+" : "-";
    text += control.Changed ? "* " : " ";
  }
  Fast.Line.ClearChanged();
  return text;
}

// A cache with such books.
struct Desk {
  CQORTradeImpl Decoder;
  TradeBooks Books;
  TradeCache Cache{Decoder, Books, {}};
  std::deque<TwinBook> Twins;
  unsigned Executions = 0;

  Desk() { Cache.AutoTradeWriteCSV = false; }
  TwinBook& Open(const std::string& key) {
    TwinBook& twin = Twins.emplace_back(Cache);
    Books[key] = &twin.Fast;
    Books[key + " slowly"] = &twin.Slow;
    return twin;
  }
  void Play(unsigned number, const std::string& fields = {}) { Deliver(Cache, WireMessage(number, fields)); }
  // A live trade with a new execution.
  void Trade(std::uint32_t id, const std::string& fields) {
    Play(9101, WireU32(20008, id) + WireText(55101, std::to_string(++Executions)) + WireTerminator() + fields);
  }
};

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
  static constexpr double kPrices[] = {0, 100.25, 99.6, 1e20, 0.05, -3.5, 100.5, 101.5};
  const SlowKey& security = Of(dice, kSecurities);
  return WireText(55010, security.first) + WireText(55104, security.second) + WireText(55103, Of(dice, kSymbols)) +
         WireText(55116, Of(dice, kTimes)) + WireU8(101, dice() % 4) + WireU32(20014, Of(dice, kQuantities)) +
         WireDouble(40002, Of(dice, kPrices)) + WireDouble(40004, Of(dice, kPrices));
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
  const unsigned choice = dice() % 8;
  if (choice < 3) return book.Change(column, choice == 0 ? L"" : text);
  if (choice == 3) return book.ClearFilters();
  if (choice == 4) return book.Both([](auto& any) { any.RebuildRows(); });
  if (choice == 5) return book.Both([](auto& any) { any.CopyAllRows(); });
  if (choice == 6) {
    book.KeepTo(dice() % 3 ? Of(dice, kSecurities) : SlowKey{});
    if (dice() % 2) book.Both([](auto& any) { any.CollectSecurityRows(); });
    return;
  }
  std::vector<SortState> sort;
  for (unsigned i = dice() % 4; i > 0; --i) sort.push_back({Of(dice, kColumns), Of(dice, kStates)});
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
  ChangeOneBook(desk.Twins[dice() % desk.Twins.size()], dice);
}

TEST(BookRowsTest, AgreesWithTheSlowBook) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    Dice dice{std::mt19937(seed)};
    Desk desk;
    desk.Open("plain");
    desk.Open("security").KeepTo(kSecurities[0]);
    desk.Open("bar").Change(16, L"buy");
    desk.Open("sorted").Sort({{20, 1}});
    for (int step = 0; step < 400; ++step) {
      PlayStep(desk, dice);
      for (TwinBook& book : desk.Twins) ASSERT_EQ(book.Difference(), "") << "seed " << seed << ", step " << step;
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
  const auto refilter = [&](auto& any) { any.RefilterRow(stranger); };
  // clang-format off
  const std::tuple<const char*, std::function<void()>, const char*> kRows[] = {
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
      {"in place of 1", [&] { book.Both(refilter); }, "^6=7 ^5=6 ^4=5 ^3=8 ^2=3 ^1=2 ^0=9 next ^1"},
      {"a row already", [&] { book.Both(refilter); }, "^6=7 ^5=6 ^4=5 ^3=8 ^2=3 ^1=2 ^0=9 next ^0"},
      {"any security", [&] { desk.Play(8112); }, "^7=8 ^6=7 ^5=6 ^4=5 ^3=4 ^2=3 ^1=2 ^0=1 next ^8"},
      {"the bar alone", [&] { book.Change(20, L"1"); book.Change(20, L"20"); }, "^0=2 next ^1"},
      {"a sort under a filter ends", [&] { book.Change(20, L"1"); book.Sort({{20, 1}}); book.Sort({}); },
       "^5=8 ^4=7 ^3=6 ^2=5 ^1=3 ^0=1 next ^6"},
      {"bar and security", [&] { book.Both([](auto& any) { any.RebuildRows(); }); }, "^3=8 ^2=7 ^1=3 ^0=1 next ^4"},
      {"the next key stays", [&] { desk.Play(30022); }, "next ^4"},
  };
  // clang-format on
  for (const auto& [what, act, rows] : kRows) {
    act();
    EXPECT_EQ(book.RowText() + book.Difference(), rows) << what;
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

// An average divides by the multiplier of the last buy, of the master, or of the record that came in.
TEST(BookTotalsTest, WritesChangedControlsOnly) {
  Desk desk;
  TwinBook& book = desk.Open("book");
  const auto trade = [&](unsigned side, std::uint32_t quantity, double price, double multiplier) {
    desk.Trade(desk.Executions + 1,
               WireU8(101, side) + WireU32(20014, quantity) + WireDouble(40002, price) + WireDouble(40008, multiplier));
  };
  book.Fast.Multipliers["1"] = 2;
  // clang-format off
  const std::pair<std::function<void()>, const char*> kRows[] = {
      // Intentional: the line starts as if it showed -1, so a first net amount of -1 is not written.
      {[&] { desk.Play(8112); trade(1, 1, 1, 1); }, "1* 1.00* +* 0* 0.00* -* 1+*  "},
      {[&] { desk.Play(30022); desk.Play(8112); book.Fast.ResumTotals(); }, "0* 0.00* + 0 0.00 - 0+* 0.00+* "},
      {[&] { trade(1, 10, 2.5, 4); }, "10* 100.00* + 0 0.00 - 10+* -100.00-* "},
      {[&] { trade(3, 10, 2.5, 4); }, "10 100.00 + 0 0.00 - 10+ -100.00- "},
      {[&] { trade(1, 30, 5, 2); trade(2, 50, 3, 2); }, "40* 400.00* + 50* 300.00* - -10-* -100.00-* "},
      {[&] { book.Fast.RecountTotals(); }, "40+* 400.00+* 2.50+* 50-* 300.00-* 0.00-* -10-* -100.00-* "},
      {[&] { book.Fast.ResumTotals(); }, "40+ 400.00+ 2.50+ 50- 300.00- 0.00- -10- -100.00- "},
      {[&] { book.Fast.Selected = {"N", ""}; book.Fast.Restored = {"N", "1"}; book.Fast.ResumTotals(); },
       "40+ 400.00+ 2.50+ 50- 300.00- 0.00- -10- -100.00- "},
      {[&] { book.KeepTo({"N", "2"}); book.Fast.ResumTotals(); },
       "40+ 400.00+ 5.00+* 50- 300.00- 3.00-* -10- -100.00- "},
      {[&] { book.Fast.Selected = {"N", "2"}; book.Fast.ResumTotals(); },
       "40+ 400.00+ 5.00+ 50- 300.00- 3.00- -10- -100.00- "},
      {[&] { book.KeepTo({}); trade(2, 0xFFFFFFF6u, 30, 4); },
       "40+ 400.00+ 2.50+* 40-* -900.00-* -5.62-* 0+* -1300.00-* "},
      {[&] { trade(1, 0x7FFFFFFF, 0, 4); },
       "-2147483609+* 400.00+ -0.00+* 40- -900.00- -5.62-* 2147483647+* -1300.00- "},
      {[&] { desk.Play(30022); book.Fast.RecountTotals(); }, "0+* 0.00+* 0.00+* 0-* 0.00-* 0.00-* 0+* 0.00+* "},
  };
  // clang-format on
  for (const auto& [act, line] : kRows) {
    act();
    EXPECT_EQ(book.TakeLine() + book.Difference(), line);
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
