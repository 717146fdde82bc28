// CSecurities: the securities of the day with their names and multipliers, and the master record of each, which a
// plug-in gets by address. Read once; then any thread may look up.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>

#include "host_link/terminal_functions.h"
#include "terminal/bad_lines.h"

inline constexpr std::size_t kMasterRecordSize = kMasterMultiplierOffset + sizeof(double);

struct Security {
  std::string Exchange;
  std::string SecurityID;
  std::string Symbol;
  std::string Name;
  std::string SecurityType;
  std::string ExpiryDate;
  std::string OptionType;
  double StrikePrice = 0;
  double Multiplier = 0;
  // Name and multiplier at the places of terminal_functions.h, zeros elsewhere.
  std::array<std::uint8_t, kMasterRecordSize> MasterRecord{};
};

// Promises: a security found, and its master record, stay at their addresses for the life of the object. Find is one
// hash of exchange and id.
class CSecurities {
 public:
  CSecurities() = default;
  // Bad lines, and lines of a security that is there already, are reported. Throws TerminalError.
  CSecurities(const std::filesystem::path& file, CBadLines& badLines);
  CSecurities(const CSecurities&) = delete;
  CSecurities& operator=(const CSecurities&) = delete;

  const Security* Find(std::string_view exchange, std::string_view securityId) const;
  // In the order of the file.
  const std::deque<Security>& All() const noexcept { return Rows; }

 private:
  std::deque<Security> Rows;
  std::unordered_map<std::string, const Security*> ByKey;
};
