#include "terminal/summary.h"

#include <cmath>
#include <cstdio>

#include "terminal/thousands.h"

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
