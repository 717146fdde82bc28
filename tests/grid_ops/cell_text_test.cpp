#include "grid_ops/columns/cell_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <memory>
#include <random>
#include <sstream>

#include "grid_ops/exports/trade_file_text.h"
#include "tests/foundations/time_zone.h"
#include "tests/grid_ops/export_sample.h"

namespace {

using std::literals::operator""sv;

struct CellRow {
  CellValue Value;
  const char* Plain;
  const char* FO;
  const char* CM;
};

const CellRow kCells[] = {
    {"Default"sv, "SRV", "SRV", "SRV"},
    {"USER1"sv, "USER1", "USER1", "USER1"},
    {-2130574588, "-2130574588", "-2130574588", "-2130574588"},
    {16910597, "16910597", "16910597  ", "16910597  "},
    {4711, "4711", "4711", "4711"},
    {"1100000000012345"sv, "1100000000012345", "1100000000012345", "1100000000012345"},
    {"XTRADE-77"sv, "XTRADE-77", "XTRADE-77", "XTRADE-77       "},
    {"20240229-10:15:00"sv, "20240229-10:15:00", "20240229-10:15:00", "20240229-10:15:00"},
    {"20240229-10:15:01"sv, "20240229-10:15:01", "29 FEB 2024 10:15:01", "29 FEB 2024 10:15:01"},
    {"20240229-10:15:02"sv, "20240229-10:15:02", "29 FEB 2024 10:15:02", "29 FEB 2024 10:15:02"},
    {"NSEFO"sv, "NSEFO", "NSEFO", "NSEFO"},
    {"35001"sv, "35001", "35001", "35001"},
    {"ABCD  "sv, "ABCD", "ABCD", "ABCD"},
    {"29FEB2024"sv, "29FEB2024", "29FEB2024", "29FEB2024"},
    {"OPTSTK"sv, "OPTSTK", "OPTSTK", ""},
    {"CE"sv, "CE", "CE", ""},
    {"Sell"sv, "Sell", "2", "2"},
    {"StopLimit"sv, "StopLimit", "StopLimit", "StopLimit"},
    {150, "150", "150      ", "150      "},
    {50, "50", "50", "50"},
    {101.75, "101.750000", "      101.75", "      101.75"},
    {2450.5, "2450.500000", "   2450.50", ""},
    {"CLIENT07"sv, "CLIENT07", "CLIENT07  ", "CLIENT07  "},
    {"ref, first"sv, "\"ref, first\"", "\"ref, first\"", "\"ref, first\""},
    {"MGR"sv, "MGR", "MGR", "MGR"},
    {"MEM12"sv, "MEM12", "MEM12       ", "MEM12       "},
    {68, "68", "68", "68"},
    {"400123456789"sv, "400123456789", "400123456789", "400123456789"},
    {"INTRADAY"sv, "INTRADAY", "INTRADAY", "INTRADAY"},
    {"CloseYesterday"sv, "CloseYesterday", "CLOSE", "N"},
    {0.25, "0.25", "0.25", "PANCD1234F"},
    {"PANCD1234F"sv, "PANCD1234F", "PANCD1234F", "PANCD1234F"},
    {"T-24"sv, "T-24", "T-24", "T-24"},
    {"ALGO9"sv, "ALGO9", "ALGO9", "ALGO9"},
    {{}, "515", "515", "515"},
    {{}, "PART01", "PART01", "PART01"},
    {"10:15:00"sv, "", "else", "else"},
    {{}, "", "else", "else"},  // no column
};

std::string TextOf(const CellValue& value) {
  std::ostringstream text;
  std::visit(
      [&](const auto& content) {
        if constexpr (requires { text << content; }) text << content;
      },
      value);
  return text.str();
}

TEST(CellText, PrintsEveryColumnInItsFiveShapes) {
  const TradeRecord record = FullTrade();
  ASSERT_EQ(std::size(kCells), 38U);
  for (int column = 0; column < 38; ++column) {
    SCOPED_TRACE(column);
    const CellRow& cell = kCells[column];
    CellScratch scratch;
    EXPECT_EQ(TradeCellValue("Default", record, column), cell.Value);
    EXPECT_EQ(ShownText("Default", record, column, scratch), TextOf(cell.Value));
    EXPECT_EQ(TradeCellText("SRV", record, column, ""), cell.Plain);
    EXPECT_EQ(TradeCellTextFO({}, "SRV", record, column, "else"), cell.FO);
    EXPECT_EQ(TradeCellTextCM({}, "SRV", record, column, "else"), cell.CM);
  }
  EXPECT_EQ(TradeCellText("SRV", record, -1, ""), "");
  EXPECT_EQ(TradeCellTextFO({}, "SRV", record, -1, "else"), "else");
}

TEST(CellText, KeepsItsEdges) {
  TradeRecord record{};
  EXPECT_EQ(TradeCellValue("", record, TradeColumnIndex("colSide")), CellValue("Both"sv));
  EXPECT_EQ(TradeCellText("", record, TradeColumnIndex("colProductType"), ""), "*");
  EXPECT_EQ(TradeCellText("", record, TradeColumnIndex("colReferenceText"), ""), "\"\"");
  PutText(record.OrderTime, "20240229-10:15:0");
  EXPECT_EQ(TradeCellValue("", record, TradeColumnIndex("colTime")), CellValue("20240229-10:15:0"sv));
  PutText(record.Symbol, " A\t  ");
  EXPECT_EQ(TradeCellText("", record, TradeColumnIndex("colSymbol"), ""), " A\t");
  record.AlgoCategory = 0xFFFE;
  EXPECT_EQ(TradeCellText("", record, TradeColumnIndex("colAlgoCategory"), ""), "-2");
}

TEST(CellText, ShowsNumbersWithUpToFifteenDigits) {
  const std::pair<double, const wchar_t*> rows[] = {{1234.5, L"1234.5"},
                                                    {100, L"100"},
                                                    {-0.0, L"0"},
                                                    {0.1 + 0.2, L"0.3"},
                                                    {1 / 3.0, L"0.333333333333333"},
                                                    {9999999999.7, L"9999999999.7"},
                                                    {1e20, L"1e+20"},
                                                    {-1e-5, L"-1e-05"},
                                                    {-std::nan(""), L"nan"}};
  TradeRecord record{};
  std::wstring text = L"the text of the cell before";
  for (const auto& [price, expected] : rows) {
    record.Price = price;
    SetShownText(text, "", record, TradeColumnIndex("colPrice"));
    EXPECT_EQ(text, expected);
  }
  SetShownText(text, "S\x80", record, TradeColumnIndex("colServer"));
  EXPECT_EQ(text, L"S\x20AC");
}

TEST(CellText, DateFormatChangesTradeTimeAlone) {
  const ZoneForTest zone("IST-5:30");
  const TradeRecord record = FullTrade();
  EXPECT_EQ(TradeCellText("", record, TradeColumnIndex("colExchangeTradeTime"), "dd/MM/yyyy HH:mm:ss"),
            "29/02/2024 15:45:02");
  EXPECT_EQ(TradeCellText("", record, TradeColumnIndex("colExchangeTradeTime"), "no pattern"), "29/02/2024");
  EXPECT_EQ(TradeCellText("", record, TradeColumnIndex("colOrderTime"), "dd/MM/yyyy"), "20240229-10:15:00");
}

std::string Fixed(double value, Decimals decimals) {
  char text[kLongestFixed];
  return {text, PrintFixed(text, value, decimals)};
}

TEST(LineBuffer, PrintsFixedDecimalsLikePrintf) {
  std::vector<double> values = {0,      -0.0, 0.125, 2.675,  0.005,       0.015, 1.005,   0.995,    999999999.995,
                                -0.004, 1e9,  5e-7,  4.5e-7, 123456.0005, 1e22,  1.0 / 3, -1234.565};
  std::mt19937_64 random(20261121);
  for (int i = 0; i < 20'000; ++i) {
    const double whole = static_cast<double>(static_cast<std::int64_t>(random() >> (8 + random() % 50)));
    values.insert(values.end(), {whole / 100, -whole / 1e6, whole / 200, whole / 3, std::sqrt(whole) / 1e5});
  }
  for (const double value : values) {
    char expected[400];
    std::snprintf(expected, sizeof expected, "%.2f", value);
    ASSERT_EQ(Fixed(value, Decimals::Two), expected);
    std::snprintf(expected, sizeof expected, "%.6f", value);
    ASSERT_EQ(Fixed(value, Decimals::Six), expected);
  }
  const double huge = std::numeric_limits<double>::max(), infinite = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Fixed(huge, Decimals::Two).substr(0, 16), "1797693134862315");
  EXPECT_EQ(Fixed(-huge, Decimals::Six).size(), 127U);
  EXPECT_EQ(Fixed(-infinite, Decimals::Two), "-inf");
  EXPECT_EQ(Fixed(-std::nan(""), Decimals::Six), "nan");
}

// Exact heap blocks, so that a sanitizer sees an overread.
TEST(LineBuffer, FieldEndsAtItsNulOrItsSize) {
  for (std::size_t size = 0; size <= 25; ++size)
    for (std::size_t length = 0; length <= size; ++length) {
      const auto field = std::make_unique<char[]>(size);
      std::fill_n(field.get(), size, '\x80');
      if (length < size) field[length] = '\0';
      char text[40];
      ASSERT_EQ(std::string(text, PrintField(text, field.get(), size)), std::string(length, '\x80')) << size;
    }
}

}  // namespace
