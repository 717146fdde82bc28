#include "feeds/journal/journal_day.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "host_link/messages/message_header.h"

namespace {

// The value of a field, as far as it can be shown.
std::string ShownField(std::string_view text, std::string_view tag) {
  constexpr std::size_t kMostShown = 20;
  const std::size_t at = text.find(std::string("\x01").append(tag) + '=');
  if (at == text.npos) return "?";
  std::string_view value = text.substr(at + tag.size() + 2);
  value = value.substr(0, std::min(value.find('\x01'), kMostShown));
  std::string shown(value);
  std::replace_if(
      shown.begin(), shown.end(), [](char letter) { return letter < ' ' || letter > '~'; }, '?');
  return shown;
}

// What is counted, and what kind of alarm a reason is, by outcome.
struct OutcomeRow {
  ReportOutcome Outcome;
  std::uint64_t JournalCounts::*Count;
  AlarmKind Kind;
};
constexpr OutcomeRow kOutcomeRows[] = {
    {ReportOutcome::Trade, &JournalCounts::Trades, AlarmKind::CutField},
    {ReportOutcome::Correction, &JournalCounts::Corrections, AlarmKind::CutField},
    {ReportOutcome::Bust, &JournalCounts::Busts, AlarmKind::CutField},
    {ReportOutcome::Repeat, &JournalCounts::Repeats, AlarmKind::CutField},
    {ReportOutcome::Refused, &JournalCounts::Refused, AlarmKind::RefusedTrade},
    {ReportOutcome::Unknown, &JournalCounts::Unknown, AlarmKind::UnknownTrade},
};

}  // namespace

JournalDay::JournalDay(const std::filesystem::path& file, const MappingChoices& choices, AlarmSink& alarms)
    : Reader(file), Mapper(choices, [this](std::uint64_t place) { return Reader.TextAt(place); }), Alarms(alarms) {}

bool JournalDay::Take(std::vector<std::uint8_t>& messages, std::size_t mostBytes) {
  const std::size_t begin = messages.size();
  int records = 0;
  for (JournalRecord record;; ++records) {
    if (!GiveWaiting(messages, begin, mostBytes)) return true;
    const bool isFull = messages.size() - begin >= mostBytes || records == kMostRecords;
    if (isFull || !Reader.Next(record)) return records > 0 || messages.size() > begin;
    TellDamage(record);
    MapRecord(record);
  }
}

// False if the rest has to wait.
bool JournalDay::GiveWaiting(std::vector<std::uint8_t>& messages, std::size_t begin, std::size_t mostBytes) {
  while (GivenSize < Waiting.size()) {
    const auto message = Waiting.begin() + static_cast<std::ptrdiff_t>(GivenSize);
    const std::size_t size = kHeaderSize + LoadValue<std::uint16_t>(&message[kLengthOffset]);
    const std::size_t taken = messages.size() - begin;
    if (taken > 0 && taken + size > mostBytes) return false;
    messages.insert(messages.end(), message, message + static_cast<std::ptrdiff_t>(size));
    GivenSize += size;
    ++Told.Messages;
  }
  Waiting.clear();
  GivenSize = 0;
  return true;
}

void JournalDay::MapRecord(const JournalRecord& record) {
  ++Told.Records;
  const bool isRefused = record.Kind == JournalKind::Refused;
  if (isRefused) Tell(AlarmKind::RefusedMessage, record, "the engine refused it");
  if (record.Text.empty()) return;
  const MappedReport mapped = Mapper.Map(record.Text, record.Place, Waiting);
  for (const OutcomeRow& row : kOutcomeRows) {
    if (row.Outcome != mapped.Outcome) continue;
    ++(Told.*row.Count);
    if (!mapped.Reason.empty()) Tell(row.Kind, record, mapped.Reason);
  }
  // Once for both.
  if (isRefused && mapped.Outcome != ReportOutcome::Refused) ++Told.Refused;
}

void JournalDay::TellDamage(const JournalRecord& record) {
  const std::uint64_t damaged = Reader.DamagedBytes() - DamageTold;
  DamageTold = Reader.DamagedBytes();
  if (damaged == 0) return;
  Alarms.OnAlarm({AlarmKind::Damage, std::to_string(damaged) + " bytes before byte " + std::to_string(record.Place) +
                                         " of the journal cannot be read"});
}

void JournalDay::Tell(AlarmKind kind, const JournalRecord& record, const std::string& what) {
  Alarms.OnAlarm({kind, "message " + ShownField(record.Text, "34") + " of type " + ShownField(record.Text, "35") +
                            " at byte " + std::to_string(record.Place) + " of the journal: " + what});
}
