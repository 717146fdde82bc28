#include "feeds/journal/journal_day.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>

#include "host_link/messages/message_header.h"

namespace {

constexpr char kSoh = '\x01';

// The value of the first field with that tag.
std::optional<std::string_view> FieldOf(std::string_view text, std::string_view tag) {
  const std::size_t at = text.find(std::string(1, kSoh).append(tag) + '=');
  if (at == text.npos) return std::nullopt;
  const std::string_view value = text.substr(at + tag.size() + 2);
  return value.substr(0, value.find(kSoh));
}

// The same, as far as it can be shown.
std::string ShownField(std::string_view text, std::string_view tag) {
  constexpr std::size_t kMostShown = 20;
  std::string shown(FieldOf(text, tag).value_or("?").substr(0, kMostShown));
  std::replace_if(
      shown.begin(), shown.end(), [](char letter) { return letter < ' ' || letter > '~'; }, '?');
  return shown;
}

bool IsNumber(std::optional<std::string_view> field, std::size_t wanted) {
  std::size_t number = wanted + 1;
  if (field) std::from_chars(field->data(), field->data() + field->size(), number);
  return number == wanted;
}

// Its length and checksum are right.
bool IsUndamaged(std::string_view text) {
  constexpr std::size_t kTrailerSize = 7;  // 10=nnn and SOH
  const std::size_t length = text.find(std::string(1, kSoh) + "9=");
  const std::size_t body = length == text.npos ? length : text.find(kSoh, length + 1);
  if (body == text.npos || text.size() < body + 1 + kTrailerSize) return false;
  const std::size_t trailer = text.size() - kTrailerSize;
  unsigned sum = 0;
  for (const char letter : text.substr(0, trailer)) sum += static_cast<unsigned char>(letter);
  return IsNumber(FieldOf(text, "9"), trailer - body - 1) &&
         IsNumber(FieldOf(text.substr(trailer - 1), "10"), sum % 256);
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
  if (isRefused && !IsOfSession(record.Text)) {
    ++Told.Refused;
    return;
  }
  const MappedReport mapped = Mapper.Map(record.Text, record.Place, Waiting);
  for (const OutcomeRow& row : kOutcomeRows) {
    if (row.Outcome != mapped.Outcome) continue;
    ++(Told.*row.Count);
    if (!mapped.Reason.empty()) Tell(row.Kind, record, mapped.Reason);
  }
  // Once for both.
  if (isRefused && mapped.Outcome != ReportOutcome::Refused) ++Told.Refused;
}

// A message that the engine refuses for its form is a trade all the same. One that was damaged on its way comes again,
// and one between other CompIDs is of another session.
bool JournalDay::IsOfSession(std::string_view text) const {
  const std::string target(FieldOf(text, "49").value_or(""));
  return IsUndamaged(text) &&
         Identity().Session.ends_with(':' + std::string(FieldOf(text, "56").value_or("")) + "->" + target);
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
