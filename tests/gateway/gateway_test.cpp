// The parts of the gateway: what carries a journal into its log, in the face of a log that fails, and what it tells.
#include "gateway/day_pump.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <mutex>
#include <sstream>

#include "feeds/journal/journal.h"
#include "gateway/gateway_report.h"
#include "gateway/log_publisher.h"
#include "gateway/replay.h"
#include "tests/gateway/running_program.h"
#include "tests/support/own_folder.h"

namespace {

using Bytes = std::vector<std::uint8_t>;
using Time = DayPump::Time;
using std::chrono::seconds;

constexpr const char* kSession = "FIX.4.4:DESK->BROKER";

// A whole message around a body of fields, each with its | for SOH.
std::string FixMessage(std::string fields) {
  for (char& letter : fields)
    if (letter == '|') letter = '\x01';
  std::string text =
      "8=FIX.4.4\x01"
      "9=" +
      std::to_string(fields.size()) + '\x01' + fields;
  unsigned sum = 0;
  for (const char letter : text) sum += static_cast<unsigned char>(letter);
  char trailer[8];
  std::snprintf(trailer, sizeof trailer, "10=%03u\x01", sum % 256);
  return text + trailer;
}

// A fill of 2 lots, with number and execution id of its own; quantity is the field of the quantity.
std::string TradeReport(int number, const std::string& quantity = "32=2") {
  const std::string id = std::to_string(number);
  return FixMessage("35=8|49=BROKER|56=DESK|34=" + id + "|52=20260301-09:00:00|37=O" + id + "|11=C" + id + "|17=E" +
                    id + "|150=F|39=2|55=GC|48=GC201312|207=COMEX|54=1|" + quantity +
                    "|31=1313.25|151=0|14=2|6=1313.25|60=20260301-09:00:00|1=CLIENT1|");
}

// What a log's servers keep, and which of their answers fail.
struct FakeServers {
  std::mutex Lock;
  Bytes Messages;
  std::uint64_t Count = 0;
  std::vector<std::size_t> Batches;
  int Calls = 0;  // of Publish
  int FailBefore = -1;
  int FailAfter = -1;
  bool Down = false;

  std::uint64_t Stored() {
    const std::lock_guard lock(Lock);
    return Count;
  }
  void Set(bool down) {
    const std::lock_guard lock(Lock);
    Down = down;
  }
};

class FakeLog final : public LogLink {
 public:
  explicit FakeLog(FakeServers& servers) : Servers(servers) {}
  std::uint64_t Connect(std::chrono::milliseconds /*atMost*/) override {
    const std::lock_guard lock(Servers.Lock);
    if (Servers.Down) throw FeedError("no servers");
    return Servers.Count;
  }
  void Publish(std::uint64_t before, std::uint32_t count, std::span<const std::uint8_t> messages) override {
    const std::lock_guard lock(Servers.Lock);
    const int call = Servers.Calls++;
    if (Servers.Down || call == Servers.FailBefore) throw FeedError("connection lost");
    ASSERT_EQ(before, Servers.Count);
    ASSERT_EQ(FirstMessages(messages, messages.size(), 1'000'000).Count, count);
    Servers.Count += count;
    Servers.Batches.push_back(messages.size());
    Servers.Messages.insert(Servers.Messages.end(), messages.begin(), messages.end());
    if (call == Servers.FailAfter) throw FeedError("no answer");
  }

 private:
  FakeServers& Servers;
};

struct Told final : PumpEvents {
  void OnAlarm(const Alarm& alarm) override {
    const std::lock_guard lock(Lock);
    Alarms.push_back(alarm);
  }
  void OnEarlierAlarms(const std::string& /*date*/, const AlarmCounts& counts) override { Earlier = counts; }
  void OnLogState(bool /*connected*/, const std::string& /*text*/) override {}
  std::uint64_t Of(AlarmKind kind) {
    const std::lock_guard lock(Lock);
    return static_cast<std::uint64_t>(std::ranges::count(Alarms, kind, &Alarm::Kind));
  }
  std::mutex Lock;
  std::vector<Alarm> Alarms;
  AlarmCounts Earlier;
};

class Pumping : public OwnFolder {
 protected:
  Journal& Day(const std::string& date = "20260301") {
    auto& journal = Journals[date];
    if (!journal) journal = std::make_unique<Journal>(Folder, kSession, date);
    return *journal;
  }
  void Append(Journal& journal, int count) {
    for (int i = 0; i < count; ++i) AppendText(journal, TradeReport(++Number));
  }
  static void AppendText(Journal& journal, const std::string& text) {
    ASSERT_TRUE(journal.Append(JournalKind::Message, 1, journal.NextTarget() + 1, text));
  }
  DayLogs Logs() {
    return {"trades", [this](const std::string&) { return std::make_unique<FakeLog>(Servers); }};
  }
  // What a log of that journal must hold: it is mapped in one go.
  static Bytes Expected(const Journal& journal) {
    Told ignored;
    JournalDay day(journal.File(), {}, ignored);
    Bytes messages;
    while (day.Take(messages, 1 << 20)) {
    }
    return messages;
  }
  // Steps a pump until nothing moves, a second passing with each step.
  void Pump(DayPump& pump) {
    for (int still = 0; still < 10; Now += seconds(1)) {
      const bool read = pump.Read();
      still = pump.Send(Now) || read ? 0 : still + 1;
    }
  }

  Told Events;
  FakeServers Servers;
  Time Now{};
  int Number = 0;
  std::map<std::string, std::unique_ptr<Journal>> Journals;
};

TEST_F(Pumping, GoesOnBehindWhatTheLogHas) {
  Append(Day(), 5);
  const Bytes all = Expected(Day());
  const MessageRun three = FirstMessages(all, all.size(), 3);
  Servers.Messages.assign(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(three.Bytes));
  Servers.Count = 3;
  DayPump pump(Day().File(), {}, 0, Events, Logs());
  Pump(pump);
  EXPECT_EQ(Servers.Batches, std::vector{all.size() - three.Bytes});
  Append(Day(), 2);
  EXPECT_EQ(pump.Behind(), 0U);
  Pump(pump);
  EXPECT_EQ(Servers.Messages, Expected(Day()));
  EXPECT_TRUE(pump.IsDone() && pump.MessagesInLog() == 7 && pump.Counts().Trades == 7 && Events.Alarms.empty());
}

// Batches are as long as the log takes them, and an outage anywhere loses and doubles nothing.
TEST_F(Pumping, LosesAndDoublesNothing) {
  Append(Day(), 3000);
  const Bytes all = Expected(Day());
  ASSERT_GT(all.size(), 2 * LogWriter::kMostBytes);
  struct Case {
    const char* Name;
    int FailBefore, FailAfter;
    std::uint64_t Outages;
  };
  for (const Case& row :
       {Case{"no failure", -1, -1, 0}, {"batch not taken", 1, -1, 1}, {"answer lost", -1, 0, 1}, {"both", 0, 2, 2}}) {
    SCOPED_TRACE(row.Name);
    FakeServers& servers = Servers;
    servers.Messages.clear();
    servers.Batches.clear();
    servers.Count = 0;
    servers.Calls = 0;
    servers.FailBefore = row.FailBefore;
    servers.FailAfter = row.FailAfter;
    Events.Alarms.clear();
    DayPump pump(Day().File(), {}, 0, Events, Logs());
    Pump(pump);
    EXPECT_EQ(servers.Messages, all);
    EXPECT_LE(std::ranges::max(servers.Batches), LogWriter::kMostBytes);
    EXPECT_GT(std::ranges::max(servers.Batches), LogWriter::kMostBytes / 2);
    EXPECT_EQ(Events.Of(AlarmKind::Disconnected), row.Outages);
  }
}

// More comes during the outage than is kept for it: the journal is mapped again, its alarms are not told again.
TEST_F(Pumping, TakesALongOutageFromTheJournal) {
  AppendText(Day(), TradeReport(++Number, "32=0.5"));
  Append(Day(), 3);
  DayPump pump(Day().File(), {}, 0, Events, Logs());
  Pump(pump);
  Servers.Set(true);
  Append(Day(), 45'000);
  Pump(pump);
  EXPECT_GT(pump.Behind(), 4000U);
  Append(Day(), 1);
  Pump(pump);
  EXPECT_EQ(Events.Of(AlarmKind::Disconnected), 1U) << "once for each outage";
  Servers.Set(false);
  Pump(pump);
  EXPECT_GT(Servers.Messages.size(), DayPump::kMostWaiting + 2 * LogWriter::kMostBytes);
  EXPECT_EQ(Servers.Messages, Expected(Day()));
  EXPECT_EQ(Events.Of(AlarmKind::RefusedTrade), 1U);
}

TEST_F(Pumping, HoldsBackFromALogOfAnother) {
  Append(Day(), 5);
  Servers.Count = 7;
  DayPump ahead(Day().File(), {}, 0, Events, Logs());
  Pump(ahead);
  Append(Day(), 5);
  Pump(ahead);
  EXPECT_TRUE(ahead.IsOfAnother() && ahead.IsDone());
  EXPECT_EQ(ahead.Counts().Trades, 10U) << "counts go on";
  EXPECT_EQ(Events.Of(AlarmKind::Damage), 1U);

  // The log was begun with one mapping: another one would number its trades anew. A new log takes it.
  MappingChoices other;
  other.Multiplier = 10;
  DayPump changed(Day().File(), other, 0, Events, Logs());
  Pump(changed);
  EXPECT_TRUE(changed.IsOfAnother());
  EXPECT_EQ(Events.Of(AlarmKind::Damage), 2U);
  EXPECT_TRUE(Servers.Batches.empty());
  DayLogs second = Logs();
  second.Name = "second";
  Servers.Count = 0;
  DayPump renamed(Day().File(), other, 0, Events, second);
  Pump(renamed);
  EXPECT_EQ(Servers.Count, 10U);
}

TEST_F(Pumping, TellsEarlierAlarmsInOneLine) {
  for (int i = 0; i < 3; ++i) AppendText(Day(), TradeReport(++Number, "32=0.5"));
  DayPump pump(Day().File(), {}, std::filesystem::file_size(Day().File()), Events, {});
  AppendText(Day(), TradeReport(++Number, "32=0.5"));
  Append(Day(), 1);
  Pump(pump);
  EXPECT_EQ(Events.Earlier, (AlarmCounts{{AlarmKind::RefusedTrade, 3}}));
  EXPECT_EQ(Events.Of(AlarmKind::RefusedTrade), 1U);
  EXPECT_TRUE(pump.IsDone() && pump.Behind() == 0) << "without a log";
  EXPECT_EQ(pump.Counts().Refused, 4U);
}

using Publishing = Pumping;

// The log is down as the day ends: both days are complete when it comes back.
TEST_F(Publishing, FinishesTheDayBefore) {
  std::map<std::string, FakeServers> servers;
  servers["20260301"].Down = true;
  servers["20260302"];
  const DayLogs logs{"trades", [&](const std::string& date) { return std::make_unique<FakeLog>(servers.at(date)); }};
  Append(Day("20260301"), 50);
  LogPublisher publisher({}, logs, Events);
  for (int i = 0; i < 2; ++i) publisher.Follow(Day("20260301").File());
  EXPECT_TRUE(ComesTrue([&] { return publisher.Counts().Behind == 50; }));
  Append(Day("20260301"), 1);
  Append(Day("20260302"), 7);
  publisher.Follow(Day("20260302").File());
  EXPECT_TRUE(ComesTrue([&] { return servers["20260302"].Stored() == 7; }));
  Append(Day("20260302"), 1);
  publisher.Wake();
  EXPECT_TRUE(ComesTrue([&] { return servers["20260302"].Stored() == 8; }));
  EXPECT_EQ(publisher.Counts().Behind, 51U);
  EXPECT_TRUE(publisher.Counts().IsLogLost);
  servers["20260301"].Set(false);
  EXPECT_TRUE(ComesTrue([&] { return servers["20260301"].Stored() == 51; }));
  Append(Day("20260302"), 3);
  EXPECT_TRUE(publisher.Stop(seconds(30)).empty());
  for (auto& [date, log] : servers) EXPECT_EQ(log.Messages, Expected(Day(date))) << date;
}

TEST_F(Publishing, TriesOnceMoreAtTheEndAndSaysWhatTheLogLacks) {
  Append(Day(), 4);
  for (const bool isBack : {false, true}) {
    Servers.Set(true);
    LogPublisher publisher({}, Logs(), Events);
    publisher.Follow(Day().File());
    EXPECT_TRUE(ComesTrue([&] { return publisher.Counts().Behind == 4 && publisher.Counts().IsLogLost; }));
    Servers.Set(!isBack);
    const std::vector<std::string> unpublished = publisher.Stop(seconds(30));
    ASSERT_EQ(unpublished.size(), isBack ? 0U : 1U);
    for (const std::string& text : unpublished)
      EXPECT_TRUE(text.starts_with("4 messages of " + Day().File().string())) << text;
  }
  EXPECT_EQ(Servers.Messages, Expected(Day()));
}

TEST_F(Pumping, ReplaysIntoALog) {
  Append(Day(), 4);
  std::ostringstream out, errors;
  EXPECT_EQ(ReplayJournal(Day().File(), {}, Logs(), out, errors), GatewayExit::Ended);
  AppendText(Day(), TradeReport(++Number, "32=0.5"));
  Append(Day(), 1);
  EXPECT_EQ(errors.str(), "");
  EXPECT_EQ(ReplayJournal(Day().File(), {}, Logs(), out, errors), GatewayExit::Mistakes);
  EXPECT_EQ(Servers.Messages, Expected(Day()));
  EXPECT_TRUE(errors.str().starts_with("refused trade: ")) << errors.str();
  EXPECT_NE(out.str().find(": 5 messages in the log; trades 5, "), std::string::npos) << out.str();
  Servers.Count = 9;
  EXPECT_THROW(ReplayJournal(Day().File(), {}, Logs(), out, errors), GatewayError);
  Servers.Down = true;
  EXPECT_THROW(ReplayJournal(Day().File(), {}, Logs(), out, errors), GatewayError);
}

TEST(EventLog, WritesJsonWhateverTheTextHolds) {
  constexpr std::int64_t kTimeMs = 1772355600123;
  const std::pair<std::string, const char*> texts[] = {
      {"plain", "plain"},
      {"\"C:\\x\"", R"(\"C:\\x\")"},
      {std::string("8=FIX\x01\n\0\x7F", 9), R"(8=FIX\u0001\u000a\u0000\u007f)"},
      {"caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80", "caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80"},
      {"\xE9\xC3", R"(\u00e9\u00c3)"},                                // bytes that begin a character and are none
      {"\xC0\x80\xED\xA0\x80", R"(\u00c0\u0080\u00ed\u00a0\u0080)"},  // an overlong character and a surrogate
      {"\xC2\x9B", R"(\u009b)"},                                      // a control character behind ASCII
  };
  for (const auto& [text, json] : texts)
    EXPECT_EQ(JsonLine(kTimeMs, "alarm", {{"text", text}, {"count", std::uint64_t{7}}, {"ok", true}}),
              std::string(R"({"time":"2026-03-01T09:00:00.123Z","event":"alarm","text":")") + json +
                  "\",\"count\":7,\"ok\":true}\n");
  EXPECT_EQ(PlainLine("8=FIX\x01"
                      "9=5\x1B[2J\n\xC2\x9B\xE9 \xC3\xA9"),
            "8=FIX|9=5?[2J??? \xC3\xA9");
}

using Reporting = OwnFolder;
TEST_F(Reporting, TellsAlarmsAndHoldsBackAFlood) {
  std::ostringstream out;
  const EventLog events(Folder / "events");
  EXPECT_EQ(std::filesystem::status(Folder / "events").permissions() & std::filesystem::perms(07027),
            std::filesystem::perms::none);
  const Time start = std::chrono::steady_clock::now();
  GatewayReport report(out, true, events, start);
  for (std::uint64_t i = 0; i < GatewayReport::kMostTold + 1234; ++i) report.OnAlarm({AlarmKind::Gap, "5 to 9"});
  report.OnAlarm({AlarmKind::Disk, "full\x1B"});
  report.OnEarlierAlarms("20260301", {{AlarmKind::CutField, 2}, {AlarmKind::Gap, 3}});
  const auto lines = [&] { return std::ranges::count(out.str(), '\n'); };
  EXPECT_EQ(lines(), static_cast<std::ptrdiff_t>(GatewayReport::kMostTold + 2));
  EXPECT_NE(out.str().find("\ntrade_gateway: disk: full?\n"), std::string::npos) << out.str();
  out.str("");
  PublisherCounts counts{"20260301", {}, 12'000, 7, true, false};
  counts.Journal.Trades = 12'007;
  report.OnSession(true, "logged on");
  report.Refresh(counts, start + GatewayReport::kAlarmWindow);
  report.Refresh(counts, start + GatewayReport::kCountsEvery);
  EXPECT_EQ(out.str(),
            "trade_gateway: session: logged on\ntrade_gateway: gap: 1,234 more within seconds\n"
            "\r\x1B[Klogged on | trades 12,007 | in the log 12,000 | behind 7 | alarms 1,290");
  out.str("");
  report.OnAlarm({AlarmKind::Gap, "again"});
  EXPECT_EQ(out.str(), "\r\x1B[Ktrade_gateway: gap: again\n");
  const std::string json = ReadFile(Folder / "events");
  EXPECT_NE(json.find(R"("event":"more alarms","kind":"gap","count":1234})"), std::string::npos);
  EXPECT_NE(json.find(R"("event":"counts","date":"20260301","logged_on":true,"records":0,)"), std::string::npos);
  EXPECT_NE(json.find(R"("in_log":12000,"behind":7,"log_connected":true,"alarms":1290})"), std::string::npos);
}

TEST(GatewayOptions, RejectsWithOneSentence) {
  using Words = std::vector<std::filesystem::path>;
  const auto said = [](const Words& words) -> std::string {
    try {
      ParseGatewayOptions(words);
    } catch (const GatewayError& error) {
      return error.Code == GatewayExit::CommandLine ? error.what() : "another code";
    }
    return "taken";
  };
  const std::pair<Words, const char*> cases[] = {
      {{}, "give a settings file, --check or --replay, one of them"},
      {{"a", "--check", "b"}, "give a settings file, --check or --replay, one of them"},
      {{"a", "b"}, "one settings file only, not b as well"},
      {{"--chek", "b"}, "there is no option --chek"},
      {{"--check"}, "--check needs a value"},
      {{"--check", "--help"}, "--check needs a value"},
      {{""}, "CONFIG needs a value"},
      {{"--help=1"}, "--help takes no value"},
      {{"--check", "a", "--log", "b"}, "--log says something only with a session"},
      {{"a", "--to", "b"}, "--to, --config and --log-access say something only with --replay"},
      {{"--replay", "a"}, "--replay needs --to"},
  };
  for (const auto& [words, sentence] : cases)
    EXPECT_EQ(said(words), sentence + std::string("; --help lists the options"));
  const GatewayOptions run = ParseGatewayOptions({"gateway.conf", "--log", "events"});
  EXPECT_TRUE(run.Config == "gateway.conf" && run.EventLog == "events");
  const GatewayOptions replay =
      ParseGatewayOptions({"--replay", "j", "--to", "nats://h/trades.20260301", "--config", "c", "--log-access", "l"});
  EXPECT_TRUE(replay.Replay == "j" && replay.To == "nats://h/trades.20260301" && replay.ReplayConfig == "c" &&
              replay.LogAccess == "l");
  EXPECT_TRUE(ParseGatewayOptions({"--check", "c"}).Check == "c" && ParseGatewayOptions({"--help"}).Help &&
              ParseGatewayOptions({"--version"}).Version && ParseGatewayOptions({"--sample-config"}).SampleConfig);
}

}  // namespace
