#include "terminal/program/program.h"

#include <cmath>
#include <cstdio>
#include <ostream>
#include <string>

#include "platform/modules.h"
#include "terminal/common/errors.h"
#include "terminal/day/message_file.h"
#include "terminal/day/numbered_day.h"
#include "terminal/link/plugin_link.h"
#include "terminal/link/terminal_host.h"
#include "terminal/play/player.h"
#include "terminal/program/feed_watch.h"
#include "terminal/program/log_recording.h"
#include "terminal/program/working_folder.h"
#include "terminal/report/day_report.h"

namespace {

using Path = std::filesystem::path;

std::string RecordMessages(NumberedDay& script, const Path& file, std::uint16_t mode) {
  MessageRecorder record(file, mode);
  std::uint64_t messages = 0;
  while (script.Next() == DayStep::Message) {
    if (record.Write(script.Message()))
      ++messages;
    else
      script.Report("the message is too long to be recorded");
  }
  record.Close();
  return WithThousands(messages) + " messages";
}

// Intentional: the end of a download is not counted as left out; the numbers of the trades tell it.
std::string RecordTrades(NumberedDay& script, const Path& file, std::uint16_t mode) {
  TradeRecorder record(file, mode);
  std::uint64_t trades = 0;
  std::uint64_t others = 0;
  while (script.Next() == DayStep::Message) {
    const bool isDownloadEnd = script.Message().MessageNumber == 8112;
    if (record.Write(script.Message()))
      ++trades;
    else
      others += isDownloadEnd ? 0 : 1;
  }
  record.Close();
  const std::string rest = others == 0 ? "" : "; other messages left out: " + WithThousands(others);
  return WithThousands(trades) + " trades" + rest;
}

void RecordIntoFile(const RunFiles& files, const Options& options, BadLineReport& badLines, std::ostream& out) {
  const Path& file = files.Record->File;
  std::error_code error;
  if (std::filesystem::equivalent(files.Day.File, file, error))
    throw TerminalError(ExitCode::CommandLine, "--record would write over the day, " + PathText(file));
  DayInput input(files, options.Live, badLines);
  const auto record = IsRecordFile(file) ? RecordTrades : RecordMessages;
  out << PathText(file) << ": " << record(input.Open(), file, options.RecordMode.value_or(0)) << '\n';
}

// A log has no download: whoever reads it tells that itself.
void RecordIntoLog(const RunFiles& files, BadLineReport& badLines, std::ostream& out) {
  DayInput input(files, LiveFrom{LiveFrom::Kind::Count, 0}, badLines);
  NumberedDay& script = input.Open();
  const std::unique_ptr<BatchTarget> log = OpenLogForRecording(*files.Record);
  out << files.Record->Address << ": " << RecordedText(RecordTradesInBatches(script, *log)) << '\n';
}

void RecordDay(const RunFiles& files, const Options& options, BadLineReport& badLines, std::ostream& out) {
  if (files.Record->What == DaySpec::Kind::Log) return RecordIntoLog(files, badLines, out);
  RecordIntoFile(files, options, badLines, out);
}

// A night job learns of a wrong folder before the day is played.
void CheckReportFolder(const Path& report) {
  std::error_code error;
  if (!report.empty() && !std::filesystem::is_directory(report.parent_path(), error))
    ThrowFileError(report, "cannot be written", std::make_error_code(std::errc::no_such_file_or_directory));
}

void PlayDay(const RunFiles& files, const Options& options, BadLineReport& badLines, std::ostream& out,
             std::ostream& errors) {
  CheckReportFolder(files.Report);
  DayInput input(files, options.Live, badLines);
  NumberedDay& script = input.Open();
  EnterWorkingFolder(files.Work, ProgramFolder() / "working_folder");
  WallClock clock;
  RefreshBeat beat(clock);
  TerminalHost host(input.Securities, beat);
  const RunningHostScope running(host);
  PluginLink plugin(files.Plugin);
  DaySummary summary;
  summary.PluginName = plugin.Description().Name;
  summary.ControlMessages = SendStart(plugin, false);
  PlayProgress progress(errors, clock);
  const PlayClock::Time start = clock.Now();
  FeedWatch watch(input, options, clock, progress, errors);
  TradeLedger ledger;
  summary.Played = DayPlayer(plugin, beat, clock, progress, options.Speed, files.Report.empty() ? nullptr : &ledger)
                       .Play(script, [&watch] { return watch.GoesOn(); });
  summary.Time = clock.Now() - start;
  watch.TellNews();
  progress.Finish();
  summary.ControlMessages += plugin.Send(30021) ? 1 : 0;
  beat.Register({});
  summary.Beats = beat.Calls();
  summary.Received = host.Received();
  summary.BadLines = badLines.Count();
  out << SummaryText(summary);
  if (!files.Report.empty()) SaveDayReport(ledger, {.Day = files.Day.Name()}, files.Report);
}

ExitCode Run(const Options& options, PlayInWindowsFunction playInWindows, std::ostream& out, std::ostream& errors) {
  if (options.Help || options.Version) {
    out << (options.Help ? HelpText() : std::string("terminal ") + kTerminalVersion + "\n");
    return ExitCode::Played;
  }
  BadLineReport badLines(errors);
  const RunFiles files = FilesOf(options);
  if (files.Record)
    RecordDay(files, options, badLines, out);
  else if (options.Headless)
    PlayDay(files, options, badLines, out, errors);
  else
    playInWindows(files, options, badLines, out);
  return badLines.Count() + badLines.FailedCommands() == 0 ? ExitCode::Played : ExitCode::BadLines;
}

}  // namespace

int RunTerminal(const std::vector<Path>& arguments, PlayInWindowsFunction playInWindows, std::ostream& out,
                std::ostream& errors) {
  ExitCode code = ExitCode::Played;
  try {
    code = Run(ParseOptions(arguments), playInWindows, out, errors);
  } catch (const TerminalError& error) {
    errors << "terminal: " << error.what() << '\n';
    code = error.Code;
  } catch (const std::exception& error) {
    errors << "terminal: " << error.what() << '\n';
    code = ExitCode::File;
  }
  return static_cast<int>(code);
}

namespace {

constexpr std::size_t kValueColumn = 20;

std::string Line(std::string head, const std::string& value) {
  head.resize(kValueColumn, ' ');
  return head + value + "\n";
}

std::string ReceivedText(const std::map<std::uint16_t, std::uint64_t>& received) {
  std::string text;
  for (const auto& [number, count] : received)
    text += (text.empty() ? "" : ", ") + std::to_string(number) + ": " + WithThousands(count);
  return text.empty() ? "none" : text;
}

std::string SecondsText(double seconds) {
  char text[32];
  std::snprintf(text, sizeof text, "%.3f", seconds);
  return text;
}

}  // namespace

std::string SummaryText(const DaySummary& summary) {
  const PlayCounts& played = summary.Played;
  const std::uint64_t trades = played.Download + played.Live;
  const double seconds = summary.Time.count();
  std::string text = Line("Plug-in", summary.PluginName);
  text += Line("Messages sent", WithThousands(played.Messages + summary.ControlMessages));
  if (played.NotAsked != 0) text += Line("Messages not asked", WithThousands(played.NotAsked));
  text += Line("Messages received", ReceivedText(summary.Received));
  text += Line("Trades played", WithThousands(trades) + " (download " + WithThousands(played.Download) + ", live " +
                                    WithThousands(played.Live) + ")");
  text += Line("Refresh beats", WithThousands(summary.Beats));
  text += Line("Bad lines", WithThousands(summary.BadLines));
  if (summary.FailedCommands) text += Line("Failed commands", WithThousands(*summary.FailedCommands));
  text += Line("Seconds", SecondsText(seconds));
  if (seconds > 0)
    text += Line("Trades per second",
                 WithThousands(static_cast<std::uint64_t>(std::llround(static_cast<double>(trades) / seconds))));
  return text;
}
