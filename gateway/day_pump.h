// DayPump: carries the trade messages of one journal into its day log. What it needs of a log is LogLink, and what it
// tells goes to PumpEvents.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "feeds/common/feed_report.h"
#include "feeds/day_log/log_writer.h"
#include "feeds/journal/journal_day.h"

// A day log as LogWriter writes it.
class LogLink {
 public:
  virtual ~LogLink() = default;
  virtual std::uint64_t Connect(std::chrono::milliseconds atMost) = 0;
  virtual void Publish(std::uint64_t before, std::uint32_t count, std::span<const std::uint8_t> messages) = 0;
};

// The logs of all days.
struct DayLogs {
  std::string Name;
  std::function<std::unique_ptr<LogLink>(const std::string& date)> Open;  // by yyyyMMdd; empty for no logs
};
DayLogs DayLogsOf(const LogAccess& access, const std::string& name, int replicas);

// Whole wire messages at the begin of a block.
struct MessageRun {
  std::uint64_t Count = 0;
  std::size_t Bytes = 0;
};
// As many as fit both bounds.
MessageRun FirstMessages(std::span<const std::uint8_t> messages, std::size_t mostBytes, std::uint64_t mostCount);

using AlarmCounts = std::map<AlarmKind, std::uint64_t>;

// Alarms of an outage of the log come once for each outage.
class PumpEvents : public AlarmSink {
 public:
  // The alarms of the records that were in the journal before the pump began, which do not come one by one.
  virtual void OnEarlierAlarms(const std::string& date, const AlarmCounts& counts) = 0;
  virtual void OnLogState(bool connected, const std::string& text) = 0;
};

// Call it from one thread. The journal is mapped without the log as well, for its alarms and counts; what waits for a
// lost log is kept up to kMostWaiting bytes, beyond that the journal is mapped again after the connection.
class DayPump {
 public:
  using Time = std::chrono::steady_clock::time_point;

  static constexpr std::chrono::milliseconds kConnectTime{2000};
  static constexpr std::chrono::milliseconds kFirstRetry{250};
  static constexpr std::chrono::milliseconds kLastRetry{5000};
  static constexpr std::size_t kMostWaiting = std::size_t{8} << 20;

  // Alarms of the first bytes, `before`, of the journal are counted only. Throws FeedError.
  DayPump(std::filesystem::path journal, const MappingChoices& mapping, std::uint64_t before, PumpEvents& events,
          const DayLogs& logs);

  // Reads on; false at the end of what the journal has now. Throws FeedError if it cannot be read any more.
  bool Read();
  // Appends the next batch to the log, after connecting if that is due; false if nothing was done.
  bool Send(Time now);
  // Connects with the next Send, however long the outage has been.
  void TryNow() noexcept { NextTry = {}; }

  // All that was read is in the log, or never will be.
  bool IsDone() const noexcept { return AtEnd && (HoldsBack() || InLog >= Told.Messages); }
  // The log holds other messages than the journal gives: nothing is published into it.
  bool IsOfAnother() const noexcept { return OfAnother; }
  bool IsLost() const noexcept { return Lost; }
  const JournalCounts& Counts() const noexcept { return Told; }
  std::uint64_t MessagesInLog() const noexcept { return InLog; }
  // Messages that are not in the log yet; 0 without one.
  std::uint64_t Behind() const noexcept { return Log == nullptr || InLog > Told.Messages ? 0 : Told.Messages - InLog; }
  const std::string& Date() const noexcept { return Day->Identity().Date; }
  const std::filesystem::path& Journal() const noexcept { return File; }

 private:
  // The alarms of a day, of which those told before are left out when it is mapped again.
  class Sieve final : public AlarmSink {
   public:
    explicit Sieve(DayPump& pump) : Pump(pump) {}
    void OnAlarm(const Alarm& alarm) override;
    void StartAgain() noexcept;

   private:
    DayPump& Pump;
    std::uint64_t Passed = 0;
    std::uint64_t Muted = 0;
  };

  bool HoldsBack() const noexcept { return Log == nullptr || OfAnother; }
  bool IsEarlier() const;
  void TellEarlier();
  void Open();
  void Connect();
  bool Publish();
  void Drop(const MessageRun& run);
  void HoldBack(const std::string& why);
  void Lose(const char* reason, Time now);

  const std::filesystem::path File;
  const MappingChoices Mapping;
  const std::string LogName;
  std::uint64_t EarlierBytes;  // 0 once their alarms have been told
  PumpEvents& Events;
  Sieve Alarms{*this};
  AlarmCounts Earlier;
  std::unique_ptr<JournalDay> Day;
  std::unique_ptr<LogLink> Log;
  JournalCounts Told;
  std::vector<std::uint8_t> Waiting;
  std::uint64_t Begin = 0;  // messages of the journal before those that wait
  std::uint64_t InLog = 0;
  bool AtEnd = false;
  bool Connected = false;
  bool Lost = false;
  bool OfAnother = false;
  Time NextTry{};
  std::chrono::milliseconds Retry = kFirstRetry;
};
