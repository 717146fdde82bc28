#include "gateway/day_pump.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "gateway/mapping_note.h"
#include "host_link/messages/message_header.h"

namespace {

class DayLogLink final : public LogLink {
 public:
  DayLogLink(const LogAccess& access, const LogDay& day, int replicas) : Writer(access, day, replicas) {}
  std::uint64_t Connect(std::chrono::milliseconds atMost) override { return Writer.Connect(atMost); }
  void Publish(std::uint64_t before, std::uint32_t count, std::span<const std::uint8_t> messages) override {
    Writer.Publish(before, count, messages);
  }

 private:
  LogWriter Writer;
};

constexpr std::uint64_t kAnyCount = std::numeric_limits<std::uint32_t>::max();

}  // namespace

DayLogs DayLogsOf(const LogAccess& access, const std::string& name, int replicas) {
  if (access.Servers.empty()) return {};
  return {name, [=](const std::string& date) {
            return std::make_unique<DayLogLink>(access, LogDay{name, date}, replicas);
          }};
}

MessageRun FirstMessages(std::span<const std::uint8_t> messages, std::size_t mostBytes, std::uint64_t mostCount) {
  MessageRun run;
  const std::size_t end = std::min(messages.size(), mostBytes);
  while (run.Count < mostCount && run.Bytes + kHeaderSize <= end) {
    const std::uint8_t* header = messages.data() + run.Bytes;
    const std::size_t body = static_cast<std::size_t>(header[kLengthOffset] | header[kLengthOffset + 1] << 8);
    if (run.Bytes + kHeaderSize + body > end) break;
    run.Bytes += kHeaderSize + body;
    ++run.Count;
  }
  return run;
}

DayPump::DayPump(std::filesystem::path journal, const MappingChoices& mapping, std::uint64_t before, PumpEvents& events,
                 const DayLogs& logs)
    : File(std::move(journal)), Mapping(mapping), LogName(logs.Name), EarlierBytes(before), Events(events) {
  Open();
  if (logs.Open) Log = logs.Open(Date());
}

void DayPump::Open() {
  Waiting.clear();
  Begin = 0;
  AtEnd = false;
  Day.reset();
  Day = std::make_unique<JournalDay>(File, Mapping, Alarms);
}

bool DayPump::Read() {
  if (Connected && Waiting.size() >= LogWriter::kMostBytes) return true;
  if (HoldsBack() || (!Connected && Waiting.size() > kMostWaiting)) {
    Waiting.clear();
    Begin = Day->Counts().Messages;
  }
  AtEnd = !Day->Take(Waiting, LogWriter::kMostBytes);
  if (Day->Counts().Records >= Told.Records) Told = Day->Counts();
  if (InLog > Begin) Drop(FirstMessages(Waiting, Waiting.size(), InLog - Begin));
  if (EarlierBytes > 0 && (AtEnd || !IsEarlier())) TellEarlier();
  return !AtEnd;
}

// Intentional: the file's size is asked for last, so that an alarm of a record that comes meanwhile is told rather
// than only counted.
bool DayPump::IsEarlier() const {
  if (EarlierBytes == 0) return false;
  if (Day == nullptr) return true;
  const std::uint64_t behind = Day->BytesBehind();
  std::error_code unknown;
  const std::uint64_t size = std::filesystem::file_size(File, unknown);
  return !unknown && size <= EarlierBytes + behind;
}

void DayPump::TellEarlier() {
  EarlierBytes = 0;
  if (!Earlier.empty()) Events.OnEarlierAlarms(Date(), Earlier);
}

void DayPump::Sieve::OnAlarm(const Alarm& alarm) {
  if (++Passed <= Muted) return;
  if (Pump.IsEarlier())
    ++Pump.Earlier[alarm.Kind];
  else
    Pump.Events.OnAlarm(alarm);
}

void DayPump::Sieve::StartAgain() noexcept {
  Muted = std::max(Muted, Passed);
  Passed = 0;
}

bool DayPump::Send(Time now) {
  if (HoldsBack() || (!Connected && now < NextTry)) return false;
  try {
    if (Connected) return Publish();
    Connect();
    return true;
  } catch (const FeedError& error) {
    Lose(error.what(), now);
    return false;
  }
}

void DayPump::Connect() {
  InLog = Log->Connect(kConnectTime);
  Connected = true;
  Retry = kFirstRetry;
  Lost = false;
  Events.OnLogState(true, "the log of " + Date() + " holds " + std::to_string(InLog) + " messages");
  if (!IsMappingOfLog(File, LogName, Mapping, InLog))
    return HoldBack("the log of " + Date() + " was begun with another mapping than the settings have now");
  if (InLog >= Begin) return Drop(FirstMessages(Waiting, Waiting.size(), InLog - Begin));
  Alarms.StartAgain();
  Open();
}

bool DayPump::Publish() {
  if (AtEnd && InLog > Begin)
    HoldBack("the log of " + Date() + " holds " + std::to_string(InLog) + " messages, the journal gives only " +
             std::to_string(Begin) +
             ". If this machine has lost its power, restart when the counterparty has sent the missing ones again");
  if (OfAnother || Waiting.empty()) return false;
  const MessageRun run = FirstMessages(Waiting, LogWriter::kMostBytes, kAnyCount);
  Log->Publish(Begin, static_cast<std::uint32_t>(run.Count), std::span(Waiting).first(run.Bytes));
  Drop(run);
  InLog = Begin;
  return true;
}

void DayPump::HoldBack(const std::string& why) {
  OfAnother = true;
  Events.OnAlarm({AlarmKind::Damage, why + "; nothing is published into it. To fill a new log from " + File.string() +
                                         ", set another name of the log and restart, or use --replay"});
}

void DayPump::Drop(const MessageRun& run) {
  Waiting.erase(Waiting.begin(), Waiting.begin() + static_cast<std::ptrdiff_t>(run.Bytes));
  Begin += run.Count;
}

void DayPump::Lose(const char* reason, Time now) {
  Connected = false;
  NextTry = now + Retry;
  Retry = std::min(2 * Retry, kLastRetry);
  if (std::exchange(Lost, true)) return;
  Events.OnLogState(false, reason);
  Events.OnAlarm({AlarmKind::Disconnected, std::string("the day log: ") + reason +
                                               "; trades wait in the journal and are published when it is back"});
}
