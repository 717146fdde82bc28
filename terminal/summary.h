// The summary of a day that has been played, for the user. Pure; any thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "terminal/day_sender.h"

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
