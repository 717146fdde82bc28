#include "feeds/drop_copy/drop_copy.h"

#include <chrono>

#include "feeds/drop_copy/day_journals.h"

namespace {

std::int64_t SecondsNow() {
  return std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch()).count();
}

}  // namespace

struct DropCopy::State : FixEngineEvents {
  State(const FeedSettings& settings, DropCopyEvents& events)
      : Events(events), Journals(settings, events, SecondsNow), Engine(settings.Session, Journals, *this) {}

  void OnState(bool loggedOn, const std::string& text) override { Events.OnState(loggedOn, text); }
  void OnEngineAlarm(int alarmKind, const std::string& text) override {
    Events.OnAlarm({static_cast<AlarmKind>(alarmKind), text});
  }

  DropCopyEvents& Events;
  DayJournals Journals;
  FixEngine Engine;
};

DropCopy::DropCopy(const FeedSettings& settings, DropCopyEvents& events) try
    : Self(std::make_unique<State>(settings, events)) {
} catch (const FeedError&) {
  throw;
} catch (const std::runtime_error& error) {
  throw SessionRefused(error.what());
}
DropCopy::~DropCopy() = default;

std::filesystem::path DropCopy::JournalFile() const {
  return Self->Journals.File();
}

void DropCopy::Start() {
  try {
    Self->Engine.Start();
  } catch (const std::runtime_error& error) {
    throw SessionRefused(error.what());
  }
}

void DropCopy::Stop() {
  Self->Engine.Stop();
}
