#include "grid_ops/rows/column_filter.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/grid_ops/slow_book.h"
#include "tests/support/wire_bytes.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

void Check(int column, const std::wstring& filter, const std::string& cell, bool matches) {
  SCOPED_TRACE(testing::Message() << column << " " << testing::PrintToString(filter) << testing::PrintToString(cell));
  TradeRecord record{};
  PutCell(record, column, cell);
  EXPECT_EQ(MatchFilter("Default", record, column, filter), matches ? 1 : 0);
  EXPECT_EQ(SlowMatch("Default", record, column, filter), matches);
}

TEST(ColumnFilterTest, ComparesTexts) {
  // The column, the filter, and the bytes in the record that it accepts and refuses.
  // clang-format off
  const std::tuple<int, std::wstring, std::vector<std::string>, std::vector<std::string>> kRows[] = {
      {12, L"BAn", {"XBANKX", "xbankx"}, {"", "ba n"}}, {12, L" bank x ", {"bank x"}, {"bankx"}},
      {12, L"", {"", "x"}, {}}, {12, L"  ", {"", "x"}, {}},
      // Intentional: the first word excludes rows.
      {12, L"abc OR def", {"def", "DEF"}, {"abc def", "abc", ""}},
      {12, L"ab or cd or ef", {"ef"}, {"cd ef", "ab ef", "ab", "cd"}},
      {12, L"\tab\xA0or \x85 cd\n", {"cd"}, {"ab cd", "ab"}},
      // "or" inside a word counts.
      {12, L"order", {"der", "order"}, {"or", "ord"}}, {12, L"border", {"der"}, {"border", "b"}},
      {12, L"oorx", {"x"}, {"ox", "oorx"}}, {12, L"oror x", {"x"}, {"or", ""}},
      // A filter that ends in "or".
      {12, L"or", {}, {"", "or"}}, {12, L"abc or ", {}, {"", "x", "abc"}}, {12, L"ooor", {}, {"", "o", "x"}},
      {16, L"buy or sell", {"\2"}, {"\1", "\7"}}, {16, L"B", {"\1", "\7", std::string(1, '\0')}, {"\2"}},
      {16, L"b or ", {}, {"\1", "\2"}}, {17, L"limit", {"\2", "\x52"}, {"\3", "\5"}}, {17, L" ", {"\3", "\5"}, {}},
      {28, L"delivery", {BytesOfValue(2)}, {BytesOfValue(0x102), BytesOfValue(1)}},
      {28, L"*", {BytesOfValue(0), BytesOfValue(4)}, {BytesOfValue(3)}}, {29, L"none", {"\x8"}, {"\7"}},
      // Letters outside ASCII, and outside the code page.
      {12, L"m\xFCL", {"M\xDCLLER", "m\xFCl"}, {"mull"}}, {12, L"\xD7", {"\xD7"}, {"\xF7"}},
      {12, L"\x178", {"\x9F", "\xFF"}, {}}, {12, L"\x416", {}, {"a", "\xC6"}}, {12, L"\x416 or a", {"a"}, {"b"}},
      {12, L"\xE4 or a", {"a"}, {"\xC4\x61"}}, {0, L"FAU", {""}, {}}, {0, L"x", {}, {""}},
      {7, L"29-", {"20240229-10:15:00"}, {}}, {36, L"29-", {"20240229-10:15:0"}, {"20240229-10:15:00"}},
      {36, L"10:15:00", {"20240229-10:15:009"}, {"20240229-10:15"}},
      {23, std::wstring(64, L'r'), {std::string(64, 'R')}, {std::string(63, 'R')}},
      {18, L"50", {BytesOfValue(1500)}, {BytesOfValue(1600)}}, {18, L"0x", {}, {BytesOfValue(1500)}},
      {18, L"-1", {BytesOfValue(0xFFFFFFFFu)}, {BytesOfValue(1)}}, {2, L"-2147483648", {BytesOfValue(0x80000000u)}, {}},
      // Columns that no grid shows.
      {34, L"x", {"\1\2"}, {}}, {35, L"or", {"abc"}, {}}, {37, L"x", {""}, {}}, {-1, L"x", {""}, {}},
  };
  // clang-format on
  for (const auto& [column, filter, accepted, refused] : kRows) {
    for (const std::string& cell : accepted) Check(column, filter, cell, true);
    for (const std::string& cell : refused) Check(column, filter, cell, false);
  }
}

TEST(ColumnFilterTest, ComparesNumbers) {
  // clang-format off
  const std::tuple<int, std::wstring, std::vector<double>, std::vector<double>> kRows[] = {
      {20, L"1234.5", {1234.5, 51234.56}, {1234.05}}, {20, L".", {0.5}, {1234, 1e20}},
      {20, L"50", {0.50001}, {0.5, 1234.5}}, {20, L"0.3", {0.1 + 0.2}, {0.29}}, {20, L"30", {30}, {0.1 + 0.2}},
      {20, L"0.333333333333333", {1 / 3.0}, {0.33333333333333}}, {20, L"0.3333333333333333", {}, {1 / 3.0}},
      {20, L"1E+20", {1e20}, {1e14}}, {20, L"1e-05", {1e-5}, {1e-4}},
      {20, L"0.05", {0.05, 100.05, 0.0512}, {0.5, 0.005}}, {20, L"99.7", {9999999999.7}, {9999999999.07}},
      {20, L"01", {}, {9999999999.7, 9876543210.1}},
      // Zero and NaN have no sign.
      {20, L"-", {-3.5, -1e-300}, {-0.0, 0.0, -kNaN}}, {20, L"0", {-0.0, 0.0}, {kNaN}},
      {20, L"nan", {kNaN, -kNaN}, {kInfinity}}, {30, L"0.2 or 0.5", {0.5}, {0.25, 0.2}},
      {21, L"100", {99.6, 100, 100.5}, {99.4, 100.6, -100, 101}}, {21, L"102", {101.5, 102.5}, {100.5}},
      {21, L"-2", {-1.5, -2.5}, {-1.4, 2}}, {21, L"100.9", {100}, {101}}, {21, L"= 100 or 200", {100}, {200, 0}},
      {21, L" <>= ", {0, 5, kNaN}, {}}, {21, L"<100", {99, -5}, {99.6, 100, 101}}, {21, L"<=100", {99}, {100, 101}},
      {21, L">=100", {101}, {99, 100}}, {21, L"100>", {101}, {99, 100}}, {21, L"<>100", {99}, {100, 101}},
      {21, L">!100", {1}, {0}},
      // A leading ! leaves the number 0.
      {21, L"!100", {100, 1}, {0, 0.4}}, {21, L"100!", {0, 99}, {100}}, {21, L"abc", {0}, {1}},
      {21, L"99999999999", {2147483647.4}, {2147483647.5, 0}}, {21, L"-2147483648", {-2147483648.5}, {-2147483648.6}},
      // Values outside 32 bits count as 0.
      {21, L"0", {2147483647.5, -1e20, kNaN, -kInfinity}, {1}},
  };
  // clang-format on
  for (const auto& [column, filter, accepted, refused] : kRows) {
    for (const double value : accepted) Check(column, filter, BytesOfValue(value), true);
    for (const double value : refused) Check(column, filter, BytesOfValue(value), false);
  }
}

}  // namespace
