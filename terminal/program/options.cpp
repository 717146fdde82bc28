#include "terminal/program/options.h"

#include <charconv>
#include <cmath>
#include <utility>

#include "feeds/day_log/log_address.h"
#include "foundations/option_parser.h"
#include "platform/modules.h"
#include "terminal/common/errors.h"
#include "terminal/script/window_script.h"

namespace {

using Path = std::filesystem::path;

// What the value should be; null if it was taken.
using Fault = const char*;

Fault TakeLiveFrom(const Path& value, Options& options) {
  options.Live = ParseLiveFrom(PathText(value));
  return options.Live ? nullptr : "a time such as 20131007-12:00:00 or 12:00:00, or a number of trades";
}

Fault TakeSpeed(const Path& value, Options& options) {
  const std::string text = PathText(value);
  options.Speed.reset();
  options.SpeedGiven = true;
  if (text == "max") return nullptr;
  double speed = 0;
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, speed);
  if (error != std::errc() || rest != end || !std::isfinite(speed) || speed <= 0) return "a number above 0, or max";
  options.Speed = speed;
  return nullptr;
}

Fault TakeExitAfter(const Path& value, Options& options) {
  constexpr int kLongestSeconds = 7 * 24 * 3600;
  const std::string text = PathText(value);
  options.ExitAfter.emplace();
  options.ExitAfter->Played = text == "played";
  if (options.ExitAfter->Played) return nullptr;
  int seconds = 0;
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, seconds);
  if (error != std::errc() || rest != end || seconds < 1 || seconds > kLongestSeconds)
    return "played, or a number of seconds up to a week";
  options.ExitAfter->Seconds = std::chrono::seconds(seconds);
  return nullptr;
}

Fault TakeRecordMode(const Path& value, Options& options) {
  if (value != "0" && value != "1") return "0 or 1";
  options.RecordMode = value == "0" ? std::uint16_t{0} : std::uint16_t{1};
  return nullptr;
}

template <Path Options::*Place>
Fault TakePath(const Path& value, Options& options) {
  options.*Place = value;
  return value.empty() ? "a path" : nullptr;
}

// What stands in an address is for the feed to judge, but an address that is wrong is a wrong command line.
template <Path Options::*Place>
Fault TakeDay(const Path& value, Options& options) {
  const DaySpec day(value);
  if (day.What == DaySpec::Kind::Log) ParseLogAddress(day.Address);
  if (day.What == DaySpec::Kind::Fix && day.File.empty()) return "fix: and the path of its settings";
  return TakePath<Place>(value, options);
}

template <bool Options::*Place>
Fault TakeFlag(const Path& /*value*/, Options& options) {
  options.*Place = true;
  return nullptr;
}

struct OptionRow {
  const char* Name;
  const char* Value;  // null for an option without one
  Fault (*Take)(const Path& value, Options& options);
  const char* Help;
};

constexpr OptionRow kOptions[] = {
    {"--headless", nullptr, TakeFlag<&Options::Headless>,
     "play without windows, as fast as it goes or at --speed, and end"},
    {"--day", "FILE|ADDRESS", TakeDay<&Options::Day>,
     "the day: a CSV of executed trades, a file of wire messages, a record file or the journal of a gateway; or "
     "trades as they happen: nats://HOST[:PORT][,HOST...]/NAME.DATE, or tls://, for a day log, fix:FILE with the "
     "settings of a FIX session (default: the sample day)"},
    {"--log-access", "FILE", TakePath<&Options::LogAccess>,
     "user and secrets for the log of --day or --record: lines of KEY = VALUE with user, password_file, "
     "credentials_file and authorities"},
    {"--securities", "FILE", TakePath<&Options::Securities>,
     "names and multipliers (default: securities.csv beside the day, else the sample's)"},
    {"--desk", "FILE", TakePath<&Options::Desk>,
     "users, clients and members (default: desk.csv beside the day, else the sample's)"},
    {"--live-from", "TIME|COUNT", TakeLiveFrom,
     "where the download ends, such as 20131007-12:00:00, 12:00:00 or 5000 (default: after half of a CSV's lines; "
     "the messages of a wire or record file keep their numbers)"},
    {"--speed", "N|max", TakeSpeed,
     "live trades at N times real time; a change of date is not waited for (default: 60, and max with --headless)"},
    {"--plugin", "PATH", TakePath<&Options::Plugin>, "the plug-in's module (default: tradebook beside the program)"},
    {"--work", "DIR", TakePath<&Options::Work>,
     "the folder in which the plug-in works, made when missing (default: trade_book_work in the current folder)"},
    {"--record", "FILE|ADDRESS", TakeDay<&Options::Record>,
     "write the messages of the day into a file instead of playing it; with the extension .ada a record file, which "
     "holds the trades alone; with the address of a day log its trades into that log; needs no plug-in"},
    {"--record-mode", "0|1", TakeRecordMode, "plain or compressed messages in that file (default: 0)"},
    {"--exit-after", "SECONDS|played", TakeExitAfter,
     "close the windows after that time, or once the day has been played; with --headless end a feed"},
    {"--report", "FILE", TakePath<&Options::Report>,
     "with --headless: write the day report there at the end, an HTML page with positions, sums and charts"},
    {"--screenshot", "FILE", TakePath<&Options::Screenshot>,
     "write a picture of the windows into a PNG file when they close"},
    {"--script", "FILE", TakePath<&Options::Script>, "drive the windows by the commands of a text file"},
    {"--help", nullptr, TakeFlag<&Options::Help>, "this text"},
    {"--version", nullptr, TakeFlag<&Options::Version>, "the version"},
};

struct ExitCodeRow {
  ExitCode Code;
  const char* Help;
};

constexpr ExitCodeRow kExitCodes[] = {
    {ExitCode::Played, "the day has been played"},
    {ExitCode::BadLines,
     "a file had bad lines or messages, or a command of a script failed; each has been reported, the rest has been "
     "done"},
    {ExitCode::CommandLine, "the command line is wrong"},
    {ExitCode::File, "a file could not be read or written"},
    {ExitCode::Plugin, "the plug-in could not be loaded or lacks an entry point"},
    {ExitCode::Display, "there is no display for the windows"},
};

[[noreturn]] void Refuse(const std::string& sentence) {
  throw TerminalError(ExitCode::CommandLine, sentence + "; --help lists the options");
}

void TakeOption(const OptionRow& row, const std::string& value, Options& options) {
  Fault expected = nullptr;
  try {
    expected = row.Take(Path(std::u8string(value.begin(), value.end())), options);
  } catch (const FeedError& failure) {
    Refuse(std::string(row.Name) + ": " + failure.what());  // without the address: a password may stand in it
  }
  if (expected != nullptr) Refuse("the value \"" + value + "\" of " + row.Name + " is not " + expected);
}

// Fills the options from the words.
class CommandLine : public OptionParser {
 public:
  explicit CommandLine(Options& options)
      : OptionParser("terminal: plays a day of trades to the Trade Book plug-in", "terminal", 30, Refuse) {
    for (const OptionRow& row : kOptions)
      Add(row, [&row, &options](const std::string& value) { TakeOption(row, value, options); });
    AddFooter("Commands of a --script file, one a line; # begins a remark:\n" + ScriptHelpText() + "\n" +
              ExitCodesText(kExitCodes));
  }
  void ParseAll(std::vector<std::string> words) {
    if (const std::vector<std::string> unknown = Parse(std::move(words)); !unknown.empty())
      Refuse("there is no option " + unknown.front());
  }
};

bool IsLog(const Path& given) {
  return DaySpec(given).What == DaySpec::Kind::Log;
}

}  // namespace

Options ParseOptions(const std::vector<Path>& arguments) {
  Options options;
  std::vector<std::string> words;
  for (const Path& argument : arguments) words.push_back(PathText(argument));
  CommandLine(options).ParseAll(std::move(words));
  if (options.RecordMode && options.Record.empty()) Refuse("--record-mode says something only with --record");
  const bool isFeed = DaySpec(options.Day).IsFeed();
  const bool endsFeed = isFeed && options.Headless && options.Record.empty();
  const bool ofWindows = (options.ExitAfter && !endsFeed) || !options.Screenshot.empty() || !options.Script.empty();
  if (ofWindows && (options.Headless || !options.Record.empty()))
    Refuse("--exit-after, --screenshot and --script say something only with windows");
  if (!options.Report.empty() && (!options.Headless || !options.Record.empty()))
    Refuse("--report says something only with --headless and without --record; in windows: File, Day Report");
  if (isFeed && (options.Live || options.SpeedGiven || !options.Record.empty()))
    Refuse("--live-from, --speed and --record say something only of a day of files");
  if (!options.LogAccess.empty() && !IsLog(options.Day) && !IsLog(options.Record))
    Refuse("--log-access says something only with the address of a log");
  return options;
}

RunFiles FilesOf(const Options& options) {
  const auto full = [](const Path& given) { return given.empty() ? given : std::filesystem::absolute(given); };
  RunFiles files = RunFiles::OfDay(options.Day);
  if (files.Day.IsFeed()) files.Day = DaySpec(options.Day, options.LogAccess);
  files.FeedSecurities = full(options.Securities);
  if (!options.Securities.empty()) files.Securities = files.FeedSecurities;
  if (!options.Desk.empty()) files.Desk = full(options.Desk);
  files.Plugin =
      options.Plugin.empty() ? ProgramFolder() / (std::string("tradebook") + ModuleSuffix()) : full(options.Plugin);
  files.Work = full(options.Work.empty() ? "trade_book_work" : options.Work);
  if (!options.Record.empty()) files.Record.emplace(options.Record, options.LogAccess);
  files.Screenshot = full(options.Screenshot);
  files.Script = full(options.Script);
  files.Report = full(options.Report);
  return files;
}

std::string HelpText() {
  Options ignored;
  return CommandLine(ignored).Help();
}
