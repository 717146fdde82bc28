// CDesk: who stands behind the orders of a day, which the market data does not tell: users, clients, members, products.
// Each exchange order takes one line of the desk file, always the same one. Read once; then any thread may look up.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "terminal/bad_lines.h"

// Codes as a trade message carries them.
struct DeskLine {
  std::string UserID;
  std::string ManagerID;
  std::string MemberID;
  std::string ClientID;
  std::string CTCLID;
  std::uint32_t ProductType = 0;
  std::uint8_t OrderType = 0;
  std::uint8_t OpenClose = 0;
  std::uint32_t StrategyID = 0;
  std::string Pancard;
  std::string TerminalInfo;
  std::string AlgoID;
  std::uint16_t AlgoCategory = 0;
  std::string ParticipantID;
  std::string ReferenceText;
};

class CDesk {
 public:
  // Bad lines are reported; a file without any good line is a TerminalError.
  CDesk(const std::filesystem::path& file, CBadLines& badLines);

  const DeskLine& LineOf(std::string_view exchangeOrderNo) const noexcept;

 private:
  std::vector<DeskLine> Lines;
};
