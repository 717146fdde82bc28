#include "terminal/program/feed_watch.h"

#include <ostream>

namespace {

constexpr std::chrono::milliseconds kNewsPeriod{100};

volatile std::sig_atomic_t interrupted = 0;  // a handler can reach nothing else

void NoteInterruption(int /*signal*/) {
  interrupted = 1;
}

}  // namespace

Interruption::Interruption()
    : FormerInterrupt(std::signal(SIGINT, NoteInterruption)), FormerTerminate(std::signal(SIGTERM, NoteInterruption)) {
  interrupted = 0;
}

Interruption::~Interruption() {
  std::signal(SIGINT, FormerInterrupt);
  std::signal(SIGTERM, FormerTerminate);
}

bool Interruption::HasCome() const noexcept {
  return interrupted != 0;
}

FeedWatch::FeedWatch(DayInput& input, const Options& options, PlayClock& clock, PlayProgress& progress,
                     std::ostream& errors)
    : Input(input), End(options.ExitAfter), Clock(clock), Progress(progress), Errors(errors), Start(clock.Now()) {
  if (input.IsFeed()) Stop.emplace();
}

bool FeedWatch::GoesOn() {
  if (!Stop) return true;
  const PlayClock::Time now = Clock.Now();
  if (now >= NextNews) {
    NextNews = now + kNewsPeriod;
    TellNews();
  }
  return !Stop->HasCome() && !(End && End->HasCome(false, now - Start));
}

void FeedWatch::TellNews() {
  for (const FeedNote& note : Input.TakeNews()) {
    Progress.Finish();
    Errors << (note.IsAlarm ? "alarm: " : "") << note.Text << std::endl;
  }
}
