#include "terminal/program.h"

#include <ostream>
#include <string>

#include "platform/module.h"
#include "terminal/day_input.h"
#include "terminal/day_player.h"
#include "terminal/message_record.h"
#include "terminal/plugin_link.h"
#include "terminal/plugin_start.h"
#include "terminal/record_file.h"
#include "terminal/summary.h"
#include "terminal/terminal_error.h"
#include "terminal/terminal_host.h"
#include "terminal/thousands.h"
#include "terminal/working_folder.h"

namespace {

using Path = std::filesystem::path;

std::string RecordMessages(CDayScript& script, const Path& file, std::uint16_t mode) {
  CMessageRecord record(file, mode);
  std::uint64_t messages = 0;
  while (script.Next()) {
    if (record.Write(script.Message()))
      ++messages;
    else
      script.Report("the message is too long to be recorded");
  }
  record.Close();
  return WithThousands(messages) + " messages";
}

// The end of a download is left out without a word: it is told by the numbers of the trades.
std::string RecordTrades(CDayScript& script, const Path& file, std::uint16_t mode) {
  CRecordFile record(file, mode);
  std::uint64_t trades = 0;
  std::uint64_t others = 0;
  while (script.Next()) {
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

void RecordDay(const RunFiles& files, const Options& options, CBadLines& badLines, std::ostream& out) {
  std::error_code error;
  if (std::filesystem::equivalent(files.Day, files.Record, error))
    throw TerminalError(ExitCode::CommandLine, "--record would write over the day, " + PathText(files.Day));
  CDayInput input(files, options.Live, badLines);
  const auto record = IsRecordFile(files.Record) ? RecordTrades : RecordMessages;
  out << PathText(files.Record) << ": " << record(input.Open(), files.Record, options.RecordMode.value_or(0)) << '\n';
}

void PlayDay(const RunFiles& files, const Options& options, CBadLines& badLines, std::ostream& out,
             std::ostream& errors) {
  CDayInput input(files, options.Live, badLines);
  CDayScript& script = input.Open();
  EnterWorkingFolder(files.Work, ProgramFolder() / "working_folder");
  CWallClock clock;
  CBeat beat(clock);
  CTerminalHost host(input.Securities, beat);
  const CRunningHostScope running(host);
  CPluginLink plugin(files.Plugin);
  DaySummary summary;
  summary.PluginName = plugin.Description().Name;
  summary.ControlMessages = SendStart(plugin, false);
  CProgress progress(errors, clock);
  const PlayClock::Time start = clock.Now();
  summary.Played = CDayPlayer(plugin, beat, clock, progress, options.Speed).Play(script);
  summary.Time = clock.Now() - start;
  progress.Finish();
  summary.ControlMessages += plugin.Send(30021) ? 1 : 0;
  beat.Register(nullptr, {});
  summary.Beats = beat.Calls();
  summary.Received = host.Received();
  summary.BadLines = badLines.Count();
  out << SummaryText(summary);
}

ExitCode Run(const Options& options, PlayInWindowsFunction playInWindows, std::ostream& out, std::ostream& errors) {
  if (options.Help || options.Version) {
    out << (options.Help ? HelpText() : std::string("terminal ") + kTerminalVersion + "\n");
    return ExitCode::Played;
  }
  CBadLines badLines(errors);
  const RunFiles files(options);
  if (!options.Record.empty())
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
