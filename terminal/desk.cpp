#include "terminal/desk.h"

#include "terminal/csv_file.h"
#include "terminal/terminal_error.h"

namespace {

constexpr CsvColumn<DeskLine> kColumns[] = {
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

CDesk::CDesk(const std::filesystem::path& file, CBadLines& badLines) {
  CCsvFile lines(file, ColumnNames(kColumns), badLines);
  for (DeskLine line; NextCsvRecord(lines, kColumns, line);) Lines.push_back(line);
  if (Lines.empty()) throw TerminalError(ExitCode::File, PathText(file) + ": no line of the desk can be used");
}

const DeskLine& CDesk::LineOf(std::string_view exchangeOrderNo) const noexcept {
  return Lines[HashOf(exchangeOrderNo) % Lines.size()];
}
