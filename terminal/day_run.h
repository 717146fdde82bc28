// CDayRun: a day that plays beside the windows: piece by piece as it is asked to, with pause, other speeds, new logins
// and other days. Not the timer that asks: windows/day_loop.h. Calls the plug-in; the calling thread only.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "terminal/day_input.h"
#include "terminal/day_pace.h"
#include "terminal/day_sender.h"

// Promises: a download is not waited for, whatever the speed; while paused nothing is sent, but for what a new login
// brings back.
class CDayRun {
 public:
  CDayRun(MessageTarget& target, TradeListener& listener, PlayClock& clock, std::optional<double> speed)
      : Clock(clock), Target(target), Pace(speed), Sender(target, &listener) {}

  // Plays that day from its begin. The input must outlive its use. Throws TerminalError, as do all that read.
  void Begin(CDayInput& input);
  // Message 30022, and what the day has brought so far once more as a download; the live trades go on behind it.
  void LoginAgain();

  // Sends what is due, for about so long at most. Gives when there is more to send; nothing at the end of the day or in
  // a pause.
  std::optional<PlayClock::Time> PlayFor(std::chrono::milliseconds time);

  void Pause() { Pace.Pause(Clock.Now()); }
  void Resume() { Pace.Resume(Clock.Now()); }
  void SetSpeed(std::optional<double> speed) { Pace.SetSpeed(speed, Clock.Now()); }
  std::optional<double> GetSpeed() const noexcept { return Pace.GetSpeed(); }
  bool IsPaused() const noexcept { return Pace.IsPaused(); }
  bool HasEnded() const noexcept { return Ended; }
  // The day has gone over from its download to its live trades.
  bool IsLive() const noexcept { return Live; }

  // Trades of the day that have been sent, counted once however often they went.
  std::uint64_t DayTrades() const noexcept { return TradesOfDay; }
  // All that was sent, logins among it.
  PlayCounts Counts() const noexcept;
  std::optional<std::int64_t> DaySeconds() const;

 private:
  void Start();
  bool IsDue();
  bool IsDownload() const;
  void SendNext();

  PlayClock& Clock;
  MessageTarget& Target;
  CDayPace Pace;
  CDaySender Sender;
  CDayInput* Input = nullptr;
  CDayScript* Script = nullptr;
  bool Waiting = false;  // the script stands at a message that has not been sent
  bool Ended = true;
  bool Live = false;
  std::uint64_t TradesOfDay = 0;
  std::optional<std::uint64_t> DownloadOfLogin;  // trades; nothing at the first login
  std::uint64_t Control = 0;                     // messages beside those of the day
  std::optional<std::int64_t> DownloadSeconds;
};
