#include "gateway/session.h"

#include <pthread.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <ctime>
#include <optional>

#include "feeds/drop_copy/drop_copy.h"
#include "gateway/gateway_report.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kRefreshEvery{250};
constexpr std::chrono::seconds kLastPublishing{10};

// Holds the signals that ask for the end until they are waited for.
class EndSignals {
 public:
  EndSignals() {
    sigemptyset(&Set);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&Set, signal);
    pthread_sigmask(SIG_BLOCK, &Set, nullptr);
    std::signal(SIGPIPE, SIG_IGN);  // a lost connection is an error of the write
  }
  // The name of the signal; null if none came within the time.
  const char* Wait(std::chrono::milliseconds atMost) {
    const timespec time{atMost.count() / 1000, atMost.count() % 1000 * 1'000'000};
    const int signal = sigtimedwait(&Set, nullptr, &time);
    return signal < 0 ? nullptr : sigabbrev_np(signal);
  }
  // The next signal ends the process, by what the system does without a handler. The journal can be cut off anywhere.
  void LetThrough() { pthread_sigmask(SIG_UNBLOCK, &Set, nullptr); }

 private:
  sigset_t Set{};
};

// Passes what the drop copy tells to those who act on it.
class SessionEvents final : public DropCopyEvents {
 public:
  SessionEvents(GatewayReport& report, LogPublisher& publisher) : Report(report), Publisher(publisher) {}
  void OnAlarm(const Alarm& alarm) override { Report.OnAlarm(alarm); }
  void OnState(bool loggedOn, const std::string& text) override { Report.OnSession(loggedOn, text); }
  void OnKept() override { Publisher.Wake(); }
  void OnNewDay(const std::filesystem::path& journal) override {
    Report.Tell("new day", "the journal is " + journal.string() + " from now on");
    Publisher.Follow(journal);
  }

 private:
  GatewayReport& Report;
  LogPublisher& Publisher;
};

// Passes what the journals tell. Messages that the engine refused are left out, as it has told of them with its reason.
class JournalEvents final : public PumpEvents {
 public:
  explicit JournalEvents(GatewayReport& report) : Report(report) {}
  void OnAlarm(const Alarm& alarm) override {
    if (alarm.Kind != AlarmKind::RefusedMessage) Report.OnAlarm(alarm);
  }
  void OnEarlierAlarms(const std::string& date, const AlarmCounts& counts) override {
    Report.OnEarlierAlarms(date, counts);
  }
  void OnLogState(bool connected, const std::string& text) override { Report.OnLogState(connected, text); }

 private:
  GatewayReport& Report;
};

// What QuickFIX refuses is no fault of a file.
template <typename Call>
void WithEngine(Call call) {
  try {
    call();
  } catch (const SessionRefused& error) {
    throw GatewayError(GatewayExit::Session, error.what());
  }
}

void TellStart(const GatewayOptions& options, const FeedSettings& settings, const DropCopy& drop,
               GatewayReport& report) {
  const FixEngineSettings& session = settings.Session;
  report.Record("start", {{"version", GATEWAY_VERSION},
                          {"settings", options.Config.string()},
                          {"session", session.BeginString + ":" + session.SenderCompID + "->" + session.TargetCompID},
                          {"host", session.Host},
                          {"port", static_cast<std::uint64_t>(session.Port)},
                          {"journal", drop.JournalFile().string()},
                          {"log_servers", settings.Log.Servers}});
  report.Tell("journal", "the journal is " + drop.JournalFile().string());
  if (settings.Log.Servers.empty()) report.Tell("no log", "no servers of a log are set: the journal alone is kept");
}

}  // namespace

void RunSession(const GatewayOptions& options, std::ostream& errors) {
  const FeedSettings settings = GatewaySettings(options.Config);
  const EventLog events(options.EventLog);
  EndSignals signals;
  GatewayReport report(errors, isatty(STDERR_FILENO) != 0, events, Clock::now());
  JournalEvents journalEvents(report);
  LogPublisher publisher(settings.Mapping, DayLogsOf(settings.Log, settings.LogName, settings.LogReplicas),
                         journalEvents);
  SessionEvents sessionEvents(report, publisher);
  std::optional<DropCopy> drop;
  WithEngine([&] { drop.emplace(settings, sessionEvents); });
  publisher.Follow(drop->JournalFile());
  TellStart(options, settings, *drop, report);
  WithEngine([&] { drop->Start(); });
  const char* signal = nullptr;
  while ((signal = signals.Wait(kRefreshEvery)) == nullptr) report.Refresh(publisher.Counts(), Clock::now());
  report.Tell("stopping", std::string("ending by SIG") + signal + "; a second signal ends at once");
  signals.LetThrough();
  drop->Stop();
  for (const std::string& text : publisher.Stop(kLastPublishing)) report.Tell("unpublished", text);
  report.RecordCounts(publisher.Counts());
  report.Record("stop", {});
  report.Finish();
}
