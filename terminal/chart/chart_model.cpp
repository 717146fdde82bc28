#include "terminal/chart/chart_model.h"

#include <algorithm>
#include <utility>

#include "foundations/text_tools.h"
#include "platform/locale.h"

namespace {

ChartSide SideOf(std::uint8_t side) {
  if (side == static_cast<std::uint8_t>(TradeSide::Buy)) return ChartSide::Buy;
  return side == static_cast<std::uint8_t>(TradeSide::Sell) ? ChartSide::Sell : ChartSide::None;
}

void AppendPoints(std::vector<ChartPoint>& points, const TradeLedger& ledger, std::span<const std::uint32_t> places,
                  std::uint64_t& timeless) {
  points.reserve(points.size() + places.size());
  for (const std::uint32_t place : places) {
    const LedgerTrade& trade = ledger.Trades()[place];
    if (trade.Seconds != LedgerTrade::kNoSeconds)
      points.push_back({trade.Seconds, trade.Price, trade.Quantity, SideOf(trade.Side)});
    else if (trade.Quantity != 0)
      ++timeless;
  }
}

}  // namespace

std::string Utf8OfCodePage(std::string_view text) {
  return WideToUtf8(CodePageToWide(text));
}

std::vector<ChartPoint> ChartPointsOf(const TradeLedger& ledger, const LedgerSecurity& security,
                                      std::uint64_t& timeless) {
  std::vector<ChartPoint> points;
  timeless = 0;
  AppendPoints(points, ledger, security.Trades, timeless);
  return points;
}

void ChartModel::Select(std::string_view exchange, std::string_view securityId) {
  if (IsOf(exchange, securityId)) return;
  Exchange = exchange;
  SecurityID = securityId;
  Data.Clear();
  Timeless = TradesRead = 0;
  Rewrites = 0;
  Full = Shown = {};
  Changed = true;
}

bool ChartModel::Update() {
  const auto index = Ledger.FindSecurity(Exchange, SecurityID);
  const bool isNewDay = std::exchange(Epoch, Ledger.Epoch()) != Ledger.Epoch();
  if (index)
    Read(Ledger.Securities()[*index], isNewDay);
  else if (TradesRead != 0)
    Read({}, true);
  return std::exchange(Changed, false);
}

void ChartModel::Read(const LedgerSecurity& security, bool again) {
  again = again || security.Rewrites != Rewrites || security.Trades.size() < TradesRead;
  if (!again && security.Trades.size() == TradesRead) return;
  if (again) {
    Data.Assign(ChartPointsOf(Ledger, security, Timeless));
  } else {
    std::vector<ChartPoint> added;
    AppendPoints(added, Ledger, std::span(security.Trades).subspan(TradesRead), Timeless);
    Data.Append(added);
  }
  Rewrites = security.Rewrites;
  TradesRead = security.Trades.size();
  const ChartRange before = std::exchange(Full, FullRange(Data.Points()));
  Shown = Followed(Shown, before, Full);
  Changed = true;
}

void ChartModel::Show(const ChartRange& range) {
  if (Shown == range) return;
  Shown = range;
  Changed = true;
}

bool ChartModel::ShowTimes(std::span<const std::string> times) {
  std::vector<std::int64_t> seconds;
  DayTime time;
  for (const std::string& text : times)
    if (ParseDayTime(text, time)) seconds.push_back(time.Seconds);
  if (seconds.empty() || Data.Points().empty()) return false;
  const auto [first, last] = std::ranges::minmax(seconds);
  Show(RangeAround(static_cast<double>(first), static_cast<double>(last), Full));
  return true;
}

std::string ChartModel::Name() const {
  return SecurityID.empty() ? Exchange : Exchange + " " + SecurityID;
}

ChartSource ChartModel::Source() const {
  const std::string name = Name();
  return {Utf8OfCodePage(name), Data.Points(), Timeless,
          name.empty() ? "No security is selected" : Utf8OfCodePage(name) + ": no trades yet"};
}
