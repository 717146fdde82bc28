#include "gateway/options.h"

#include <utility>

#include "foundations/option_parser.h"

namespace {

using Path = std::filesystem::path;
using Options = GatewayOptions;

template <auto Place>
void TakeValue(const std::string& value, Options& options) {
  options.*Place = value;
}
template <bool Options::*Place>
void TakeFlag(const std::string& /*value*/, Options& options) {
  options.*Place = true;
}

struct OptionRow {
  const char* Name;
  const char* Value;  // null for a flag
  void (*Take)(const std::string& value, Options& options);
  const char* Help;
};

constexpr OptionRow kOptions[] = {
    {"CONFIG", "FILE", TakeValue<&Options::Config>,
     "run: connect to the counterparty that this settings file names, keep the journal, fill the day log"},
    {"--log", "FILE", TakeValue<&Options::EventLog>,
     "append what happens to this file, one line of JSON for each state, alarm and minute"},
    {"--check", "CONFIG", TakeValue<&Options::Check>,
     "list the mistakes of a settings file as FILE:LINE: text, and end"},
    {"--sample-config", nullptr, TakeFlag<&Options::SampleConfig>, "print a commented settings file"},
    {"--replay", "JOURNAL", TakeValue<&Options::Replay>, "fill a day log from a journal, and end"},
    {"--to", "ADDRESS", TakeValue<&Options::To>,
     "the log to fill, nats://HOST[:PORT][,HOST[:PORT]...]/NAME.DATE or tls://; it may hold a part already"},
    {"--config", "CONFIG", TakeValue<&Options::ReplayConfig>,
     "for --replay: the mapping of this settings file, and its user, authorities and replicas for the log"},
    {"--log-access", "FILE", TakeValue<&Options::LogAccess>,
     "for --replay: the user and authorities of this file, as the terminal takes it"},
    {"--help", nullptr, TakeFlag<&Options::Help>, "this text"},
    {"--version", nullptr, TakeFlag<&Options::Version>, "the version"},
};

struct ExitCodeRow {
  GatewayExit Code;
  const char* Help;
};

constexpr ExitCodeRow kExitCodes[] = {
    {GatewayExit::Ended, "ended as asked: by SIGTERM, SIGINT or SIGHUP, or all is done"},
    {GatewayExit::Mistakes,
     "the settings file has mistakes, or a replayed journal has refused messages; each has been told"},
    {GatewayExit::CommandLine, "the command line is wrong"},
    {GatewayExit::File, "a file cannot be read or written, or another process uses the journal"},
    {GatewayExit::Log, "the day log cannot be reached, or does not take this journal"},
    {GatewayExit::Session, "the session's settings are refused by the FIX engine"},
};

[[noreturn]] void Refuse(const std::string& sentence) {
  throw GatewayError(GatewayExit::CommandLine, sentence + "; --help lists the options");
}

// Fills the options from the words.
class CommandLine : public OptionParser {
 public:
  explicit CommandLine(Options& options)
      : OptionParser("trade_gateway: keeps the trades of a FIX session in a journal and a day log", "trade_gateway", 26,
                     Refuse) {
    for (const OptionRow& row : kOptions)
      Add(row, [&row, &options](const std::string& value) {
        if (value.empty() && row.Value != nullptr) Refuse(std::string(row.Name) + " needs a value");
        row.Take(value, options);
      });
    AddFooter(ExitCodesText(kExitCodes));
  }
  void ParseAll(std::vector<std::string> words) {
    if (const std::vector<std::string> unknown = Parse(std::move(words)); !unknown.empty())
      Refuse(unknown.front().starts_with("-") ? "there is no option " + unknown.front()
                                              : "one settings file only, not " + unknown.front() + " as well");
  }
};

}  // namespace

Options ParseGatewayOptions(const std::vector<Path>& arguments) {
  Options options;
  std::vector<std::string> words;
  for (const Path& argument : arguments) words.push_back(argument.string());
  CommandLine(options).ParseAll(std::move(words));
  if (options.Help || options.Version || options.SampleConfig) return options;
  const bool runs = !options.Config.empty(), checks = !options.Check.empty(), replays = !options.Replay.empty();
  if (runs + checks + replays != 1) Refuse("give a settings file, --check or --replay, one of them");
  if (!options.EventLog.empty() && !runs) Refuse("--log says something only with a session");
  const bool saysHow = !options.To.empty() || !options.ReplayConfig.empty() || !options.LogAccess.empty();
  if (saysHow && !replays) Refuse("--to, --config and --log-access say something only with --replay");
  if (replays && options.To.empty()) Refuse("--replay needs --to");
  return options;
}

std::string GatewayHelpText() {
  Options ignored;
  return CommandLine(ignored).Help();
}

FeedSettings GatewaySettings(const Path& file) {
  std::vector<SettingsMistake> mistakes;
  FeedSettings settings = ReadFeedSettings(file, mistakes);
  if (mistakes.empty()) return settings;
  std::string lines;
  for (const SettingsMistake& mistake : mistakes) {
    const std::string place = mistake.Line == 0 ? "" : ":" + std::to_string(mistake.Line);
    lines += (lines.empty() ? "" : "\n") + file.string() + place + ": " + mistake.Text;
  }
  throw GatewayError(GatewayExit::Mistakes, lines);
}
