#include "terminal/progress.h"

#include <ostream>
#include <string>

#include "terminal/thousands.h"

namespace {
constexpr std::size_t kLineWidth = 40;
}

CProgress::CProgress(std::ostream& out, PlayClock& clock)
    : Out(out), Clock(clock), Next(clock.Now() + std::chrono::seconds(1)) {}

void CProgress::Tell(std::uint64_t trades) {
  const PlayClock::Time now = Clock.Now();
  if (now < Next) return;
  Next = now + std::chrono::milliseconds(500);
  std::string line = WithThousands(trades) + " trades";
  line.resize(kLineWidth, ' ');
  Out << line << '\r' << std::flush;
  Shown = true;
}

void CProgress::Finish() {
  if (Shown) Out << std::string(kLineWidth, ' ') << '\r' << std::flush;
  Shown = false;
}
