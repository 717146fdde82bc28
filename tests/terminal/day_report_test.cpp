#include "terminal/report/day_report.h"

#include <gtest/gtest.h>

#include "terminal/common/errors.h"
#include "tests/terminal/test_files.h"

namespace {

class DayReportTest : public testing::Test {
 protected:
  void Add(const char* exchange, const char* security, const char* client, TradeSide side, std::uint32_t quantity,
           double price) {
    TradePrint print;
    const auto copy = [](const std::string& text, auto& to) { text.copy(to, sizeof to - 1); };
    copy(exchange, print.Exchange);
    copy(security, print.SecurityID);
    copy(client, print.ClientID);
    copy("20131007-09:30:0" + std::to_string(Number % 10), print.Time);
    copy(std::to_string(++Number), print.ExchangeTradeID);
    print.Number = Number;
    print.Side = static_cast<std::uint8_t>(side);
    print.Quantity = quantity;
    print.Price = price;
    print.Multiplier = 10;
    Ledger.OnTradeSent(print);
  }

  TradeLedger Ledger;
  std::uint32_t Number = 0;
};

// The text between the two, without them.
std::string Between(const std::string& text, const std::string& from, const std::string& to) {
  const std::size_t begin = text.find(from) + from.size();
  return text.substr(begin, text.find(to, begin) - begin);
}

// Tags become bars, empty cells are left out.
std::string CellsOf(const std::string& html) {
  std::string cells;
  bool inTag = false;
  for (const char c : html) {
    if (c == '<') inTag = true;
    if (!inTag && c != '\n') cells += c;
    if (c == '>') inTag = false;
    if (c == '>' && !cells.ends_with('|')) cells += '|';
  }
  return cells;
}

TEST_F(DayReportTest, SumsByExchangeClientAndSecurity) {
  Add("A", "GOLD", "C1", TradeSide::Buy, 1000, 2);
  Add("A", "GOLD", "C2", TradeSide::Sell, 400, 3);
  Add("A", "GOLD", "C1", TradeSide::Buy, 1, 2.5);
  Add("B", "<X&\"Y>", "", TradeSide::Sell, 5, 1);
  Ledger.OnDownloadEndSent();
  const std::string html = DayReportHtml(Ledger, {.Day = "a<b"});
  EXPECT_NE(html.find("<title>Day report: a&lt;b</title>"), std::string::npos);
  EXPECT_NE(html.find("<p>4 trades in 2 securities, from 2013-10-07 09:30:00 to 2013-10-07 09:30:03."),
            std::string::npos);
  EXPECT_EQ(CellsOf(Between(html, "By exchange</h2>", "</table>")),
            "|Exchange|Trades|Bought|Sold|Buy amount|Sell amount|Realised|Open|Total|"
            "A|3|1,001|400|20,025.00|12,000.00|+4,000.00|+3,000.00|+7,000.00|"
            "B|1|0|5|0.00|50.00|0.00|0.00|0.00|"
            "All|4|1,001|405|20,025.00|12,050.00|+4,000.00|+3,000.00|+7,000.00|");
  EXPECT_EQ(CellsOf(Between(html, "By client</h2>", "</table>")),
            "|Client|Trades|Bought|Sold|Buy amount|Sell amount|Realised|Open|Total|"
            "(none)|1|0|5|0.00|50.00|0.00|0.00|0.00|"
            "C1|2|1,001|0|20,025.00|0.00|0.00|+5,000.00|+5,000.00|"
            "C2|1|0|400|0.00|12,000.00|0.00|+2,000.00|+2,000.00|"
            "All|4|1,001|405|20,025.00|12,050.00|0.00|+7,000.00|+7,000.00|")
      << "of their own trades: the same total";
  EXPECT_EQ(CellsOf(Between(html, "Positions</h2>", "</table>")),
            "|Security|Symbol|Trades|Bought|Sold|Net|Average|Last|Realised|Open|Total|"
            "A GOLD|3|1,001|400|601|2.0008|2.50|+4,000.00|+3,000.00|+7,000.00|"
            "B &lt;X&amp;&quot;Y&gt;|1|0|5|-5|1.00|1.00|0.00|0.00|0.00|"
            "All|4|1,001|405|596|+4,000.00|+3,000.00|+7,000.00|");
  EXPECT_LT(html.find("<figure id=\"s0\"><svg"), html.find("<figure id=\"s1\"><svg"));
  EXPECT_EQ(html.find("<X&"), std::string::npos);
}

TEST_F(DayReportTest, HasAPageForADayWithoutTrades) {
  Add("A", "GOLD", "C1", TradeSide::Buy, 0, 2);
  Ledger.OnDownloadEndSent();
  const std::string html = DayReportHtml(Ledger, {.Day = "d", .Method = CostMethod::FirstInFirstOut});
  EXPECT_NE(html.find("<p>0 trades in 0 securities. Realised and open by first in, first out.</p>"), std::string::npos)
      << "busted";
  EXPECT_EQ(html.find("<figure"), std::string::npos);
}

TEST_F(DayReportTest, TellsWhyItCannotBeWritten) {
  const std::filesystem::path file = TestFolder() / "none" / "report.html";
  try {
    SaveDayReport(Ledger, {.Day = "d"}, file);
    FAIL() << "written";
  } catch (const TerminalError& error) {
    EXPECT_TRUE(std::string(error.what()).starts_with(PathText(file) + ": cannot be written: ")) << error.what();
  }
}

}  // namespace
