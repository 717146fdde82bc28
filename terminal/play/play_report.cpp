#include "terminal/play/play_report.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <ostream>
#include <string>

#include "terminal/common/errors.h"
#include "terminal/day/csv_reader.h"

namespace {
constexpr std::chrono::seconds kRateTime{2};
}

std::string DayClockText(std::optional<std::int64_t> seconds) {
  if (!seconds) return {};
  const std::int64_t date = DateOf(*seconds);
  const std::chrono::year_month_day day{std::chrono::sys_days(std::chrono::days(date))};
  const auto second = static_cast<int>(*seconds - date * kSecondsPerDay);
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(day.year()),
                static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()), second / 3600, second / 60 % 60,
                second % 60);
  return text;
}

std::string SpeedText(std::optional<double> speed) {
  if (!speed) return "full speed";
  char text[64];
  std::snprintf(text, sizeof text, "%gx", *speed);
  return text;
}

void TradeRate::Tell(std::uint64_t trades, PlayClock::Time now) {
  if (!Samples.empty() && trades < Samples.back().Trades) Samples.clear();
  Samples.push_back({now, trades});
  while (Samples.size() > 2 && now - Samples[1].Time >= kRateTime) Samples.pop_front();
}

std::uint64_t TradeRate::PerSecond() const {
  if (Samples.size() < 2) return 0;
  const std::chrono::duration<double> time = Samples.back().Time - Samples.front().Time;
  const auto trades = static_cast<double>(Samples.back().Trades - Samples.front().Trades);
  return time.count() <= 0 ? 0 : static_cast<std::uint64_t>(std::llround(trades / time.count()));
}

namespace {
constexpr std::size_t kLineWidth = 40;
}

PlayProgress::PlayProgress(std::ostream& out, PlayClock& clock)
    : Out(out), Clock(clock), Next(clock.Now() + std::chrono::seconds(1)) {}

void PlayProgress::Tell(std::uint64_t trades) {
  const PlayClock::Time now = Clock.Now();
  if (now < Next) return;
  Next = now + std::chrono::milliseconds(500);
  std::string line = WithThousands(trades) + " trades";
  line.resize(kLineWidth, ' ');
  Out << line << '\r' << std::flush;
  Shown = true;
}

void PlayProgress::Finish() {
  if (Shown) Out << std::string(kLineWidth, ' ') << '\r' << std::flush;
  Shown = false;
}
