// Runs of the built gateway: its exit codes, a day from a venue into a log, and what docs/feeds.md says of it.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <span>

#include "feeds/common/feed_report.h"
#include "feeds/day_log/log_reader.h"
#include "feeds/day_log/log_writer.h"
#include "feeds/fix/fix_trade.h"
#include "feeds/journal/journal.h"
#include "feeds/settings/settings_table.h"
#include "gateway/day_pump.h"
#include "gateway/options.h"
#include "tests/documents/page.h"
#include "tests/feeds/day_log/log_server.h"
#include "tests/gateway/running_program.h"
#include "tests/support/own_folder.h"

namespace {

using Words = std::vector<std::string>;
using Numbers = std::vector<std::uint32_t>;

class GatewayProgram : public OwnFolder {
 protected:
  std::string Path(const std::string& name) const { return (Folder / name).string(); }
  std::string Written(const std::string& name, const std::string& text) const {
    WriteFile(Folder / name, text);
    std::filesystem::permissions(Folder / name, std::filesystem::perms(0600));
    return Path(name);
  }
  // Exit code and what was printed.
  std::pair<int, std::string> Run(const Words& words) const {
    std::filesystem::remove(Folder / "out");
    RunningProgram program("trade_gateway", words, Folder / "out");
    const int code = program.Wait();
    return {code, ReadFile(Folder / "out")};
  }
};

TEST_F(GatewayProgram, EndsWithTheCodeOfItsFailure) {
  const std::string journal = Journal(Folder, "FIX.4.4:DESK->BROKER", "20260301").File().string();
  const std::string nobody = "nats://127.0.0.1:" + std::to_string(FreePort()) + "/trades.2026030";
  const std::string sample = Written("sample.conf", Run({"--sample-config"}).second);
  EXPECT_EQ(ReadFile(sample), SampleFeedSettings());
  std::string good = "[session]\nsender_comp_id = DESK\ntarget_comp_id = BROKER\nhost = localhost\nport = 1\n";
  const std::string settings = Written("good.conf", good);
  Written("bad.xml", "no dictionary");
  const std::string refused = Written("refused.conf", good + "dictionary = bad.xml\n");
  const std::tuple<Words, int, std::string> cases[] = {
      {{"--help"}, 0, "trade_gateway: keeps"},
      {{"--version"}, 0, "trade_gateway " GATEWAY_VERSION "\n"},
      {{"--check", settings}, 0, settings + ": no mistakes\n"},
      {{"--check", sample}, 1, sample + ":7: sender_comp_id is missing\n" + sample + ":8: "},
      {{sample}, 1, sample + ":7: "},
      {{"--chek", sample}, 2, "trade_gateway: there is no option --chek; "},
      {{"--check", Path("none")}, 3, "trade_gateway: "},
      {{settings, "--log", Path("no/events")}, 3, "trade_gateway: " + Path("no/events") + ": cannot be opened: "},
      {{"--replay", journal, "--to", "localhost"}, 2, "trade_gateway: the address of a log begins with "},
      {{"--replay", journal, "--to", nobody + "2"},
       2,
       "trade_gateway: the journal is of 20260301, the log of 20260302"},
      {{"--replay", Path("none"), "--to", nobody + "1"}, 3, "trade_gateway: "},
      {{"--replay", settings, "--to", nobody + "1"}, 3, "trade_gateway: "},
      {{"--replay", journal, "--to", nobody + "1", "--config", sample}, 1, sample + ":7: "},
      {{"--replay", journal, "--to", nobody + "1", "--log-access", Path("none")}, 3, "trade_gateway: "},
      {{refused}, 5, "trade_gateway: "},
      {{"--replay", journal, "--to", nobody + "1"}, 4, "trade_gateway: the day log: 127.0.0.1:"},
  };
  for (const auto& [words, code, begin] : cases) {
    SCOPED_TRACE(words.front() + " " + words.back());
    const auto [was, text] = Run(words);
    EXPECT_EQ(was, code) << text;
    EXPECT_TRUE(text.starts_with(begin)) << text;
  }
}

// The users of the page's server, without its places and certificates.
std::string UsersOfThePage() {
  std::string users;
  for (const std::string& line : FencedBlock("feeds.md", "## The day log: servers of your own", "text"))
    if (!users.empty() || line == "authorization {") users += line + "\n";
  return users;
}

Numbers TradeNumbersOf(std::vector<std::uint8_t> messages) {
  Numbers numbers;
  for (std::size_t at = 0, size = 0; at < messages.size(); at += size) {
    size = FirstMessages(std::span(messages).subspan(at), messages.size(), 1).Bytes;
    CQORPacketReader reader(messages.data() + at, static_cast<std::uint16_t>(size));
    std::uint16_t needed = 0, consumed = 0;
    TradeRecord record{};
    EXPECT_TRUE(reader.ParseHeader(needed, consumed) && reader.MessageNumber == 9101);
    CQORTradeImpl().DecodeMessage(reader, record);
    numbers.push_back(+record.VELDTradeID);
  }
  return numbers;
}

Numbers ReadLog(const LogAccess& access, const LogDay& day, std::size_t count) {
  LogReader reader(access, day);
  std::vector<std::uint8_t> messages;
  const auto read = [&] {
    reader.Take(messages, std::chrono::milliseconds(20));
    return TradeNumbersOf(messages).size() >= count && reader.IsCaughtUp();
  };
  EXPECT_TRUE(ComesTrue(read)) << reader.Reason();
  return TradeNumbersOf(messages);
}

// A venue reports by FIX, the gateway is killed meanwhile, and a desk reads the log. The users are those of the page.
TEST_F(GatewayProgram, BringsADayFromTheVenueIntoTheLog) {
  constexpr std::uint32_t kTrades = 300;
  LogServer server(Folder / "server", UsersOfThePage());
  LogAccess desk = server.Access();
  desk.User = "desk";
  desk.PasswordFile = Written("desk.password", "READER-PASSWORD\n");
  Written("gateway.password", "WRITER-PASSWORD\n");
  RunningProgram venue("demo_venue",
                       {"--generate", std::to_string(kTrades), "--rate", "400", "--stay", "--port-file", Path("port")},
                       Folder / "venue.out");
  ASSERT_TRUE(ComesTrue([&] { return std::filesystem::exists(Folder / "port"); }));
  const std::string settings = Written(
      "gateway.conf", "[session]\nsender_comp_id = DESK\ntarget_comp_id = VENUE\nhost = 127.0.0.1\nport = " +
                          ReadFile(Folder / "port") + "reconnect_seconds = 1\n[log]\nservers = " + desk.Servers +
                          "\nuser = gateway\npassword_file = gateway.password\n");
  const auto journal = [&] {
    for (const auto& file : std::filesystem::directory_iterator(Folder / "journal"))
      if (file.path().extension() == ".journal") return file.path();
    return std::filesystem::path();
  };
  const auto started = [&] { return std::filesystem::exists(Folder / "journal") && !journal().empty(); };
  LogDay day{"trades", ""};
  {
    RunningProgram killed("trade_gateway", {settings, "--log", Path("events")}, Folder / "gateway.out");
    ASSERT_TRUE(ComesTrue(started)) << ReadFile(Folder / "gateway.out");
    day.Date = JournalReader(journal()).Identity().Date;
    EXPECT_GE(ReadLog(desk, day, 20).size(), 20U);
    killed.Kill();
  }
  RunningProgram gateway("trade_gateway", {settings, "--log", Path("events")}, Folder / "gateway.out");
  Numbers all(kTrades);
  for (std::uint32_t i = 0; i < kTrades; ++i) all[i] = i + 1;
  EXPECT_EQ(ReadLog(desk, day, kTrades), all) << ReadFile(Folder / "gateway.out");
  const auto [code, second] = Run({settings});
  EXPECT_EQ(code, 3) << second;
  gateway.Signal(SIGTERM);
  EXPECT_EQ(gateway.Wait(), 0) << ReadFile(Folder / "gateway.out");
  const std::string events = ReadFile(Folder / "events");
  for (const char* part : {R"("event":"start")", R"("logged_on":true)", R"("trades":300,)",
                           R"("in_log":300,"behind":0)", R"("event":"stop"})"})
    EXPECT_NE(events.find(part), std::string::npos) << part << "\n" << events;

  LogWriter writer(desk, day, 1);
  EXPECT_THROW(
      {
        writer.Connect(std::chrono::seconds(5));
        writer.Publish(kTrades, 1, TradeMessages(kTrades + 1, 1));
      },
      FeedError)
      << "a desk only reads";
  const auto [replayed, said] =
      Run({"--replay", journal().string(), "--to", desk.Servers + "/" + day.Subject(), "--config", settings});
  EXPECT_EQ(replayed, 0) << said;
  EXPECT_EQ(ReadLog(desk, day, kTrades), all) << "nothing is doubled";
}

using Strings = std::set<std::string>;
Strings Column(const std::string& heading, const char* pattern) {
  Strings column;
  for (const Match& row : Matches(PageSection(SourceText("docs/feeds.md"), "\n## " + heading), pattern))
    EXPECT_TRUE(column.insert(row.size() > 2 ? row[1] + " " + row[2] : row[1]).second) << row[0];
  return column;
}

TEST(FeedsPage, HasEverySettingOptionExitCodeAndAlarm) {
  Strings settings, alarms;
  for (const SettingKey& key : SettingKeys()) settings.insert(std::string(key.Section) + " " + key.Name);
  EXPECT_EQ(Column("Settings", R"(\n\| (\w+) \| `(\w+)` \|)"), settings);
  const std::string help = GatewayHelpText(), codes = help.substr(help.find("Exit codes:"));
  const auto firsts = [](const std::string& text, const char* pattern) {
    Strings all;
    for (const Match& match : Matches(text, pattern)) all.insert(match[1]);
    return all;
  };
  EXPECT_EQ(Column("The program", R"(\n\| `([\w-]+)`[^|]*\|)"), firsts(help, R"(\n  (--[a-z-]+|CONFIG))"));
  EXPECT_EQ(Column("The program", R"(\n\| (\d) \|)"), firsts(codes, R"(\n  (\d))"));
  for (int kind = 0; *NameOf(static_cast<AlarmKind>(kind)) != '\0'; ++kind)
    alarms.insert(NameOf(static_cast<AlarmKind>(kind)));
  EXPECT_EQ(alarms.size(), 10U);
  EXPECT_EQ(Column("Alarms", R"(\n\| ((?!kind)[\w ]+) \|)"), alarms);
}

TEST(FeedsPage, HasTheFieldsOfTheMapping) {
  const std::string section = PageSection(SourceText("docs/feeds.md"), "\n## Field mapping");
  std::map<int, std::string> page;
  for (const Match& row : Matches(section, R"(\n\| (\d+) \| \w+ \| ([^|]+) \|)")) page[std::stoi(row[1])] = row[2];
  for (const TradeFieldRow& row : kTradeFieldRows) {
    if (row.Kind == FixKind::Terminator) continue;
    ASSERT_TRUE(page.contains(row.Tag)) << row.Tag;
    for (const std::uint16_t source : row.Sources) {
      if (source == 0 || source >= kMemberParty) continue;
      EXPECT_FALSE(Matches(page[row.Tag], ("\\b" + std::to_string(source) + "\\b").c_str()).empty()) << source;
    }
    page.erase(row.Tag);
  }
  EXPECT_TRUE(page.empty());
}

}  // namespace
