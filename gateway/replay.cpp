#include "gateway/replay.h"

#include <ostream>
#include <thread>

#include "gateway/event_log.h"

namespace {

using Clock = std::chrono::steady_clock;

// Tells alarms as lines and remembers the last outage.
class ReplayEvents final : public PumpEvents {
 public:
  explicit ReplayEvents(std::ostream& errors) : Errors(errors) {}
  void OnAlarm(const Alarm& alarm) override {
    if (alarm.Kind != AlarmKind::Disconnected || WasConnected)
      Errors << NameOf(alarm.Kind) << ": " << PlainLine(alarm.Text) << '\n';
  }
  void OnEarlierAlarms(const std::string& /*date*/, const AlarmCounts& /*counts*/) override {}
  void OnLogState(bool connected, const std::string& text) override {
    WasConnected |= connected;
    if (!connected) Outage = text;
    LostSince = Clock::now();
  }

  // Returns the reason of an outage that lasts too long: of any at the first connection.
  bool IsOver() const { return !WasConnected || Clock::now() > LostSince + kLongestOutage; }
  std::string Outage;

 private:
  std::ostream& Errors;
  bool WasConnected = false;
  Clock::time_point LostSince{};
};

void PumpAll(DayPump& pump, ReplayEvents& events) {
  while (true) {
    const bool read = pump.Read();
    const bool sent = pump.Send(Clock::now());
    if (pump.IsOfAnother())
      throw GatewayError(GatewayExit::Log, "this log cannot be filled from this journal; name another one");
    if (pump.IsLost() && events.IsOver()) throw GatewayError(GatewayExit::Log, "the day log: " + events.Outage);
    if (sent || read) continue;
    if (pump.IsDone()) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
}

std::string SummaryText(const DayPump& pump) {
  const JournalCounts& counts = pump.Counts();
  return pump.Journal().string() + ": " + std::to_string(counts.Messages) + " messages in the log; trades " +
         std::to_string(counts.Trades) + ", corrections " + std::to_string(counts.Corrections) + ", busts " +
         std::to_string(counts.Busts) + ", repeats " + std::to_string(counts.Repeats) + ", refused " +
         std::to_string(counts.Refused) + ", unknown " + std::to_string(counts.Unknown) + "\n";
}

}  // namespace

GatewayExit ReplayJournal(const std::filesystem::path& journal, const MappingChoices& mapping, const DayLogs& logs,
                          std::ostream& out, std::ostream& errors) {
  ReplayEvents events(errors);
  DayPump pump(journal, mapping, 0, events, logs);
  PumpAll(pump, events);
  out << SummaryText(pump);
  return pump.Counts().Refused == 0 ? GatewayExit::Ended : GatewayExit::Mistakes;
}

GatewayExit RunReplay(const GatewayOptions& options, std::ostream& out, std::ostream& errors) {
  LogAddress address;
  try {
    address = ParseLogAddress(options.To);
  } catch (const FeedError& error) {
    throw GatewayError(GatewayExit::CommandLine, error.what());
  }
  const std::string date = JournalReader(options.Replay).Identity().Date;
  if (date != address.Day.Date)
    throw GatewayError(GatewayExit::CommandLine,
                       "the journal is of " + date + ", the log of " + address.Day.Date + "; they must be of one day");
  FeedSettings settings;
  if (!options.ReplayConfig.empty()) settings = GatewaySettings(options.ReplayConfig);
  if (!options.LogAccess.empty()) settings.Log = ReadLogAccess(options.LogAccess, address);
  settings.Log.Servers = address.Servers;
  return ReplayJournal(options.Replay, settings.Mapping,
                       DayLogsOf(settings.Log, address.Day.Name, settings.LogReplicas), out, errors);
}
