// demo_venue: plays a day of trades by FIX to an initiator on loopback, with the faults of a script.
#include <CLI/CLI.hpp>

#include <charconv>
#include <csignal>
#include <fstream>
#include <iostream>
#include <system_error>

#include "demo_venue/venue_server.h"
#include "terminal/day/day_input.h"

namespace {

constexpr int kCannotListen = 4;

struct VenueOptions {
  VenueSettings Session;
  std::string Day;
  std::string Desk;
  std::uint64_t MadeUp = 0;
  std::string Speed;
  double Rate = 0;
  int Port = 0;
  std::string PortFile;
  std::string Faults;
  std::string Report = "8";
};

void AddOptions(CLI::App& app, VenueOptions& options) {
  app.add_option("--port", options.Port, "the port on loopback; 0 is a free one")->check(CLI::Range(0, 65535));
  app.add_option("--port-file", options.PortFile, "write the port into that file once it listens");
  app.add_option("--comp-id", options.Session.CompID, "the venue's CompID")->capture_default_str();
  app.add_option("--client", options.Session.ClientID, "the CompID of the initiator")->capture_default_str();
  app.add_option("--day", options.Day, "a CSV of executed trades instead of the sample day");
  app.add_option("--desk", options.Desk, "users, clients and members (default: beside the day, else the sample's)");
  app.add_option("--generate", options.MadeUp, "that many made up trades, always the same, instead of a day");
  app.add_option("--speed", options.Speed, "N times real time, or max (default: 60, and max with --rate)");
  app.add_option("--rate", options.Rate, "at most that many trades a second")->check(CLI::PositiveNumber);
  app.add_option("--report", options.Report, "8: ExecutionReport, AE: TradeCaptureReport")
      ->check(CLI::IsMember({"8", "AE"}))
      ->capture_default_str();
  app.add_option("--faults", options.Faults, "a script of faults, see below");
  app.add_flag("--stay", options.Session.Stay, "stay behind the last trade instead of logging out");
  app.footer(
      "FIX.4.2, FIX.4.4 and FIXT.1.1 are accepted. The first line printed is \"listening on 127.0.0.1:PORT\".\n"
      "\n"
      "Faults, one a line: after N FAULT [NUMBER], where N counts trades; # begins a remark. Each number has a "
      "default:\n" +
      FaultsHelp() +
      "\nExit codes:\n  0  the day was sent and the client has it, or the venue was ended by a signal\n"
      "  1  the day had bad lines; each has been reported, the rest was sent\n"
      "  2  the command line is wrong\n  3  a file could not be read or written\n  4  it cannot listen\n");
}

VenuePace PaceOf(const VenueOptions& options) {
  VenuePace pace;
  if (options.Rate > 0) pace.Rate = options.Rate;
  double speed = 60;
  if (options.Speed == "max" || (options.Speed.empty() && pace.Rate)) return pace;
  const char* end = options.Speed.data() + options.Speed.size();
  if (const auto read = std::from_chars(options.Speed.data(), end, speed);
      !options.Speed.empty() && (read.ptr != end || !(speed > 0)))
    throw TerminalError(ExitCode::CommandLine, "--speed is a number above 0, or max");
  pace.Speed = speed;
  return pace;
}

VenueDay DayOf(const VenueOptions& options, BadLineReport& badLines) {
  const RunFiles files = RunFiles::OfDay(options.Day);
  const std::filesystem::path desk = options.Desk.empty() ? files.Desk : std::filesystem::path(options.Desk);
  return options.MadeUp > 0 ? VenueDay(options.MadeUp, desk, badLines) : VenueDay(files.Day.File, desk, badLines);
}

void WritePort(const std::string& file, int port) {
  if (file.empty()) return;
  // Whoever waits for the file finds all of it.
  const std::string unfinished = file + ".new";
  if (!(std::ofstream(unfinished) << port << std::endl))
    throw TerminalError(ExitCode::File, file + " cannot be written");
  std::filesystem::rename(unfinished, file);
}

VenueServer* running = nullptr;

void StopRunning(int /*signal*/) {
  running->Stop();
}

int Serve(const VenueOptions& options) {
  BadLineReport badLines(std::cerr);
  const VenuePace pace = PaceOf(options);
  const VenueDay day = DayOf(options, badLines);
  const std::vector<VenueFault> faults =
      options.Faults.empty() ? std::vector<VenueFault>() : ReadFaults(options.Faults, day.Count());
  VenueSession session(options.Session, day, faults);
  VenueServer server(session, day, pace, options.Port);
  running = &server;
  for (const int signal : {SIGTERM, SIGINT}) std::signal(signal, StopRunning);
  std::cout << "listening on 127.0.0.1:" << server.Port() << std::endl;
  WritePort(options.PortFile, server.Port());
  server.Run([](const std::string& line) { std::cerr << "demo_venue: " << line << '\n'; });
  for (const int signal : {SIGTERM, SIGINT}) std::signal(signal, SIG_DFL);
  std::cout << WithThousands(server.TradesSent()) << " of " << WithThousands(day.Count()) << " trades sent"
            << std::endl;
  return badLines.Count() == 0 ? 0 : static_cast<int>(ExitCode::BadLines);
}

}  // namespace

int main(int argc, char** argv) {
  VenueOptions options;
  CLI::App app("demo_venue: plays a day of trades by FIX to an initiator on loopback", "demo_venue");
  AddOptions(app, options);
  try {
    app.parse(argc, argv);
    options.Session.Capture = options.Report == "AE";
    return Serve(options);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : static_cast<int>(ExitCode::CommandLine);
  } catch (const TerminalError& error) {
    std::cerr << "demo_venue: " << error.what() << '\n';
    return static_cast<int>(error.Code);
  } catch (const std::filesystem::filesystem_error& error) {
    std::cerr << "demo_venue: " << error.what() << '\n';
    return static_cast<int>(ExitCode::File);
  } catch (const std::system_error& error) {
    std::cerr << "demo_venue: it cannot listen: " << error.what() << '\n';
    return kCannotListen;
  }
}
