// What a user writes: the command line, and the commands of a script.
#include <array>

#include "terminal/program/options.h"
#include "terminal/script/window_script.h"
#include "tests/terminal/test_files.h"

namespace {

// The sentence of the failure that the call ends with, and its code.
template <typename Call>
std::string FailureOf(ExitCode code, Call call) {
  try {
    call();
  } catch (const TerminalError& error) {
    return error.Code == code ? error.what() : "another code";
  }
  return "taken";
}

TEST(Options, TakesEveryOption) {
  const Options some = ParseOptions({"--headless", "--live-from", "12:00:00", "--speed", "2.5"});
  EXPECT_TRUE(ParseOptions({"--headless", "--day", "nats://h/t.20260301", "--exit-after", "5"}).ExitAfter);
  EXPECT_TRUE(some.Headless && some.SpeedGiven && !some.ExitAfter && !some.RecordMode);
  EXPECT_EQ(std::pair(some.Live->Value, *some.Speed), std::pair(std::int64_t{43200}, 2.5));
  EXPECT_FALSE(ParseOptions({"--speed", "3", "--speed", "max"}).Speed || ParseOptions({}).SpeedGiven);
  for (const char* mode : {"0", "1"})
    EXPECT_EQ(ParseOptions({"--record", "r", "--record-mode", mode}).RecordMode, *mode - '0');
  const auto played = *ParseOptions({"--exit-after", "played"}).ExitAfter;
  const auto timed = *ParseOptions({"--exit-after", "604800"}).ExitAfter;
  EXPECT_TRUE(played.HasCome(true, {}) && !played.HasCome(false, std::chrono::hours(9)));
  EXPECT_TRUE(timed.HasCome(false, std::chrono::hours(168)) && !timed.HasCome(true, std::chrono::minutes(10079)));
}

TEST(Options, NamesFilesElseTheDefaults) {
  const auto here = std::filesystem::current_path();
  const RunFiles given = FilesOf(ParseOptions({"--desk", "d", "--securities", "s", "--plugin", "p", "--work", "-1",
                                               "--script", "s.txt", "--screenshot", "p.png"}));
  EXPECT_TRUE(given.IsSampleDay());
  EXPECT_EQ((std::array{given.Desk, given.Securities, given.Plugin, given.Work, given.Script, given.Screenshot}),
            (std::array{here / "d", here / "s", here / "p", here / "-1", here / "s.txt", here / "p.png"}));
  const RunFiles feed = FilesOf(ParseOptions({"--day", "nats://h/t.20260301", "--log-access", "a"}));
  EXPECT_EQ((std::array{feed.Day.Access, feed.Securities, given.WithDay(feed.Day).Securities}),
            (std::array{here / "a", ProgramFolder() / "sample_day" / "securities.csv", here / "s"}));
  const RunFiles files = FilesOf(ParseOptions({"--record", "r", "--day=d e"}));
  const auto sample = ProgramFolder() / "sample_day";
  EXPECT_EQ((std::array{files.Day.File, files.Securities, files.Desk, files.Plugin, files.Work, files.Record->File,
                        files.Script}),
            (std::array{here / "d e", sample / "securities.csv", sample / "desk.csv", TestModule("tradebook"),
                        here / "trade_book_work", here / "r", std::filesystem::path()}));
}

TEST(Options, RejectsWithOneSentence) {
  const std::pair<std::vector<std::filesystem::path>, const char*> cases[] = {
      {{"--headless=x"}, "--headless takes no value"},
      {{"--day"}, "--day needs a value"},
      {{"--day", "--headless"}, "--day needs a value"},
      {{"--record-mode", "1"}, "--record-mode says something only with --record"},
      {{"--headless", "--exit-after", "1"}, "--exit-after, --screenshot and --script say something only with windows"},
      {{"--record", "r", "--script", "s"}, "--exit-after, --screenshot and --script say something only with windows"},
      {{"--report", "r"},
       "--report says something only with --headless and without --record; in windows: File, Day Report"},
      {{"--day", "fix:c", "--speed", "1"}, "--live-from, --speed and --record say something only of a day of files"},
      {{"--day", "fix:c", "--record", "r"}, "--live-from, --speed and --record say something only of a day of files"},
      {{"--day", "d", "--log-access", "a"}, "--log-access says something only with the address of a log"},
  };
  const auto said = [](const std::vector<std::filesystem::path>& words) {
    return FailureOf(ExitCode::CommandLine, [&] { ParseOptions(words); });
  };
  for (const auto& [words, sentence] : cases)
    EXPECT_EQ(said(words), sentence + std::string("; --help lists the options"));
  for (const std::string word : {"--headles", "--Headless", "day.csv", "/day"})
    EXPECT_TRUE(said({word}).starts_with("there is no option " + word + ";"));
  const std::string secret = said({"--day", "nats://me:word@h/t.20260301"});
  EXPECT_TRUE(secret.starts_with("--day: ") && secret.find("me:word") == std::string::npos) << secret;
  // Option, values, and what they are not.
  const std::tuple<const char*, std::vector<const char*>, const char*> values[] = {
      {"--day", {""}, "a path;"},
      {"--day", {"fix:"}, "fix: and the path of its settings"},
      {"--speed", {"0", "2x", "inf", "Max"}, "a number above 0, or max;"},
      {"--record-mode", {"2"}, "0 or 1;"},
      {"--exit-after", {"0", "604801", "1s"}, "played, or a number of seconds"},
      {"--live-from", {"noon"}, "a time"},
  };
  for (const auto& [option, refused, fault] : values)
    for (const std::string value : refused)
      EXPECT_TRUE(said({option, value}).starts_with("the value \"" + value + "\" of " + option + " is not " + fault));
}

TEST(KeyPress, ReadsAndShowsNames) {
  const std::tuple<const char*, KeyPress, const char*> good[] = {
      {"F8", {0x77}, "F8"},
      {"f12", {0x7B}, "F12"},
      {"Ctrl+C", {'C', true}, "Ctrl+C"},
      {"alt+shift+ctrl+end", {0x23, true, true, true}, "Ctrl+Shift+Alt+End"},
      {"z", {'Z'}, "Z"},
      {"9", {'9'}, "9"},
      {"ESCAPE", {0x1B}, "Escape"}};
  for (const auto& [text, key, shown] : good) {
    EXPECT_EQ(ParseKeyPress(text), key) << text;
    EXPECT_EQ(KeyPressText(key), shown);
  }
  for (const char* text :
       {"", "+", "F0", "F13", "Ctrl", "Ctrl+", "Ctrl+Ctrl+C", "F8 ", "C+Ctrl", "Strg+C", "-", "[", ":"})
    EXPECT_FALSE(ParseKeyPress(text)) << text;
  EXPECT_EQ(KeyPressText({.Code = 0, .Ctrl = true}), "");
}

TEST(WindowScript, ReadsItsCommands) {
  using enum ScriptAction;
  // Each is the one command of a file, behind a remark and an empty line.
  const std::pair<const char*, ScriptCommand> cases[] = {
      {"open-book # now", {.Action = OpenBook}},
      {"  select GC 2013\t", {.Action = Select, .Text = "GC 2013"}},
      {"focus book", {.Action = Focus, .Focus = ScriptFocus::Book}},
      {"key Ctrl+c", {.Action = Key, .Key = {'C', true}}},
      {"wait live", {.Action = WaitLive}},
      {"wait 3600000", {.Action = WaitTime, .Time = std::chrono::hours(1)}},
      {"screenshot a b.png", {.Action = Screenshot, .Text = "a b.png"}},
      {"menu Day > As Fast As Possible", {.Action = Menu, .Menu = {"Day", "As Fast As Possible"}}},
      {"usage day 1\r", {.Action = Usage, .Text = "day 1"}},
      {"find not buy", {.Action = Find, .Text = "not buy"}},
      {"filter Side  not buy # now", {.Action = Filter, .Text = "not buy", .Column = "Side"}},
      {"header Price ctrl", {.Action = Header, .Column = "Price", .Ctrl = true}},
      {"rows 2 2", {.Action = Rows, .FirstRow = 2, .LastRow = 2}},
      {"place tab", {.Action = Place, .Place = ScriptPlace::Tab}},
      {"expect-rows 0", {.Action = ExpectRows}},
  };
  for (const auto& [line, command] : cases) {
    const auto read = ReadWindowScript(WriteTestFile("good.txt", std::string("# a remark\r\n\r\n") + line));
    ScriptCommand expected = command;
    expected.Line = 3;
    EXPECT_TRUE(read.size() == 1 && read[0] == expected) << line;
  }
}

TEST(WindowScript, RejectsALineWithItsNumber) {
  const std::pair<const char*, const char*> cases[] = {
      {"open", "there is no command \"open\""},
      {"Exit", "there is no command \"Exit\""},
      {"exit now", "exit needs nothing behind it"},
      {"select", "select needs a text behind it"},
      {"focus books", "focus needs market-watch,"},
      {"key F13", "key needs a key such as"},
      {"wait -1", "wait needs played, live"},
      {"wait 1s", "wait needs played, live"},
      {"wait 3600001", "wait needs played, live"},
      {"menu Day", "menu needs a menu and its entry"},
      {"menu Day>>Pause", "menu needs a menu and "},
      {"menu Day>", "menu needs a menu and its entry"},
      {"find", "find needs a text behind it"},
      {"filter", "filter needs a column's title"},
      {"header Price Ctrl", "header needs a column's title"},
      {"header", "header needs a column's title"},
      {"rows 0 1", "rows needs the first row and the last"},
      {"rows 3 2", "rows needs the first row and"},
      {"rows 1", "rows needs the first row and the last"},
      {"rows 1 2 3", "rows needs the first row"},
      {"rows 1 2147483648", "rows needs the first row"},
      {"book-menu", "book-menu needs an entry of"},
      {"place middle", "place needs left, right, top, b"},
      {"focus none GC", "focus needs market-watch"},
      {"expect-rows -1", "expect-rows needs a number of r"},
  };
  for (const auto& [line, reason] : cases) {
    const auto file = WriteTestFile("bad.txt", std::string("exit\n\n") + line + "\nexit\n");
    const std::string said = FailureOf(ExitCode::File, [&file] { ReadWindowScript(file); });
    EXPECT_TRUE(said.starts_with(PathText(file) + ":3: " + reason)) << said;
  }
}

}  // namespace
