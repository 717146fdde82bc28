#include "grid_ops/columns/cell_text.h"

#include <gtest/gtest.h>

#include <cmath>

#include "grid_ops/exports/trade_file_text.h"
#include "tests/foundations/time_zone.h"
#include "tests/grid_ops/export_sample.h"

namespace {

using std::literals::operator""sv;

// The cells of the columns, one column after the other, and of a column that there is not.
template <typename Cell>
std::string CellsOf(Cell cell) {
  std::string cells;
  for (int column = 0; column < 38; ++column) cells.append(cell(column)).append("|");
  return cells;
}

TEST(CellText, PrintsEveryColumnInItsFiveShapes) {
  const TradeRecord record = FullTrade();
  CellScratch scratch;
  EXPECT_EQ(CellsOf([&](int column) { return ShownText("Default", record, column, scratch); }),
            "Default|USER1|-2130574588|16910597|4711|1100000000012345|XTRADE-77|20240229-10:15:00|20240229-10:15:01|"
            "20240229-10:15:02|NSEFO|35001|ABCD  |29FEB2024|OPTSTK|CE|Sell|StopLimit|150|50|101.75|2450.5|CLIENT07|"
            "ref, first|MGR|MEM12|68|400123456789|INTRADAY|CloseYesterday|0.25|PANCD1234F|T-24|ALGO9|||10:15:00||");
  EXPECT_EQ(CellsOf([&](int column) { return TradeCellText("SRV", record, column, ""); }),
            "SRV|USER1|-2130574588|16910597|4711|1100000000012345|XTRADE-77|20240229-10:15:00|20240229-10:15:01|"
            "20240229-10:15:02|NSEFO|35001|ABCD|29FEB2024|OPTSTK|CE|Sell|StopLimit|150|50|101.750000|2450.500000|"
            "CLIENT07|\"ref, first\"|MGR|MEM12|68|400123456789|INTRADAY|CloseYesterday|0.25|PANCD1234F|T-24|ALGO9|515|"
            "PART01|||");
  EXPECT_EQ(
      CellsOf([&](int column) { return TradeCellTextFO({}, "SRV", record, column, "else"); }),
      "SRV|USER1|-2130574588|16910597  |4711|1100000000012345|XTRADE-77|20240229-10:15:00|29 FEB 2024 10:15:01|"
      "29 FEB 2024 10:15:02|NSEFO|35001|ABCD|29FEB2024|OPTSTK|CE|2|StopLimit|150      |50|      101.75|   2450.50|"
      "CLIENT07  |\"ref, first\"|MGR|MEM12       |68|400123456789|INTRADAY|CLOSE|0.25|PANCD1234F|T-24|ALGO9|515|"
      "PART01|else|else|");
  EXPECT_EQ(CellsOf([&](int column) { return TradeCellTextCM({}, "SRV", record, column, "else"); }),
            "SRV|USER1|-2130574588|16910597  |4711|1100000000012345|XTRADE-77       |20240229-10:15:00|"
            "29 FEB 2024 10:15:01|29 FEB 2024 10:15:02|NSEFO|35001|ABCD|29FEB2024|||2|StopLimit|150      |50|"
            "      101.75||CLIENT07  |\"ref, first\"|MGR|MEM12       |68|400123456789|INTRADAY|N|PANCD1234F|PANCD1234F|"
            "T-24|ALGO9|515|PART01|else|else|");
  EXPECT_EQ(TradeCellText("SRV", record, -1, ""), "");
  EXPECT_EQ(TradeCellTextFO({}, "SRV", record, -1, "else"), "else");
}

// What a dealer sees without a stored profile.
TEST(TradeColumns, HaveTheirWidthsAndSides) {
  std::string columns;
  for (const TradeColumn& column : kTradeColumns)
    columns += std::to_string(column.WidthPx) + "LRC"[static_cast<int>(column.Align)] + (column.Visible ? " " : "- ");
  EXPECT_EQ(columns,
            "60L- 60L- 53R 53R 70R 60R 60R 60L 60R 150R 48L 100R 47L 69C 80L 80L 40L 55L 47R 45R 65R 80R 80L "
            "150L 150L 150L 150L 150L 150L 150L 50R 150L 150R 150L 120L 150L 60L ");
}

TEST(CellText, KeepsItsEdges) {
  TradeRecord record{};
  EXPECT_EQ(TradeCellText("", record, TradeColumnIndex("colReferenceText"), ""), "\"\"");
  PutText(record.OrderTime, "20240229-10:15:0");
  EXPECT_EQ(TradeCellValue("", record, TradeColumnIndex("colTime")), CellValue("20240229-10:15:0"sv));
  PutText(record.Symbol, " A\t  ");
  EXPECT_EQ(TradeCellText("", record, TradeColumnIndex("colSymbol"), ""), " A\t");
  record.AlgoCategory = 0xFFFE;
  EXPECT_EQ(TradeCellText("", record, TradeColumnIndex("colAlgoCategory"), ""), "-2");
}

TEST(CellText, ShowsNumbersWithUpToFifteenDigits) {
  TradeRecord record{};
  std::wstring text = L"the text of the cell before", all;
  for (const double price : {1234.5, 100.0, -0.0, 0.1 + 0.2, 1 / 3.0, 9999999999.7, 1e20, -1e-5, -std::nan("")}) {
    record.Price = price;
    SetShownText(text, "", record, TradeColumnIndex("colPrice"));
    all += text + L" ";
  }
  EXPECT_EQ(all, L"1234.5 100 0 0.3 0.333333333333333 9999999999.7 1e+20 -1e-05 nan ");
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

}  // namespace
