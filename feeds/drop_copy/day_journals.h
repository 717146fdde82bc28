// DayJournals: the engine's store, which is the journal of the day; a new journal for each day.
#pragma once

#include <functional>
#include <memory>
#include <mutex>

#include "feeds/drop_copy/drop_copy.h"
#include "feeds/drop_copy/session_days.h"
#include "feeds/journal/journal.h"

class DayJournals : public FixStore {
 public:
  using Clock = std::function<std::int64_t()>;  // seconds UTC since 1970

  // Opens the journal of the day that is now, with the numbers of the week's last one if it has none of its own. Throws
  // FeedError.
  DayJournals(const FeedSettings& settings, DropCopyEvents& events, Clock clock);

  std::uint32_t NextSender() override { return Day->NextSender(); }
  std::uint32_t NextTarget() override { return Day->NextTarget(); }
  std::int64_t Created() override { return Day->Identity().Created; }
  bool Keep(std::uint32_t nextSender, std::uint32_t nextTarget, const std::string* text, bool refused) override;
  bool Reset() override;

  std::filesystem::path File() const;

 private:
  std::unique_ptr<Journal> Open(const std::string& date);
  void TakeNumbersOfWeek();
  bool BeginDay(const std::string& date, bool withNumbers);
  bool Append(JournalKind kind, std::uint32_t nextSender, std::uint32_t nextTarget, std::string_view text);
  bool Fail(const std::string& reason);

  const std::filesystem::path Folder;
  const std::string Session;
  const SessionDays Days;
  DropCopyEvents& Events;
  const Clock Now;
  std::unique_ptr<Journal> Day;
  bool IsDiskTold = false;
  mutable std::mutex FileGuard;
  std::filesystem::path CurrentFile;  // also read on other threads
};
