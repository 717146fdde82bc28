#include "feeds/drop_copy/day_journals.h"

namespace {

std::string SessionName(const FixEngineSettings& session) {
  return session.BeginString + ":" + session.SenderCompID + "->" + session.TargetCompID;
}

}  // namespace

DayJournals::DayJournals(const FeedSettings& settings, DropCopyEvents& events, Clock clock)
    : Folder(settings.JournalFolder),
      Session(SessionName(settings.Session)),
      Days(settings.Session),
      Events(events),
      Now(std::move(clock)),
      Day(Open(Days.DateOf(Now()))),
      CurrentFile(Day->File()) {
  if (NextSender() == 1 && NextTarget() == 1) TakeNumbersOfWeek();
}

std::unique_ptr<Journal> DayJournals::Open(const std::string& date) {
  auto journal = std::make_unique<Journal>(Folder, Session, date);
  if (const std::uint64_t bytes = journal->CutBytes(); bytes > 0)
    Events.OnAlarm({AlarmKind::Damage, "The last record of " + journal->File().string() + " was torn: its " +
                                           std::to_string(bytes) + " bytes are kept beside it, and it comes again."});
  return journal;
}

// Also if the program was ended after it had made the day's journal and before it had written the numbers.
void DayJournals::TakeNumbersOfWeek() {
  for (std::int64_t back = 1; back < 7; ++back) {
    const std::string date = Days.DateOf(Now() - back * kSecondsOfDay);
    std::error_code ignored;
    if (!Days.IsWeekly() || !std::filesystem::exists(JournalPath(Folder, Session, date), ignored)) continue;
    const auto before = Open(date);
    if (Days.AreInOneWeek(before->Identity().Created, Now()) &&
        !Append(JournalKind::Numbers, before->NextSender(), before->NextTarget(), {}))
      throw FeedError(Day->Failure());
    return;
  }
}

bool DayJournals::Keep(std::uint32_t nextSender, std::uint32_t nextTarget, const std::string* text, bool refused) {
  const std::string date = Days.IsWeekly() ? Days.DateOf(Now()) : Day->Identity().Date;
  if (date != Day->Identity().Date && Days.AreInOneWeek(Created(), Now()) && !BeginDay(date, true)) return false;
  if (!text) return Append(JournalKind::Numbers, nextSender, nextTarget, {});
  if (text->size() <= kLargestJournalText)
    return Append(refused ? JournalKind::Refused : JournalKind::Message, nextSender, nextTarget, *text);
  // Else it would come again for ever.
  if (!Append(JournalKind::Refused, nextSender, nextTarget, std::string_view(*text).substr(0, kLargestJournalText)))
    return false;
  Events.OnAlarm({AlarmKind::RefusedMessage, "Message " + std::to_string(nextTarget - 1) + " has " +
                                                 std::to_string(text->size()) +
                                                 " bytes: too many for a message; its begin is kept."});
  return true;
}

bool DayJournals::Reset() {
  const std::string date = Days.DateOf(Now());
  if (date != Day->Identity().Date) return BeginDay(date, false);
  const std::uint32_t taken = NextTarget() - 1;
  if (!Append(JournalKind::Reset, 1, 1, {})) return false;
  if (taken > 0)
    Events.OnAlarm({AlarmKind::NumberReset, "The numbers begin at 1 again within the day, after " +
                                                std::to_string(taken) + " messages of the counterparty."});
  return true;
}

// The day before stays as it is until the new one can be written.
bool DayJournals::BeginDay(const std::string& date, bool withNumbers) {
  try {
    auto next = Open(date);
    const bool isBegun = next->NextTarget() > 1 || next->NextSender() > 1;
    const bool fits = withNumbers ? next->Append(JournalKind::Numbers, NextSender(), NextTarget(), {})
                                  : !isBegun || next->Append(JournalKind::Reset, 1, 1, {});
    if (!fits) return Fail(next->Failure());
    Day = std::move(next);
  } catch (const FeedError& error) {
    return Fail(error.what());
  }
  IsDiskTold = false;
  {
    const std::lock_guard guard(FileGuard);
    CurrentFile = Day->File();
  }
  Events.OnNewDay(Day->File());
  return true;
}

bool DayJournals::Append(JournalKind kind, std::uint32_t nextSender, std::uint32_t nextTarget, std::string_view text) {
  if (!Day->Append(kind, nextSender, nextTarget, text)) return Fail(Day->Failure());
  IsDiskTold = false;
  Events.OnKept();
  return true;
}

bool DayJournals::Fail(const std::string& reason) {
  if (!IsDiskTold) Events.OnAlarm({AlarmKind::Disk, "The journal cannot be written, and the session waits: " + reason});
  IsDiskTold = true;
  return false;
}

std::filesystem::path DayJournals::File() const {
  const std::lock_guard guard(FileGuard);
  return CurrentFile;
}
