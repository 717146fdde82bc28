#include "terminal/day/csv_tables.h"

#include <cstring>
#include <utility>

#include "terminal/common/errors.h"

namespace {

constexpr CsvColumn<DayTrade> kTradeColumns[] = {
    {"exchange_trade_time", &DayTrade::ExchangeTradeTime},
    {"exchange", &DayTrade::Exchange, 48},
    {"security_id", &DayTrade::SecurityID, 48},
    {"symbol", &DayTrade::Symbol, 32, true},
    {"security_type", &DayTrade::SecurityType, 16, true},
    {"expiry_date", &DayTrade::ExpiryDate, 32, true},
    {"option_type", &DayTrade::OptionType, 16, true},
    {"strike_price", &DayTrade::StrikePrice},
    {"side", &DayTrade::Side},
    {"quantity", &DayTrade::Quantity},
    {"price", &DayTrade::Price},
    {"multiplier", &DayTrade::Multiplier},
    {"exchange_order_no", &DayTrade::ExchangeOrderNo, 32},
    {"exchange_trade_id", &DayTrade::ExchangeTradeID, 32},
};

}  // namespace

TradeDay::TradeDay(const std::filesystem::path& file, BadLineReport& badLines)
    : Lines(file, ColumnNames(kTradeColumns), badLines) {}

bool TradeDay::Next(DayTrade& trade) {
  return NextCsvRecord(Lines, kTradeColumns, trade);
}

std::uint64_t CountTradeLines(const std::filesystem::path& file) {
  FileBytes bytes(file);
  std::uint64_t lines = 0;
  bool filled = false;  // the line counted now has a character
  for (std::string_view window = bytes.Peek(1); !window.empty(); window = bytes.Peek(1)) {
    for (const char c : window) {
      if (c == '\n')
        lines += std::exchange(filled, false) ? 1 : 0;
      else if (c != '\r')
        filled = true;
    }
    bytes.Drop(window.size());
  }
  lines += filled ? 1 : 0;
  return lines == 0 ? 0 : lines - 1;
}

namespace {

constexpr CsvColumn<Security> kSecurityColumns[] = {
    {"exchange", &Security::Exchange, 48},
    {"security_id", &Security::SecurityID, 48},
    {"symbol", &Security::Symbol, 32},
    {"name", &Security::Name, kMasterNameSize - 1},
    {"security_type", &Security::SecurityType, 16},
    {"expiry_date", &Security::ExpiryDate, 32, true},
    {"option_type", &Security::OptionType, 16, true},
    {"strike_price", &Security::StrikePrice},
    {"multiplier", &Security::Multiplier},
};

void FillMasterRecord(Security& security) {
  std::memcpy(security.MasterRecord.data() + kMasterNameOffset, security.Name.data(), security.Name.size());
  std::memcpy(security.MasterRecord.data() + kMasterMultiplierOffset, &security.Multiplier, sizeof security.Multiplier);
}

}  // namespace

std::string SecurityKey(std::string_view exchange, std::string_view securityId) {
  std::string key;
  key.reserve(exchange.size() + 1 + securityId.size());
  key.append(exchange).append(1, '\n').append(securityId);
  return key;
}

SecurityList::SecurityList(const std::filesystem::path& file, BadLineReport& badLines) {
  CsvReader lines(file, ColumnNames(kSecurityColumns), badLines);
  for (Security security; NextCsvRecord(lines, kSecurityColumns, security); security = Security()) {
    const auto [place, isNew] = ByKey.try_emplace(SecurityKey(security.Exchange, security.SecurityID), nullptr);
    if (!isNew) {
      lines.Report(security.SecurityID + " of " + security.Exchange + " is listed already");
      continue;
    }
    FillMasterRecord(security);
    place->second = &Rows.emplace_back(security);
  }
}

const Security* SecurityList::Find(std::string_view exchange, std::string_view securityId) const {
  const auto found = ByKey.find(SecurityKey(exchange, securityId));
  return found == ByKey.end() ? nullptr : found->second;
}

namespace {

constexpr CsvColumn<DeskLine> kDeskColumns[] = {
    {"user_id", &DeskLine::UserID, 20},
    {"manager_id", &DeskLine::ManagerID, 20, true},
    {"member_id", &DeskLine::MemberID, 20, true},
    {"client_id", &DeskLine::ClientID, 20, true},
    {"ctcl_id", &DeskLine::CTCLID, 20, true},
    {"product_type", &DeskLine::ProductType},
    {"order_type", &DeskLine::OrderType},
    {"open_close", &DeskLine::OpenClose},
    {"strategy_id", &DeskLine::StrategyID},
    {"pancard", &DeskLine::Pancard, 16, true},
    {"terminal_info", &DeskLine::TerminalInfo, 24, true},
    {"algo_id", &DeskLine::AlgoID, 16, true},
    {"algo_category", &DeskLine::AlgoCategory},
    {"participant_id", &DeskLine::ParticipantID, 16, true},
    {"reference_text", &DeskLine::ReferenceText, 64, true},
};

// FNV-1a, 64 bits, as Fowler, Noll and Vo publish it: the same on every platform, unlike std::hash.
std::uint64_t HashOf(std::string_view text) noexcept {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
  return hash;
}

}  // namespace

OrderDesk::OrderDesk(const std::filesystem::path& file, BadLineReport& badLines) {
  CsvReader lines(file, ColumnNames(kDeskColumns), badLines);
  for (DeskLine line; NextCsvRecord(lines, kDeskColumns, line);) Lines.push_back(line);
  if (Lines.empty()) throw TerminalError(ExitCode::File, PathText(file) + ": no line of the desk can be used");
}

const DeskLine& OrderDesk::LineOf(std::string_view exchangeOrderNo) const noexcept {
  return Lines[HashOf(exchangeOrderNo) % Lines.size()];
}
