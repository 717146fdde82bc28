#include "gateway/program.h"

#include <ostream>

#include "gateway/event_log.h"
#include "gateway/options.h"
#include "gateway/replay.h"
#include "gateway/session.h"

namespace {

GatewayExit Run(const GatewayOptions& options, std::ostream& out, std::ostream& errors) {
  if (options.Help) {
    out << GatewayHelpText();
  } else if (options.Version) {
    out << "trade_gateway " GATEWAY_VERSION "\n";
  } else if (options.SampleConfig) {
    out << SampleFeedSettings();
  } else if (!options.Check.empty()) {
    GatewaySettings(options.Check);
    out << options.Check.string() << ": no mistakes\n";
  } else if (!options.Replay.empty()) {
    return RunReplay(options, out, errors);
  } else {
    RunSession(options, errors);
  }
  return GatewayExit::Ended;
}

// Mistakes of a settings file begin with its name, as editors expect it.
int Refused(GatewayExit code, const std::string& text, std::ostream& errors) {
  if (code == GatewayExit::Mistakes)
    errors << text << '\n';
  else
    errors << "trade_gateway: " << PlainLine(text) << '\n';
  return static_cast<int>(code);
}

}  // namespace

int RunGateway(const std::vector<std::filesystem::path>& arguments, std::ostream& out, std::ostream& errors) {
  try {
    return static_cast<int>(Run(ParseGatewayOptions(arguments), out, errors));
  } catch (const GatewayError& error) {
    return Refused(error.Code, error.what(), errors);
  } catch (const std::exception& error) {
    return Refused(GatewayExit::File, error.what(), errors);
  }
}
