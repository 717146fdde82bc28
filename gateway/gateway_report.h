// GatewayReport: tells people and programs what the gateway does: alarms and one status line on the error stream, and
// all of it in the event log. Any thread.
#pragma once

#include <array>
#include <chrono>
#include <filesystem>
#include <iosfwd>
#include <mutex>
#include <string>

#include "gateway/event_log.h"
#include "gateway/log_publisher.h"

// A kind of alarm that comes again and again is told kMostTold times in kAlarmWindow, then as a count, so that a
// counterparty cannot fill the disk with it.
class GatewayReport final : public PumpEvents {
 public:
  using Time = std::chrono::steady_clock::time_point;

  static constexpr std::uint64_t kMostTold = 50;
  static constexpr std::chrono::seconds kAlarmWindow{10};
  static constexpr std::chrono::seconds kCountsEvery{60};

  // The status line is shown on a terminal only.
  GatewayReport(std::ostream& errors, bool isTerminal, const EventLog& events, Time now);

  void OnAlarm(const Alarm& alarm) override;
  void OnEarlierAlarms(const std::string& date, const AlarmCounts& counts) override;
  void OnLogState(bool connected, const std::string& text) override;
  void OnSession(bool loggedOn, const std::string& text);
  // A line for people and an event with the same text.
  void Tell(const std::string& event, const std::string& text);
  void Record(const std::string& event, const EventFields& fields);
  // Shows the status line, writes the counts once a minute and what was held back of repeated alarms.
  void Refresh(const PublisherCounts& counts, Time now);
  void RecordCounts(const PublisherCounts& counts);
  // Removes the status line.
  void Finish();

 private:
  struct KindCount {
    std::uint64_t All = 0;
    std::uint64_t Recent = 0;  // in this window
  };
  static constexpr std::size_t kKinds = static_cast<std::size_t>(AlarmKind::Damage) + 1;

  void Line(const std::string& text);
  void Write(const std::string& event, const EventFields& fields);
  void TellHeldBack();
  std::uint64_t AllAlarms() const;
  EventFields CountFields(const PublisherCounts& counts) const;
  std::string StatusText(const PublisherCounts& counts) const;

  std::mutex Lock;
  std::ostream& Errors;
  const bool IsTerminal;
  const EventLog& Events;
  bool EventsFailed = false;
  bool LoggedOn = false;
  std::array<KindCount, kKinds> Kinds;
  Time WindowEnd;
  Time NextCounts;
  std::string Shown;  // the status line that stands on the terminal
};
