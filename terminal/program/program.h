// The terminal's run from its command line to its exit code.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "terminal/common/errors.h"
#include "terminal/day/day_input.h"
#include "terminal/play/player.h"
#include "terminal/program/options.h"

inline constexpr const char* kTerminalVersion = TERMINAL_VERSION;

// Plays the day in windows until the user closes them. Writes the summary to out. Throws TerminalError.
using PlayInWindowsFunction = void (*)(const RunFiles& files, const Options& options, BadLineReport& badLines,
                                       std::ostream& out);

// Writes results to out, errors and bad lines to errors.
int RunTerminal(const std::vector<std::filesystem::path>& arguments, PlayInWindowsFunction playInWindows,
                std::ostream& out, std::ostream& errors);

// The summary of a day that has been played, for the user.
struct DaySummary {
  std::string PluginName;
  PlayCounts Played;
  std::uint64_t ControlMessages = 0;                // sent ahead of the day and behind it
  std::map<std::uint16_t, std::uint64_t> Received;  // messages of the plug-in, by number
  std::uint64_t Beats = 0;
  std::uint64_t BadLines = 0;
  std::optional<std::uint64_t> FailedCommands;  // of the script, where there is one
  std::chrono::duration<double> Time{};
};

std::string SummaryText(const DaySummary& summary);
