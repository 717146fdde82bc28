// DayRun: a day that plays beside the windows: piece by piece as it is asked to, with pause, other speeds, new logins
// and other days. Calls the plug-in; the calling thread only.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "terminal/day/day_script.h"
#include "terminal/day/trade_message.h"
#include "terminal/link/plugin_link.h"
#include "terminal/link/terminal_host.h"
#include "terminal/play/pace.h"
#include "terminal/play/play_report.h"

// DaySender: hands the messages of a day to the plug-in and counts them.
struct PlayCounts {
  std::uint64_t Messages = 0;  // sent, trades among them
  std::uint64_t Download = 0;  // trades
  std::uint64_t Live = 0;      // trades
  std::uint64_t NotAsked = 0;  // messages that the plug-in does not take

  std::uint64_t Trades() const noexcept { return Download + Live; }
};

// Promises: each 8112 is followed by a 30020, as only that makes the books of one security right again.
class DaySender {
 public:
  // The listener, where there is one, is told of a trade ahead of the plug-in.
  explicit DaySender(MessageTarget& target, TradeListener* listener = nullptr) : Target(target), Listener(listener) {}

  // Sends the message that the script stands at.
  void Send(DayScript& script);
  const PlayCounts& Counts() const noexcept { return Sent; }

 private:
  MessageTarget& Target;
  TradeListener* Listener;
  PlayCounts Sent;
};

// Promises: a download is not waited for, whatever the speed; while paused nothing is sent, but for what a new login
// brings back.
class DayRun {
 public:
  DayRun(MessageTarget& target, TradeListener& listener, PlayClock& clock, std::optional<double> speed)
      : Clock(clock), Target(target), Pace(speed), Sender(target, &listener) {}

  // Plays that day from its begin. The input must outlive its use. Throws TerminalError, as do all that read.
  void Begin(DayInput& input);
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
  DayPace Pace;
  DaySender Sender;
  DayInput* Input = nullptr;
  DayScript* Script = nullptr;
  bool Waiting = false;  // the script stands at a message that has not been sent
  bool Ended = true;
  bool Live = false;
  std::uint64_t TradesOfDay = 0;
  std::optional<std::uint64_t> DownloadOfLogin;  // trades; nothing at the first login
  std::uint64_t Control = 0;                     // messages beside those of the day
  std::optional<std::int64_t> DownloadSeconds;
};

// DayPlayer: plays a day from its begin to its end without windows: the download at once, live trades at their pace,
// with the beat between messages.
class DayPlayer {
 public:
  // speed is how many times faster than the day itself live trades go; nothing for as fast as the plug-in takes them.
  DayPlayer(MessageTarget& target, RefreshBeat& beat, PlayClock& clock, PlayProgress& progress,
            std::optional<double> speed)
      : Sender(target), Beat(beat), Clock(clock), Progress(progress), Pace(speed) {}

  PlayCounts Play(DayScript& script);

 private:
  void WaitForTrade(DayScript& script);

  DaySender Sender;
  RefreshBeat& Beat;
  PlayClock& Clock;
  PlayProgress& Progress;
  DayPace Pace;
};
