#include "terminal/report/day_report.h"

#include <algorithm>
#include <map>
#include <numeric>

#include "foundations/text_tools.h"
#include "platform/files.h"
#include "terminal/chart/chart_model.h"
#include "terminal/chart/svg_chart.h"
#include "terminal/common/errors.h"
#include "terminal/common/numbers.h"
#include "terminal/positions/position_table.h"
#include "terminal/report/html_table.h"

namespace {

constexpr ChartSize kChart{960, 260};
constexpr int kMoneyDecimals = 2;

std::string Count(std::uint64_t count) {
  return WideToUtf8(CountText(count));
}
std::string Quantity(std::int64_t quantity) {
  return WideToUtf8(QuantityText(quantity));
}
std::string Price(std::optional<double> price) {
  return price ? WideToUtf8(PriceText(*price)) : std::string();
}
std::string Money(double amount) {
  return WideToUtf8(DecimalText(amount, kMoneyDecimals));
}
// With its sign; none for an amount that rounds to 0.
std::string Result(double amount) {
  const std::string text = Money(amount);
  const bool isZero = text.find_first_of("123456789") == std::string::npos;
  return (amount > 0 && !isZero ? "+" : "") + text;
}

std::string AnchorOf(std::uint32_t security) {
  return "s" + std::to_string(security);
}

std::string NameOf(const LedgerSecurity& security) {
  const std::string name = security.Name.empty() ? "" : ", " + security.Name;
  return Utf8OfCodePage(security.Exchange + " " + security.SecurityID + name);
}

struct DaySums {
  std::uint64_t Trades = 0;
  std::uint64_t Bought = 0;
  std::uint64_t Sold = 0;
  double BoughtAmount = 0;
  double SoldAmount = 0;
  double Realised = 0;
  double Open = 0;

  void Add(const LedgerTrade& trade) {
    ++Trades;
    const double amount = trade.Price * trade.Quantity * trade.Multiplier;
    if (trade.Side == static_cast<std::uint8_t>(TradeSide::Buy)) {
      Bought += trade.Quantity;
      BoughtAmount += amount;
    } else if (trade.Side == static_cast<std::uint8_t>(TradeSide::Sell)) {
      Sold += trade.Quantity;
      SoldAmount += amount;
    }
  }
  void Add(const DaySums& other) {
    Trades += other.Trades;
    Bought += other.Bought;
    Sold += other.Sold;
    BoughtAmount += other.BoughtAmount;
    SoldAmount += other.SoldAmount;
    Realised += other.Realised;
    Open += other.Open;
  }
};

using SumsByName = std::map<std::string, DaySums>;

template <typename NameOfTrade>
SumsByName TradeSums(const TradeLedger& ledger, NameOfTrade nameOf) {
  SumsByName sums;
  for (const LedgerTrade& trade : ledger.Trades())
    if (trade.Quantity != 0) sums[nameOf(trade)].Add(trade);
  return sums;
}

template <typename NameOfRow>
void AddProfits(SumsByName& sums, const PositionTable& positions, NameOfRow nameOf) {
  for (std::uint32_t row = 0; row < positions.Rows(); ++row) {
    if (positions.At(row).IsEmpty()) continue;
    DaySums& sum = sums[nameOf(row)];
    sum.Realised += positions.At(row).Realised();
    sum.Open += positions.OpenProfit(row);
  }
}

PositionTable PositionsOf(const TradeLedger& ledger, const PositionSettings& settings) {
  PositionTable positions(ledger);
  positions.Use(settings);
  positions.TakeChanges();
  return positions;
}

using Kind = HtmlTable::Kind;

std::string SumsTable(const char* title, const SumsByName& sums) {
  const HtmlTable::Column columns[] = {
      {title, Kind::Words},       {"Trades", Kind::Number},     {"Bought", Kind::Number},
      {"Sold", Kind::Number},     {"Buy amount", Kind::Number}, {"Sell amount", Kind::Number},
      {"Realised", Kind::Result}, {"Open", Kind::Result},       {"Total", Kind::Result}};
  HtmlTable table(columns);
  const auto texts = [](const std::string& name, const DaySums& sum) {
    return std::vector{name,
                       Count(sum.Trades),
                       Count(sum.Bought),
                       Count(sum.Sold),
                       Money(sum.BoughtAmount),
                       Money(sum.SoldAmount),
                       Result(sum.Realised),
                       Result(sum.Open),
                       Result(sum.Realised + sum.Open)};
  };
  DaySums all;
  for (const auto& [name, sum] : sums) {
    table.AddRow(texts(name.empty() ? "(none)" : Utf8OfCodePage(name), sum));
    all.Add(sum);
  }
  table.SetSums(texts("All", all));
  return table.Html();
}

constexpr HtmlTable::Column kPositionColumns[] = {
    {"Security", Kind::Words},  {"Symbol", Kind::Words}, {"Trades", Kind::Number},  {"Bought", Kind::Number},
    {"Sold", Kind::Number},     {"Net", Kind::Number},   {"Average", Kind::Number}, {"Last", Kind::Number},
    {"Realised", Kind::Result}, {"Open", Kind::Result},  {"Total", Kind::Result}};

// How many trades each security has that are not busted.
std::vector<std::uint64_t> TradeCounts(const TradeLedger& ledger) {
  std::vector<std::uint64_t> counts(ledger.Securities().size());
  for (const LedgerTrade& trade : ledger.Trades()) counts[trade.Security] += trade.Quantity == 0 ? 0 : 1;
  return counts;
}

std::uint32_t IndexOf(const TradeLedger& ledger, const LedgerSecurity& security) {
  return static_cast<std::uint32_t>(&security - ledger.Securities().data());
}

// The rows of a table with one row for each security, in the order of the page.
std::string PositionsTable(const TradeLedger& ledger, const PositionTable& positions,
                           const std::vector<std::uint32_t>& rows) {
  HtmlTable table(kPositionColumns);
  const std::vector<std::uint64_t> counts = TradeCounts(ledger);
  for (const std::uint32_t row : rows) {
    const Position& position = positions.At(row);
    const LedgerSecurity& security = positions.SecurityAt(row);
    const std::uint32_t index = IndexOf(ledger, security);
    table.AddRow({Utf8OfCodePage(security.Exchange + " " + security.SecurityID), Utf8OfCodePage(security.Symbol),
                  Count(counts[index]), Count(position.Bought()), Count(position.Sold()), Quantity(position.Net()),
                  Price(position.AveragePrice()), Price(positions.LastPrice(row)), Result(position.Realised()),
                  Result(positions.OpenProfit(row)), Result(positions.TotalProfit(row))},
                 AnchorOf(index));
  }
  const PositionSums sums = positions.Sum(rows);
  table.SetSums({"All", "", Count(std::accumulate(counts.begin(), counts.end(), std::uint64_t{0})), Count(sums.Bought),
                 Count(sums.Sold), Quantity(sums.Net()), "", "", Result(sums.Realised), Result(sums.Open),
                 Result(sums.Total())});
  return table.Html();
}

// Those that count, the most traded first.
std::vector<std::uint32_t> RowsOfPage(const TradeLedger& ledger, const PositionTable& positions) {
  const std::vector<std::uint64_t> counts = TradeCounts(ledger);
  std::vector<std::uint32_t> rows;
  for (std::uint32_t row = 0; row < positions.Rows(); ++row)
    if (!positions.At(row).IsEmpty()) rows.push_back(row);
  std::ranges::stable_sort(rows, std::greater(),
                           [&](std::uint32_t row) { return counts[IndexOf(ledger, positions.SecurityAt(row))]; });
  return rows;
}

std::string ChartOf(const TradeLedger& ledger, const LedgerSecurity& security) {
  ChartData data;
  ChartSource source;
  data.Assign(ChartPointsOf(ledger, security, source.Timeless));
  source.Title = NameOf(security);
  source.Points = data.Points();
  return "<figure id=\"" + AnchorOf(IndexOf(ledger, security)) + "\">" + ChartSvg(source, kChart) + "</figure>\n";
}

constexpr const char* kStyle =
    "body{font:14px/1.4 system-ui,sans-serif;margin:2em auto;max-width:1100px;padding:0 1em;color:#222}"
    "h1{font-size:1.5em}h2{font-size:1.15em;margin-top:2em}"
    "table{border-collapse:collapse;width:100%;font-size:.92em}"
    "th,td{padding:.2em .6em;text-align:left;border-bottom:1px solid #ddd}th{background:#f3f3f3;position:sticky;top:0}"
    ".n{text-align:right;font-variant-numeric:tabular-nums}.gain{color:#1b6e20}.loss{color:#b71c1c}"
    "tfoot td{font-weight:600;border-top:2px solid #888}figure{margin:1em 0}svg{max-width:100%;height:auto}"
    "a{color:inherit}@media print{figure{break-inside:avoid}th{position:static}}";

std::string Section(const char* title, const std::string& content) {
  return std::string("<h2>") + title + "</h2>\n" + content;
}

// From the first trade to the last by their times.
std::string TimesOf(const TradeLedger& ledger) {
  std::int64_t first = LedgerTrade::kNoSeconds;
  std::int64_t last = LedgerTrade::kNoSeconds;
  for (const LedgerTrade& trade : ledger.Trades()) {
    if (trade.Quantity == 0 || trade.Seconds == LedgerTrade::kNoSeconds) continue;
    first = first == LedgerTrade::kNoSeconds ? trade.Seconds : std::min(first, trade.Seconds);
    last = std::max(last, trade.Seconds);
  }
  return last == LedgerTrade::kNoSeconds ? "" : ", from " + DayClockText(first) + " to " + DayClockText(last);
}

std::string HeadOf(const TradeLedger& ledger, const DayReportHead& head, std::size_t securities) {
  const auto trades = std::ranges::count_if(ledger.Trades(), [](const LedgerTrade& trade) { return trade.Quantity; });
  const std::string title = EscapedXml("Day report: " + head.Day);
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head><meta charset=\"utf-8\"><title>" + title + "</title>\n<style>" +
         kStyle + "</style></head>\n<body>\n<h1>" + title + "</h1>\n<p>" + Count(static_cast<std::uint64_t>(trades)) +
         " trades in " + Count(securities) + " securities" + TimesOf(ledger) + ". Realised and open by " +
         (head.Method == CostMethod::Average ? "average cost" : "first in, first out") + ".</p>\n";
}

}  // namespace

std::string DayReportHtml(const TradeLedger& ledger, const DayReportHead& head, const ReportProgress& progress) {
  const PositionTable bySecurity = PositionsOf(ledger, {.ByClient = false, .Method = head.Method});
  const PositionTable byClient = PositionsOf(ledger, {.ByClient = true, .Method = head.Method});
  SumsByName clients = TradeSums(ledger, [&](const LedgerTrade& trade) { return ledger.Clients()[trade.Client]; });
  AddProfits(clients, byClient, [&](std::uint32_t row) { return byClient.ClientAt(row); });
  SumsByName exchanges =
      TradeSums(ledger, [&](const LedgerTrade& trade) { return ledger.Securities()[trade.Security].Exchange; });
  AddProfits(exchanges, bySecurity, [&](std::uint32_t row) { return bySecurity.SecurityAt(row).Exchange; });

  const std::vector<std::uint32_t> rows = RowsOfPage(ledger, bySecurity);
  std::string html = HeadOf(ledger, head, rows.size());
  html += Section("By exchange", SumsTable("Exchange", exchanges));
  html += Section("By client", SumsTable("Client", clients) +
                                   "<p>Realised and open of a client are counted from its own trades in a security; "
                                   "together they come to the same total.</p>\n");
  html += Section("Positions", PositionsTable(ledger, bySecurity, rows));
  html += "<h2>Charts</h2>\n";
  for (std::size_t done = 0; done < rows.size(); ++done) {
    if (progress) progress(done, rows.size());
    html += ChartOf(ledger, bySecurity.SecurityAt(rows[done]));
  }
  return html + "</body>\n</html>\n";
}

void SaveDayReport(const TradeLedger& ledger, const DayReportHead& head, const std::filesystem::path& file,
                   const ReportProgress& progress) {
  unsigned long errorNumber = 0;
  if (ReplaceFileContent(file, DayReportHtml(ledger, head, progress), errorNumber)) return;
  ThrowFileError(file, "cannot be written", std::error_code(static_cast<int>(errorNumber), std::system_category()));
}
