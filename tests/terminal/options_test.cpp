#include "terminal/program/options.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/modules.h"
#include "terminal/common/errors.h"

namespace {

using Arguments = std::vector<std::filesystem::path>;

TEST(Options, TakesEveryOption) {
  const Options options =
      ParseOptions({"--headless", "--day", "d.csv", "--securities", "s", "--desk", "k", "--live-from", "12:00:00",
                    "--speed", "2.5", "--plugin", "p", "--work", "w", "--record", "r", "--record-mode", "1"});
  EXPECT_TRUE(options.Headless);
  EXPECT_FALSE(options.Help || options.Version);
  EXPECT_EQ(options.Day, "d.csv");
  EXPECT_EQ(options.Securities, "s");
  EXPECT_EQ(options.Desk, "k");
  EXPECT_EQ(options.Live->By, LiveFrom::Kind::TimeOfDay);
  EXPECT_EQ(options.Live->Value, 43200);
  EXPECT_EQ(options.Speed, 2.5);
  EXPECT_EQ(options.Plugin, "p");
  EXPECT_EQ(options.Work, "w");
  EXPECT_EQ(options.Record, "r");
  EXPECT_EQ(options.RecordMode, 1);
  EXPECT_TRUE(options.SpeedGiven);
  const Options windows = ParseOptions({"--script", "s.txt", "--screenshot", "p.png", "--exit-after", "90"});
  EXPECT_FALSE(windows.SpeedGiven);
  EXPECT_EQ(windows.Script, "s.txt");
  EXPECT_EQ(windows.Screenshot, "p.png");
  EXPECT_EQ(windows.ExitAfter->Seconds, std::chrono::seconds(90));
  EXPECT_FALSE(windows.ExitAfter->Played);
  EXPECT_TRUE(ParseOptions({"--exit-after", "played"}).ExitAfter->Played);
  EXPECT_FALSE(ParseOptions({"--speed", "3", "--speed", "max"}).Speed);
  EXPECT_EQ(ParseOptions({"--day=d e"}).Day, "d e");
  EXPECT_EQ(ParseOptions({"--work", "-1"}).Work, "-1");
}

TEST(Options, NamesFilesElseTheDefaults) {
  const auto here = std::filesystem::current_path();
  const RunFiles files = FilesOf(ParseOptions({"--desk", "d.csv", "--script", "s.txt"}));
  EXPECT_TRUE(files.IsSampleDay());
  EXPECT_EQ(files.Desk, here / "d.csv");
  EXPECT_EQ(files.Securities, ProgramFolder() / "sample_day" / "securities.csv");
  EXPECT_EQ(files.Plugin, ProgramFolder() / (std::string("tradebook") + ModuleSuffix()));
  EXPECT_EQ(files.Work, here / "trade_book_work");
  EXPECT_EQ(files.Script, here / "s.txt");
  EXPECT_EQ(files.Record, "");
}

TEST(ExitAfter, ComesWithTheDaysEndOrTheTime) {
  using std::chrono::seconds;
  const auto played = *ParseOptions({"--exit-after", "played"}).ExitAfter;
  EXPECT_FALSE(played.HasCome(false, seconds(1000)));
  EXPECT_TRUE(played.HasCome(true, seconds(0)));
  const auto timed = *ParseOptions({"--exit-after", "90"}).ExitAfter;
  EXPECT_FALSE(timed.HasCome(true, std::chrono::milliseconds(89999)));
  EXPECT_TRUE(timed.HasCome(false, seconds(90)));
}

TEST(Options, RejectsWithOneSentence) {
  const struct {
    Arguments Words;
    const char* Sentence;
  } cases[] = {
      {{"--headles"}, "there is no option --headles;"},
      {{"--Headless"}, "there is no option --Headless;"},
      {{"day.csv"}, "there is no option day.csv;"},
      {{"--headless=x"}, "--headless takes no value;"},
      {{"/day", "d"}, "there is no option /day;"},
      {{"--day"}, "--day needs a value;"},
      {{"--day", "--headless"}, "--day needs a value;"},
      {{"--day", ""}, "the value \"\" of --day is not a path;"},
      {{"--speed", "0"}, "the value \"0\" of --speed is not a number above 0, or max;"},
      {{"--speed", "-1"}, "the value \"-1\" of --speed is not"},
      {{"--speed", "2x"}, "the value \"2x\" of --speed is not"},
      {{"--speed", "inf"}, "the value \"inf\" of --speed is not"},
      {{"--speed", "Max"}, "the value \"Max\" of --speed is not"},
      {{"--record", "r", "--record-mode", "2"}, "the value \"2\" of --record-mode is not 0 or 1;"},
      {{"--record-mode", "1"}, "--record-mode says something only with --record;"},
      {{"--exit-after", "0"}, "the value \"0\" of --exit-after is not played, or a number of seconds"},
      {{"--exit-after", "Played"}, "the value \"Played\" of --exit-after is not"},
      {{"--headless", "--exit-after", "1"}, "--exit-after, --screenshot and --script say something only with windows;"},
      {{"--record", "r", "--script", "s"}, "--exit-after, --screenshot and --script say something only with windows;"},
      {{"--live-from", "noon"}, "the value \"noon\" of --live-from is not a time"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.Sentence);
    try {
      ParseOptions(row.Words);
      ADD_FAILURE() << "was taken";
    } catch (const TerminalError& error) {
      EXPECT_EQ(error.Code, ExitCode::CommandLine);
      EXPECT_EQ(std::string(error.what()).rfind(row.Sentence, 0), 0U) << error.what();
    }
  }
}

TEST(LiveFrom, TellsTimesFromCounts) {
  using Kind = LiveFrom::Kind;
  const struct {
    const char* Text;
    Kind By;
    std::int64_t Value;
  } good[] = {
      {"0", Kind::Count, 0},
      {"5000", Kind::Count, 5000},
      {"00:00:00", Kind::TimeOfDay, 0},
      {"23:59:59", Kind::TimeOfDay, 86399},
      {"19700102-00:00:01", Kind::Instant, 86401},
      {"20131007-12:00:00", Kind::Instant, 1381147200},
      {"20240229-00:00:00", Kind::Instant, 1709164800},
  };
  for (const auto& row : good) {
    SCOPED_TRACE(row.Text);
    const auto live = ParseLiveFrom(row.Text);
    ASSERT_TRUE(live);
    EXPECT_EQ(live->By, row.By);
    EXPECT_EQ(live->Value, row.Value);
  }
  for (const char* text : {"", "-1", "-0", "+1", " 1", "1 ", "99999999999999999999", "12:00", "12:00:0", "12:00:000",
                           "24:00:00", "12:60:00", "12:00:60", "1x:00:00", "20131007 12:00:00", "20230229-00:00:00",
                           "20131301-00:00:00", "20131007-12:00:00 ", "20131007-"})
    EXPECT_FALSE(ParseLiveFrom(text)) << text;
}

}  // namespace
