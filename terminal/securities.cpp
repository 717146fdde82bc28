#include "terminal/securities.h"

#include <cstring>

#include "terminal/csv_file.h"

namespace {

constexpr CsvColumn<Security> kColumns[] = {
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

// A control character, which no field holds, keeps the two parts apart.
std::string KeyOf(std::string_view exchange, std::string_view securityId) {
  std::string key;
  key.reserve(exchange.size() + 1 + securityId.size());
  key.append(exchange).append(1, '\n').append(securityId);
  return key;
}

void FillMasterRecord(Security& security) {
  std::memcpy(security.MasterRecord.data() + kMasterNameOffset, security.Name.data(), security.Name.size());
  std::memcpy(security.MasterRecord.data() + kMasterMultiplierOffset, &security.Multiplier, sizeof security.Multiplier);
}

}  // namespace

CSecurities::CSecurities(const std::filesystem::path& file, CBadLines& badLines) {
  CCsvFile lines(file, ColumnNames(kColumns), badLines);
  for (Security security; NextCsvRecord(lines, kColumns, security); security = Security()) {
    const auto [place, isNew] = ByKey.try_emplace(KeyOf(security.Exchange, security.SecurityID), nullptr);
    if (!isNew) {
      lines.Report(security.SecurityID + " of " + security.Exchange + " is listed already");
      continue;
    }
    FillMasterRecord(security);
    place->second = &Rows.emplace_back(security);
  }
}

const Security* CSecurities::Find(std::string_view exchange, std::string_view securityId) const {
  const auto found = ByKey.find(KeyOf(exchange, securityId));
  return found == ByKey.end() ? nullptr : found->second;
}
