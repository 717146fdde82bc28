#include "terminal/program.h"

#include <optional>
#include <ostream>
#include <string>

#include "platform/module.h"
#include "terminal/day_player.h"
#include "terminal/day_script.h"
#include "terminal/message_record.h"
#include "terminal/options.h"
#include "terminal/plugin_link.h"
#include "terminal/record_file.h"
#include "terminal/summary.h"
#include "terminal/terminal_error.h"
#include "terminal/terminal_host.h"
#include "terminal/thousands.h"
#include "terminal/trade_day.h"
#include "terminal/working_folder.h"

namespace {

using Path = std::filesystem::path;

Path SampleFolder() {
  return ProgramFolder() / "sample_day";
}

// The file given, else the one of that name beside the day, else the sample's.
Path SideFile(const Path& given, const Path& day, const char* name) {
  if (!given.empty()) return std::filesystem::absolute(given);
  Path beside = day.parent_path() / name;
  std::error_code error;
  return std::filesystem::exists(beside, error) ? beside : SampleFolder() / name;
}

Path GivenOr(const Path& given, const Path& otherwise) {
  return std::filesystem::absolute(given.empty() ? otherwise : given);
}

// Every file of a run, in full: the current directory changes before the day is played.
struct RunFiles {
  explicit RunFiles(const Options& options)
      : Day(GivenOr(options.Day, SampleFolder() / "trades.csv")),
        Securities(SideFile(options.Securities, Day, "securities.csv")),
        Desk(SideFile(options.Desk, Day, "desk.csv")),
        Plugin(GivenOr(options.Plugin, ProgramFolder() / (std::string("tradebook") + ModuleSuffix()))),
        Work(GivenOr(options.Work, "trade_book_work")) {
    if (!options.Record.empty()) Record = std::filesystem::absolute(options.Record);
  }
  Path Day;
  Path Securities;
  Path Desk;
  Path Plugin;
  Path Work;
  Path Record;
};

// What a run reads its day from. A wire file needs no desk.
class CDayInput {
 public:
  CDayInput(const RunFiles& files, const Options& options, CBadLines& badLines)
      : Securities(files.Securities, badLines) {
    const LiveFrom asNumbered;
    if (IsMessageDay(files.Day)) {
      Script.emplace(OpenMessageDay(files.Day, badLines), options.Live.value_or(asNumbered));
      return;
    }
    Desk.emplace(files.Desk, badLines);
    auto source = OpenTradeDay(files.Day, *Desk, Securities, badLines);
    Script.emplace(std::move(source), options.Live ? *options.Live : HalfOf(files.Day));
  }

  CSecurities Securities;
  std::optional<CDesk> Desk;
  std::optional<CDayScript> Script;

 private:
  static LiveFrom HalfOf(const Path& day) {
    return {LiveFrom::Kind::Count, static_cast<std::int64_t>(CountTradeLines(day) / 2)};
  }
};

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
  CDayInput input(files, options, badLines);
  const auto record = IsRecordFile(files.Record) ? RecordTrades : RecordMessages;
  out << PathText(files.Record) << ": " << record(*input.Script, files.Record, options.RecordMode.value_or(0)) << '\n';
}

// What a plug-in gets ahead of the day: its timer, its saved books, and no trades. Returns the messages sent.
std::uint64_t SendStart(CPluginLink& plugin) {
  std::uint64_t sent = 1;
  sent += plugin.Send(30025) ? 1 : 0;
  plugin.SendRestore();
  sent += plugin.Send(30022) ? 1 : 0;
  return sent;
}

void PlayDay(const RunFiles& files, const Options& options, CBadLines& badLines, std::ostream& out,
             std::ostream& errors) {
  CDayInput input(files, options, badLines);
  EnterWorkingFolder(files.Work, ProgramFolder() / "working_folder");
  CWallClock clock;
  CBeat beat(clock);
  CTerminalHost host(input.Securities, beat);
  const CRunningHostScope running(host);
  CPluginLink plugin(files.Plugin);
  DaySummary summary;
  summary.PluginName = plugin.Description().Name;
  summary.ControlMessages = SendStart(plugin);
  CProgress progress(errors, clock);
  const PlayClock::Time start = clock.Now();
  summary.Played = CDayPlayer(plugin, beat, clock, progress, options.Speed).Play(*input.Script);
  summary.Time = clock.Now() - start;
  progress.Finish();
  summary.ControlMessages += plugin.Send(30021) ? 1 : 0;
  beat.Register(nullptr, {});
  summary.Beats = beat.Calls();
  summary.Received = host.Received();
  summary.BadLines = badLines.Count();
  out << SummaryText(summary);
}

ExitCode Run(const Options& options, std::ostream& out, std::ostream& errors) {
  if (options.Help || options.Version) {
    out << (options.Help ? HelpText() : std::string("terminal " TERMINAL_VERSION "\n"));
    return ExitCode::Played;
  }
  CBadLines badLines(errors);
  const RunFiles files(options);
  if (!options.Record.empty())
    RecordDay(files, options, badLines, out);
  else if (options.Headless)
    PlayDay(files, options, badLines, out, errors);
  else
    throw TerminalError(ExitCode::CommandLine, "this version has no windows yet: start it with --headless");
  return badLines.Count() == 0 ? ExitCode::Played : ExitCode::BadLines;
}

}  // namespace

int RunTerminal(const std::vector<Path>& arguments, std::ostream& out, std::ostream& errors) {
  ExitCode code = ExitCode::Played;
  try {
    code = Run(ParseOptions(arguments), out, errors);
  } catch (const TerminalError& error) {
    errors << "terminal: " << error.what() << '\n';
    code = error.Code;
  } catch (const std::exception& error) {
    errors << "terminal: " << error.what() << '\n';
    code = ExitCode::File;
  }
  return static_cast<int>(code);
}
