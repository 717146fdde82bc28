// Runs of the built terminal program against plug-ins that write down what they are told.
#include "terminal/program/program.h"

#include "terminal/program/window_memory.h"
#include "terminal/program/working_folder.h"
#include "tests/terminal/test_files.h"

namespace {

std::string FourTrades() {
  return Quoted(WriteDay({"00:00:01", "00:00:02", "00:00:03", "00:00:04"}));
}

std::string Plugin(const std::filesystem::path& module) {
  return " --headless --plugin " + Quoted(module) + " --work " + Quoted(TestFolder() / "work");
}

TEST(Program, PlaysWhatAPluginAskedFor) {
  const auto trade = [](unsigned number, const std::string& id) {
    return WireMessage(number, WireText(55118, "20131007-00:00:0" + id) + WireText(55101, id));
  };
  WriteSecurities();
  const auto day = WriteTestFile(
      "day.bin", trade(8111, "1") + "junk" + DayMessage(9112) + trade(8111, "2") + trade(9101, "3") + trade(9101, "4"));
  const RunResult run = RunProgram("--day " + Quoted(day) + Plugin(TestModule("fake_plugin")) + " --speed 20");
  EXPECT_EQ(run.Code, 1);
  EXPECT_TRUE(run.Errors.ends_with(": byte 43: 4 bytes that belong to no message\n")) << run.Errors;
  const std::string log = ReadFile(TestFolder() / "work" / "fake_plugin.log");
  // Beats come between messages, at the latest in the twentieth of a second between the two live trades.
  EXPECT_LT(log.find("refresh"), log.find("routed 9101 4"));
  EXPECT_EQ(Without(log, "refresh\n"),
            "raw 30025\nraw 30022\nrouted 8111 1\nrouted 8111 2\nrouted 8112\n"
            "master BIG BLUE 2.5\nbars 1\nraw 30020\nrouted 9101 3\nrouted 9101 4\nraw 30021\n");
  EXPECT_TRUE(std::filesystem::exists(TestFolder() / "work" / "TradeHeaderFile.txt"));
  const std::string& summary = run.Out;
  EXPECT_EQ(
      summary.substr(0, summary.find("Refresh beats")),
      "Plug-in             Fake\nMessages sent       9\nMessages not asked  1\nMessages received   32005: 1, 32022: 1\n"
      "Trades played       4 (download 2, live 2)\n");
  EXPECT_NE(summary.find("Bad lines           1\nSeconds             "), std::string::npos) << summary;
}

TEST(Program, TellsEachFailureByItsCode) {
  const std::string day = FourTrades();
  const auto text = WriteTestFile("text.so", "no module");
  std::vector<std::tuple<std::string, int, const char*>> cases = {
      {"--help", 0, ""},
      {"--headless --screenshot x.png", 2, "--exit-after, --screenshot and --script say something only with windows"},
      {"--record " + day + " --day " + day, 2, "--record would write over the day"},
      {"--day missing.csv" + Plugin(text), 3, "missing.csv: cannot be opened: "},
      {"--day " + day + " --securities " + day + Plugin(TestModule("fake_plugin")), 3,
       "day.csv:1: the header must be "},
      {"--day " + day + " --record " + Quoted(TestFolder() / "no" / "x"), 3, "cannot be written: "},
      {"--day " + day + " --record " + Quoted(TestFolder() / "no" / "x.ada"), 3, "x.ada: cannot be written: "},
      {"--headless --day " + day + " --report " + Quoted(TestFolder() / "no" / "x.html"), 3,
       "x.html: cannot be written: "},
      {"--headless --work " + Quoted(text), 3, "text.so: cannot be made: "},
      {Plugin(text), 4, "the plug-in cannot be loaded: "},
      {"--day " + day + Plugin(TestModule("lacking_plugin")), 4, "the plug-in lacks the entry point OnPluginMessage"},
  };
  if (std::filesystem::exists("/dev/full"))
    // A short day fails when the file is closed, a long one before.
    for (const std::string name : {"full_long.ada", "full_short.ada", "full_short.bin"}) {
      std::filesystem::create_symlink("/dev/full", TestFolder() / name);
      cases.emplace_back(
          (name.find("long") != std::string::npos ? "" : "--day " + day) + " --record " + Quoted(TestFolder() / name),
          3, "cannot be written: No space left");
    }
  for (const auto& [arguments, code, errors] : cases) {
    const RunResult run = RunProgram(arguments);
    EXPECT_EQ(run.Code, code) << arguments;
    EXPECT_NE(run.Errors.find(errors), std::string::npos) << run.Errors;
    EXPECT_EQ(run.Errors.empty(), *errors == '\0') << run.Errors;
  }
  EXPECT_EQ(RunProgram("--version").Out, "terminal 0.1.0\n");
  if (kWindows) GTEST_SKIP() << "Windows always has a display";
  const RunResult run = RunProgram("--day " + day, "DISPLAY= WAYLAND_DISPLAY= ");
  EXPECT_EQ(run.Code, 5);
  EXPECT_EQ(run.Errors, "terminal: there is no display to show windows on: give it one, or start with --headless\n");
  EXPECT_FALSE(std::filesystem::exists("trade_book_work"));
}

std::string Recorded(const std::string& arguments, const std::filesystem::path& file, const std::string& told) {
  const RunResult run = RunProgram(arguments + " --record " + Quoted(file));
  EXPECT_EQ(run.Code, 0) << run.Errors;
  EXPECT_NE(run.Out.find(file.filename().string() + ": " + told), std::string::npos) << run.Out;
  return ReadFile(file);
}

TEST(Program, RecordsTheSampleDayAlikeInBothModes) {
  const auto folder = TestFolder();
  const std::string all = "13,613 messages", plain = Recorded("", folder / "plain.bin", all);
  EXPECT_LT(Recorded("--record-mode 1", folder / "small.bin", all).size(), plain.size());
  EXPECT_TRUE(Recorded("--day " + Quoted(folder / "small.bin"), folder / "again.bin", all) == plain);
  // 13,612 trades, the first half of them download, and its end.
  EXPECT_EQ((plain.size() - Without(plain, "#\x12\x27\xAF\x1F").size()) / 5, 6806U);
}

// What the plug-in itself leaves of a run.
std::string DailyFileOf(const std::string& day) {
  const auto work = TestFolder() / "work";
  std::filesystem::remove_all(work);
  const auto report = TestFolder() / "report.html";
  const RunResult run =
      RunProgram("--headless --work " + Quoted(work) + " --day " + day + " --report " + Quoted(report));
  EXPECT_EQ(run.Code, 0) << run.Errors;
  return ReadFile(DailyFileIn(work));
}

TEST(Program, PlaysADayAlikeFromItsRecordFile) {
  const std::string day = FourTrades(), direct = DailyFileOf(day);
  EXPECT_EQ(std::count(direct.begin(), direct.end(), '\n'), 4);
  const auto file = WriteTestFile("day.ADA", std::string(90000, '#'));  // a longer file is replaced whole
  const auto messages =
      WriteTestFile("day.bin", Recorded("--day " + day, file.parent_path() / "x", "5 messages") + DayMessage(9112));
  for (const char* mode : {"1", "0"}) {
    Recorded("--day " + Quoted(messages) + " --record-mode " + mode, file, "4 trades; other messages left out: 1\n");
    EXPECT_EQ(DailyFileOf(Quoted(file)), direct);
  }
  EXPECT_NE(ReadFile(TestFolder() / "report.html").find("<p>4 trades in "), std::string::npos);
  const std::string bytes = ReadFile(file);
  EXPECT_EQ(bytes.substr(0, 5) + bytes.substr(10, 5), WireU16(1, 0) + WireU16(10002, 8111));
  EXPECT_EQ(bytes.substr(bytes.size() / 4 * 3 + 10, 5), WireU16(10002, 9101));
  EXPECT_EQ(DailyFileOf(Quoted(WriteTestFile("empty.ada", ""))).find("\r\n"), std::string::npos);
}

TEST(WorkingFolder, IsMadeAndFilledWithoutOverwriting) {
  const auto before = std::filesystem::current_path(), work = TestFolder() / "new" / "work";
  WriteTestFile("samples/one.txt", "sample one");
  WriteTestFile("samples/deep/two.txt", "sample two");
  WriteTestFile("new/work/one.txt", "the user's");
  EnterWorkingFolder(work, TestFolder() / "samples");
  EXPECT_TRUE(std::filesystem::equivalent(std::filesystem::current_path(), work));
  EXPECT_EQ(ReadFile("one.txt") + "|" + ReadFile("deep/two.txt"), "the user's|sample two");
  std::filesystem::current_path(before);
  EXPECT_THROW(EnterWorkingFolder(work, TestFolder() / "missing"), TerminalError);
  EXPECT_TRUE(std::filesystem::equivalent(std::filesystem::current_path(), before));
}

TEST(WorkingFolder, GetsAColumnProfileOnlyWhileItIsNew) {
  using Names = std::vector<std::filesystem::path>;
  const std::filesystem::path profile = "ColumnProfile/Book/ColumnProfile.xml";
  const std::pair<Names, Names> cases[] = {
      {{}, {profile, "config.ini", "a/b.txt"}},
      {{"trades.log", "ColumnProfile"}, {profile, "config.ini", "a/b.txt"}},
      {{profile}, {"config.ini", "a/b.txt"}},
      {{"config.ini"}, {"a/b.txt"}},
      {{"a/b.txt"}, {"config.ini"}},
      {{"TerminalWindows.xml"}, {"config.ini", "a/b.txt"}},
      {{"TradeBookSettings.xml"}, {"config.ini", "a/b.txt"}},
  };
  for (const auto& [there, copied] : cases)
    EXPECT_EQ(SamplesToCopy({"config.ini", "a/b.txt", profile},
                            [&](const auto& file) { return std::ranges::count(there, file) != 0; }),
              copied)
        << (there.empty() ? profile : there.front());
}

TEST(WindowMemory, IsNewUntilItWasWritten) {
  EXPECT_TRUE(WindowMemory(TestFolder()).IsNew());
  WindowMemory memory(TestFolder());
  memory.SaveFeed(DaySpec("nats://h/t.20260301"));
  EXPECT_TRUE(memory.Write());
  EXPECT_TRUE(memory.IsNew()) << "in this run";
  EXPECT_FALSE(WindowMemory(TestFolder()).IsNew());
}

TEST(WindowMemory, KeepsTheLatestFeeds) {
  WindowMemory memory(TestFolder());
  EXPECT_TRUE(memory.LoadFeeds().empty());
  const auto feed = [](int number) { return DaySpec("nats://h/t.2026030" + std::to_string(number), "access"); };
  for (const int number : {1, 2, 3, 1, 4, 5, 6, 7, 8, 9, 0, 9, 8}) memory.SaveFeed(feed(number));
  memory.SaveFeed(DaySpec("fix:desk.cfg"));
  std::vector<DaySpec> latest = {DaySpec("fix:desk.cfg")};
  for (const int number : {8, 9, 0, 7, 6, 5, 4, 1, 3}) latest.push_back(feed(number));
  EXPECT_EQ(memory.LoadFeeds(), latest);
  RunFiles files;
  files.Day = feed(1);
  memory.SaveDay(files);
  EXPECT_EQ(memory.LoadDay(), feed(1));
  files.Day = DaySpec("day.csv");
  memory.SaveDay(files);
  EXPECT_EQ(memory.LoadDay(), files.Day);
}

TEST(WindowMemory, KeepsOnlyPossiblePlaces) {
  WindowMemory memory(TestFolder());
  EXPECT_FALSE(memory.LoadFrame() || memory.LoadList(L"MarketWatch") || memory.LoadDay());
  const auto keepsFrame = [&memory](const SettingsRectangle& rectangle) {
    memory.SaveFrame({rectangle, true});
    const auto kept = memory.LoadFrame();
    return kept && kept->Rectangle.Left == rectangle.Left && kept->Maximized;
  };
  EXPECT_TRUE(keepsFrame({-32000, 10, 32000, 210}) && keepsFrame({0, -32000, 200, 32000}));
  EXPECT_FALSE(keepsFrame({0, 0, 199, 800}) || keepsFrame({0, 0, 800, 199}) || keepsFrame({0, 0, 32001, 800}));
  EXPECT_FALSE(keepsFrame({-32001, 0, 800, 800}) || keepsFrame({0, 0, 800, 32001}) ||
               keepsFrame({0, -32001, 800, 800}));
  const auto keepsColumn = [&memory](const ColumnPlace& column) {
    const ListPlace place{{{L"Name", 100, L"<x\"> &"}, column}, L"Last", false, true};
    memory.SaveList(L"MarketWatch", place);
    const auto kept = memory.LoadList(L"MarketWatch");
    return kept && kept->Columns == place.Columns && !kept->Rising && kept->FilterShown;
  };
  EXPECT_TRUE(keepsColumn({L"Last", 10}) && keepsColumn({L"Last", 4000}));
  EXPECT_FALSE(keepsColumn({L"Last", 9}) || keepsColumn({L"Last", 4001}) || keepsColumn({L"", 90}));
}

}  // namespace
