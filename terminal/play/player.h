// DayRun: a day that plays beside the windows: piece by piece as it is asked to, with pause, other speeds, new logins
// and other days. Calls the plug-in; the calling thread only.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "terminal/day/numbered_day.h"
#include "terminal/day/trade_message.h"
#include "terminal/link/plugin_link.h"
#include "terminal/link/terminal_host.h"
#include "terminal/play/play_report.h"

// DayPace: how the seconds of a day run beside those of the wall: when a live trade is due, and what time of the day
// it is now.
//
// What goes late does not stretch the day, as each trade counts from where the day stands and not from when
// the one before was sent. The first trade, a step back in time and a change of date are not waited for: the day goes
// on from there. So it does from wherever it stands when the speed changes or a pause ends.
class DayPace {
 public:
  // How many times faster than the wall the day goes; nothing for without waiting.
  explicit DayPace(std::optional<double> speed) : Speed(speed) {}

  // When a trade of that second is to be sent; not after now for at once. To be asked once for each trade.
  PlayClock::Time DueTime(std::int64_t seconds, PlayClock::Time now);
  // The same for the trade asked about last, after a change of speed.
  PlayClock::Time DueAgain() const;

  void SetSpeed(std::optional<double> speed, PlayClock::Time now);
  void Pause(PlayClock::Time now);
  void Resume(PlayClock::Time now);
  std::optional<double> GetSpeed() const noexcept { return Speed; }
  bool IsPaused() const noexcept { return Paused; }

  // Where the day stands, in seconds as those of the trades, never ahead of the trade that is waited for; nothing
  // before the first trade.
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
  void Send(NumberedDay& script);
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
  NumberedDay* Script = nullptr;
  bool Waiting = false;  // the script stands at a message that has not been sent
  bool Ended = true;
  bool Live = false;
  std::uint64_t TradesOfDay = 0;
  std::optional<std::uint64_t> DownloadOfLogin;  // trades; nothing at the first login
  std::uint64_t Control = 0;                     // messages beside those of the day
  std::optional<std::int64_t> DownloadSeconds;
};

// "Download", "Live, 60x", "Paused" or "Day played", with the count of bad lines if there are any.
std::string StateText(const DayRun& day, std::uint64_t badLines);

// DayPlayer: plays a day from its begin to its end without windows: the download at once, live trades at their pace,
// with the beat between messages.
class DayPlayer {
 public:
  // speed is how many times faster than the day itself live trades go; nothing for as fast as the plug-in takes them.
  DayPlayer(MessageTarget& target, RefreshBeat& beat, PlayClock& clock, PlayProgress& progress,
            std::optional<double> speed)
      : Sender(target), Beat(beat), Clock(clock), Progress(progress), Pace(speed) {}

  PlayCounts Play(NumberedDay& script);

 private:
  void WaitForTrade(NumberedDay& script);

  DaySender Sender;
  RefreshBeat& Beat;
  PlayClock& Clock;
  PlayProgress& Progress;
  DayPace Pace;
};
