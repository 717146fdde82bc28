#include "grid_ops/rows/record_search.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>
#include <random>

#include "foundations/text_tools.h"
#include "grid_ops/rows/book_rows.h"
#include "platform/locale.h"
#include "tests/grid_ops/slow_book.h"
#include "tests/support/wire_bytes.h"

namespace {

using std::literals::operator""sv;

const std::string kServer = "Default";

// As the grid shows it.
bool Shows(const TradeRecord& record, int column, const std::wstring& text) {
  std::wstring shown;
  SetShownText(shown, kServer, record, column);
  return !text.empty() && LowerWide(shown).find(LowerWide(text)) != std::wstring::npos;
}

TEST(RecordSearch, FindsShownTexts) {
  // The column, the text, and the bytes of the field in which it is found and is not.
  // clang-format off
  const std::tuple<int, std::wstring, std::vector<std::string>, std::vector<std::string>> kRows[] = {
      {12, L"BAn", {"XBANKX", "xbankx", "ban"}, {"", "ba n", "ba", "an"}}, {12, L"", {}, {"", "x"}},
      {12, L"b", {"B", "ab"}, {"", "a"}}, {12, L" a", {" a", "b A"}, {"a", "a "}}, {12, L"k or b", {"K OR B"}, {"b"}},
      {12, L"m\xFCL", {"M\xDCLLER", "m\xFCl"}, {"mull"}}, {12, L"\x178", {"\x9F", "\xFF"}, {"Y"}},
      {12, L"\x416", {}, {"", "\xC6"}}, {12, L"a\x416z", {}, {"az", "a\xC6z"}},
      {12, std::wstring(32, L'r'), {std::string(32, 'R')}, {std::string(31, 'R')}},
      // Bytes behind the end of a text.
      {12, L"xy", {"aXY"}, {std::string("a\0xy", 4)}},
      {23, std::wstring(65, L'r'), {std::string(65, 'R')}, {std::string(64, 'R')}},
      {16, L"bo", {"\7", std::string(1, '\0')}, {"\1", "\2"}}, {17, L"limit", {"\2", "\x52"}, {"\3", "\5"}},
      {28, L"delivery", {BytesOfValue(2)}, {BytesOfValue(0x102), BytesOfValue(1)}},
      {28, L"*", {BytesOfValue(0), BytesOfValue(4), BytesOfValue(255), BytesOfValue(0x100)}, {BytesOfValue(3)}},
      {29, L"none", {"\x8"}, {"\7"}}, {0, L"FAU", {""}, {}}, {0, L"faux", {}, {""}},
      {7, L"29-1", {"20240229-10:15:00"}, {""}}, {36, L"10:1", {"20240229-10:15:00", "10:1"}, {"20240229-00:10"}},
      {36, L"-1", {"20240229-10:15:0"}, {"20240229-10:15:00"}}, {36, L"09", {}, {"20240229-10:15:009", ""}},
      {18, L"50", {BytesOfValue(1500), BytesOfValue(50)}, {BytesOfValue(1600)}}, {18, L"0x", {}, {BytesOfValue(1500)}},
      {18, L"-2147483648", {BytesOfValue(0x80000000u)}, {BytesOfValue(0x7FFFFFFF)}}, {18, L"0", {BytesOfValue(0)}, {}},
      {2, L"-1", {BytesOfValue(0xFFFFFFFFu)}, {BytesOfValue(1)}}, {2, L"123456789012", {}, {BytesOfValue(1234567890)}},
      {20, L".05", {BytesOfValue(100.05)}, {BytesOfValue(0.5), BytesOfValue(0.0)}}, {20, L"E+2", {BytesOfValue(1e20)}, {}},
      {20, L"NAN", {BytesOfValue(std::nan(""))}, {BytesOfValue(1.0)}}, {20, L"0", {BytesOfValue(-0.0)}, {}},
      {21, L"2450.5", {BytesOfValue(12450.5)}, {BytesOfValue(2450.4)}},
      {20, L"inf", {BytesOfValue(std::numeric_limits<double>::infinity())}, {BytesOfValue(1e300)}},
      {34, L"1", {}, {BytesOfValue(std::uint16_t{1})}}, {35, L"p", {}, {"PART01"}}, {37, L"x", {}, {""}}, {-1, L"x", {}, {""}},
  };
  // clang-format on
  for (const auto& [column, text, holding, others] : kRows) {
    RecordSearch search(text, std::span(&column, 1), kServer);
    const auto check = [&, column = column, &text = text](const std::string& bytes, bool holds) {
      SCOPED_TRACE(testing::Message() << column << testing::PrintToString(text) << testing::PrintToString(bytes));
      TradeRecord record{};
      PutCell(record, column, bytes);
      EXPECT_EQ(Shows(record, column, text), holds);
      EXPECT_EQ(search.Holds(record), holds);
      EXPECT_EQ(search.Holds(record, column), holds);
    };
    for (const std::string& bytes : holding) check(bytes, true);
    for (const std::string& bytes : others) check(bytes, false);
  }
}

// Few characters, so that texts are found by chance, and bytes behind the ends of texts.
class RandomDay {
 public:
  explicit RandomDay(unsigned seed) : Dice(seed) {}

  std::size_t Below(std::size_t end) { return Dice() % end; }

  TradeRecord Record() {
    TradeRecord record{};
    for (int column = 0; column < kTradeColumnCount; ++column) {
      const ColumnField& field = kTradeColumns[column].Value;
      if (field.Form == ColumnField::Kind::Text && column != TradeColumnIndex("colTime"))
        PutCell(record, column, Text(Below(3) == 0 ? 0 : field.Size));
      else if (field.Form == ColumnField::Kind::Double)
        PutCell(record, column, BytesOfValue(kNumbers[Below(std::size(kNumbers))]));
      else if (field.Size == 4)
        PutCell(record, column, BytesOfValue(static_cast<std::uint32_t>(Dice() >> Below(32))));
      else if (field.Size == 1)
        PutCell(record, column, BytesOfValue(static_cast<std::uint8_t>(Below(12))));
    }
    std::memset(record.Text55107, 'a', sizeof record.Text55107);
    return record;
  }

  // A part of a shown text, or characters.
  std::wstring Wanted(const TradeRecord& record) {
    std::wstring text;
    SetShownText(text, kServer, record, static_cast<int>(Below(kTradeColumnCount)));
    if (text.empty() || Below(3) == 0) text = CodePageToWide(Text(3)).substr(0, 3);
    const std::size_t from = Below(text.size());
    text = text.substr(from, 1 + Below(6));
    return Below(2) == 0 ? LowerWide(text) : text;
  }

 private:
  static constexpr std::string_view kCharacters = "aAbB012- .\xDC\xFC\x9F\0\0"sv;
  static constexpr double kNumbers[] = {0, 1, 20.5, -0.1, 1e20, 12.12, 1e-7, 0.1 + 0.2};

  std::string Text(std::size_t size) {
    std::string text;
    for (std::size_t i = 0; i < size; ++i) text += kCharacters[Below(kCharacters.size())];
    return text;
  }

  std::mt19937 Dice;
};

TEST(RecordSearch, FindsWhatTheGridShows) {
  for (unsigned seed = 1; seed <= 24; ++seed) {
    RandomDay day(seed);
    std::vector<TradeRecord> records;
    for (int i = 0; i < 20; ++i) records.push_back(day.Record());
    std::vector<int> columns(kTradeColumnCount);
    std::iota(columns.begin(), columns.end(), 0);
    if (seed % 2 == 0) std::erase_if(columns, [&](int) { return day.Below(3) != 0; });
    for (int i = 0; i < 30; ++i) {
      const std::wstring wanted = day.Wanted(records[day.Below(records.size())]);
      RecordSearch search(wanted, columns, kServer);
      for (const TradeRecord& record : records) {
        const bool shown = std::ranges::any_of(columns, [&](int column) { return Shows(record, column, wanted); });
        ASSERT_EQ(search.Holds(record), shown) << "seed " << seed << " " << testing::PrintToString(wanted);
        for (const int column : columns)
          ASSERT_EQ(search.Holds(record, column), Shows(record, column, wanted)) << seed << " " << column;
      }
    }
  }
}

TEST(RecordSearch, FindsRowsInBothDirections) {
  const TradeBooks noBooks;
  CQORTradeImpl decoder;
  const TradeCache cache(decoder, noBooks, ".");
  BookRows book(cache);
  std::vector<TradeRecord> records(1000);
  for (std::size_t i = 0; i < records.size(); ++i) records[i].VELDTradeID = static_cast<std::uint32_t>(5000 + i);
  for (int i = 0; i < 1000; ++i)  // two runs; one row has no record
    book.Rows.Store(i < 300 ? i : i + 10, i == 7 ? nullptr : &records[static_cast<std::size_t>(i)]);
  const int column = TradeColumnIndex("colVELDTradeID");
  const std::tuple<const wchar_t*, int, int, int, int> kRows[] = {
      {L"5600", 0, 1, 1000, 600},  {L"5600", 600, 1, 1, 600},     {L"5600", 601, 1, 399, -1},
      {L"5600", 0, 1, 600, -1},    {L"5600", 999, -1, 1000, 600}, {L"5600", 600, -1, 601, 600},
      {L"5600", 599, -1, 600, -1}, {L"5007", 0, 1, 1000, -1},     {L"5600", 999, -1, 399, -1},
      {L"5", 0, 1, 1000, 0},       {L"5", 999, -1, 1000, 999},    {L"299", 999, -1, 1000, 299},
      {L"530", 0, 1, 1000, 300},   {L"52", 299, -1, 100, 299},    {L"5256", 0, 1, 1000, 256},
      {L"5", 0, 1, 0, -1},
  };
  for (const auto& [text, row, step, count, found] : kRows) {
    RecordSearch search(text, std::span(&column, 1), kServer);
    EXPECT_EQ(FindRow(book, search, row, step, count), found) << row << " " << step << " " << count;
  }
}

}  // namespace
