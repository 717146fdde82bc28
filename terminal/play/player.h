// DayRun plays a day slice by slice, with pause, speeds and new logins, beside windows; DayPlayer plays a whole day
// without them. Their reports: clock, speed and rate for the status bar, a line of progress for a console.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

#include "terminal/day/day_input.h"
#include "terminal/day/trade_message.h"
#include "terminal/link/plugin_link.h"
#include "terminal/link/terminal_host.h"
#include "terminal/play/day_sender.h"

// "60x", "0.5x", "full speed".
std::string SpeedText(std::optional<double> speed);

// Trades a second over about the last two seconds.
class TradeRate {
 public:
  // Takes the count of all trades so far; call it a few times a second.
  void Tell(std::uint64_t trades, PlayClock::Time now);
  std::uint64_t PerSecond() const;

 private:
  struct Sample {
    PlayClock::Time Time;
    std::uint64_t Trades;
  };
  std::deque<Sample> Samples;
};

// Nothing in the first second, then at most two lines a second, each over the one before. Finish wipes the last.
class PlayProgress {
 public:
  PlayProgress(std::ostream& out, PlayClock& clock);

  void Tell(std::uint64_t trades);
  void Finish();

 private:
  std::ostream& Out;
  PlayClock& Clock;
  PlayClock::Time Next;
  bool Shown = false;
};

// DayPace: maps the seconds of a day to those of the wall clock: when a live trade is due, and the time of the day now.
//
// Late trades do not stretch the day: each counts from where the day stands. The first trade, a step back in time and a
// change of date are due at once; the day goes on from there, as it does after a change of speed or a pause.
class DayPace {
 public:
  // Times faster than the wall clock; nothing for without waiting.
  explicit DayPace(std::optional<double> speed) : Speed(speed) {}

  // When to send a trade of that second; at once if not after now. Call once for each trade.
  PlayClock::Time DueTime(std::int64_t seconds, PlayClock::Time now);
  // The same for the last trade, after a change of speed.
  PlayClock::Time DueAgain() const;

  void SetSpeed(std::optional<double> speed, PlayClock::Time now);
  void Pause(PlayClock::Time now);
  void Resume(PlayClock::Time now);
  std::optional<double> GetSpeed() const noexcept { return Speed; }
  bool IsPaused() const noexcept { return Paused; }

  // The time of the day in seconds as those of the trades, never after the trade that is due next; nothing before the
  // first trade.
  std::optional<std::int64_t> DaySeconds(PlayClock::Time now) const;

 private:
  struct Anchor {
    PlayClock::Time Wall;
    double Day;
  };
  double DayAt(PlayClock::Time now) const;

  std::optional<double> Speed;
  bool Paused = false;
  std::optional<Anchor> Start;
  std::int64_t Last = 0;  // the second asked about last
};

// A download never waits, whatever the speed, nor does a feed. A pause holds all but the download of a new login.
class DayRun {
 public:
  DayRun(MessageTarget& target, TradeListener& listener, PlayClock& clock, std::optional<double> speed)
      : Clock(clock), Target(target), Speed(speed), Pace(speed), Sender(target, clock, &listener) {}

  // Plays that day from its begin. The input must outlive its use. This and the next two throw TerminalError.
  void Begin(DayInput& input);
  // Sends 30022 and the day so far as a download; the live trades go on after it. A feed is read from its begin.
  void LoginAgain();

  // Sends what is due, for about that time at most. Returns when more is due, or when to look at a feed again; nothing
  // at the end of the day or in a pause.
  std::optional<PlayClock::Time> PlayFor(std::chrono::milliseconds time);

  void Pause() { Pace.Pause(Clock.Now()); }
  void Resume() { Pace.Resume(Clock.Now()); }
  // Of files, now or later.
  void SetSpeed(std::optional<double> speed);
  std::optional<double> GetSpeed() const noexcept { return Speed; }
  bool IsPaused() const noexcept { return Pace.IsPaused(); }
  bool HasEnded() const noexcept { return Ended; }
  bool IsFeed() const noexcept { return Input != nullptr && Input->IsFeed(); }
  // The download has ended.
  bool IsLive() const noexcept { return Live; }

  // Trades of the day that were sent, each counted once.
  std::uint64_t DayTrades() const noexcept { return TradesOfDay; }
  // All messages sent, logins included.
  PlayCounts Counts() const noexcept;
  std::optional<std::int64_t> DaySeconds() const;

 private:
  void Start();
  std::optional<PlayClock::Time> Rest();
  bool IsDue();
  bool IsDownload() const;
  void SendNext();

  PlayClock& Clock;
  MessageTarget& Target;
  std::optional<double> Speed;
  DayPace Pace;
  DaySender Sender;
  DayInput* Input = nullptr;
  NumberedDay* Script = nullptr;
  bool Waiting = false;  // the script stands at a message that has not been sent
  bool Ended = true;
  bool Live = false;
  std::uint64_t TradesOfDay = 0;
  std::optional<std::uint64_t> DownloadOfLogin;  // trades; nothing at the first login
  std::uint64_t Control = 0;                     // messages beside those of the day
  std::optional<std::int64_t> DownloadSeconds;
};

// "Download", "Live, 60x", "Paused" or "Day played", with the count of bad lines if there are any. A feed tells its own
// state.
std::string StateText(const DayRun& day, std::uint64_t badLines);

// Plays the download at once and live trades at their pace, with the beat between messages.
class DayPlayer {
 public:
  // Live trades go that many times faster than the day; nothing for as fast as the plug-in takes them. The listener may
  // be null, which costs nothing.
  DayPlayer(MessageTarget& target, RefreshBeat& beat, PlayClock& clock, PlayProgress& progress,
            std::optional<double> speed, TradeListener* listener = nullptr)
      : Sender(target, clock, listener), Beat(beat), Clock(clock), Progress(progress), Pace(speed) {}

  // Until the end of the day, or until goesOn, which is asked between messages, says no.
  PlayCounts Play(
      NumberedDay& script, const std::function<bool()>& goesOn = [] { return true; });

 private:
  void Send(NumberedDay& script);
  void WaitForTrade(NumberedDay& script);

  DaySender Sender;
  RefreshBeat& Beat;
  PlayClock& Clock;
  PlayProgress& Progress;
  DayPace Pace;
};
