#include "terminal/windows/session/day_control.h"

#include <algorithm>
#include <utility>

#include "terminal/common/errors.h"

namespace {
constexpr double kSpeedWithWindows = 60;
}

void PluginConnection::Load(const std::filesystem::path& module, TerminalWindows& windows) {
  Host.UseWindows(&windows);
  Host.LogTo(&Log);
  Plugin.emplace(module);
  Plugin->LogTo(&Log);
}

DayControl::DayControl(const RunFiles& files, const Options& options, WindowMemory& memory, BadLineReport& badLines,
                       FeedOpener openFeeds)
    : OpenFeed(std::move(openFeeds)),
      DayFiles(files),
      BadLines(badLines),
      Input(FirstInput(options, memory)),
      Rows(Input->Securities),
      FirstSpeed(options.SpeedGiven ? options.Speed : kSpeedWithWindows) {
  Listeners.Add(Rows);
  Listeners.Add(Ledger);
}

std::unique_ptr<DayInput> DayControl::FirstInput(const Options& options, WindowMemory& memory) {
  const bool given = !options.Day.empty() || !options.Securities.empty() || !options.Desk.empty();
  if (const auto last = given ? std::nullopt : memory.LoadDay()) {
    try {
      const RunFiles files = DayFiles.WithDay(*last);
      auto input = std::make_unique<DayInput>(files, options.Live, BadLines, OpenFeed);
      input->Check();
      DayFiles = files;
      return input;
    } catch (const TerminalError& failure) {
      WhyLost = failure.what();
    }
  }
  return std::make_unique<DayInput>(DayFiles, options.Live, BadLines, OpenFeed);
}

void DayControl::Start(PluginConnection& connection, PlayObserver& observer) {
  Connection = &connection;
  Observer = &observer;
  PluginLink& plugin = *connection.Plugin;
  Run.emplace(plugin, Listeners, connection.Clock, FirstSpeed);
  Timers.emplace(*Run, connection.Beat, plugin, connection.Clock, observer);
  connection.ControlMessages = SendStart(plugin, true);
  Begun = connection.Clock.Now();
  Begin();
  Timers->Start();
}

void DayControl::Stop() {
  if (Timers) Timers->Stop();
  Input->Close();
}

void DayControl::Begin() {
  Run->Begin(*Input);
  Observer->OnDayBegun(DayFiles.Day);
  Timers->PlayOn();
}

void DayControl::Open(const DaySpec& day) {
  if (day.IsFeed() && day == DayFiles.Day) return StartAgain();
  const RunFiles files = DayFiles.WithDay(day);
  auto input = std::make_unique<DayInput>(files, std::nullopt, BadLines, OpenFeed);
  input->Check();
  Input->Close();
  FormerInputs.push_back(std::exchange(Input, std::move(input)));
  DayFiles = files;
  Connection->Host.UseSecurities(Input->Securities);
  ForgetTrades();
  Rows.Fill(Input->Securities);
  Begin();
}

// Forgets the trades in the plug-in, in the market watch and in the ledger, as at a login.
void DayControl::ForgetTrades() {
  Connection->SendControl(30022);
  Rows.ForgetTrades();
  Ledger.Clear();
}

void DayControl::StartAgain() {
  ForgetTrades();
  Begin();
}

void DayControl::LoginAgain() {
  Rows.ForgetTrades();
  Run->LoginAgain();
  Timers->PlayOn();
}

void DayControl::PlayOrPause() {
  if (Run->IsPaused())
    Run->Resume();
  else
    Run->Pause();
  Timers->PlayOn();
  Observer->OnBeat();
}

void DayControl::SetSpeed(std::optional<double> speed) {
  Run->SetSpeed(speed);
  Timers->PlayOn();
  Observer->OnBeat();
}

std::uint64_t DayControl::TradesPerSecond() {
  Rate.Tell(Run->Counts().Trades(), Connection->Clock.Now());
  return Rate.PerSecond();
}

std::string DayControl::StateText() const {
  if (!Input->IsFeed()) return ::StateText(*Run, BadLines.Count());
  return (Run->IsPaused() ? "Paused; " : "") + Input->FeedText();
}

void DayControl::LogNews() {
  for (const FeedNote& note : Input->TakeNews()) Connection->Log.AddNote(note.IsAlarm, note.Text);
}

PlayClock::Time::duration DayControl::TimePlayed() const {
  return Connection->Clock.Now() - Begun;
}

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kSlice(8);
constexpr milliseconds kBeatPeriod(250);
constexpr milliseconds kLongestWait(250);
constexpr milliseconds kBusyWait(20);

}  // namespace

PlayTimers::PlayTimers(DayRun& day, RefreshBeat& beat, PluginLink& plugin, PlayClock& clock, PlayObserver& observer)
    : Day(day), Beat(beat), Plugin(plugin), Clock(clock), Observer(observer) {
  PlayTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Play(); });
  RefreshTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Refresh(); });
  BeatTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Observer.OnBeat(); });
}

void PlayTimers::Start() {
  Refresh();
  BeatTimer.Start(static_cast<int>(kBeatPeriod.count()));
}

void PlayTimers::PlayOn() {
  StartOnce(PlayTimer, Clock.Now());
}

void PlayTimers::Stop() {
  PlayTimer.Stop();
  RefreshTimer.Stop();
  BeatTimer.Stop();
}

void PlayTimers::StartOnce(wxTimer& timer, PlayClock::Time time) {
  const auto wait = std::chrono::ceil<milliseconds>(time - Clock.Now());
  timer.StartOnce(static_cast<int>(std::clamp(wait, milliseconds(1), kLongestWait).count()));
}

void PlayTimers::Play() {
  if (Plugin.IsBusy()) return StartOnce(PlayTimer, Clock.Now() + kBusyWait);
  const bool hadEnded = Day.HasEnded();
  try {
    if (const auto next = Day.PlayFor(kSlice)) StartOnce(PlayTimer, *next);
  } catch (const std::exception& failure) {
    return Observer.OnDayFailed(failure.what());
  }
  if (Day.HasEnded() && !hadEnded) Observer.OnBeat();
}

// Sees a later registration at the next turn.
void PlayTimers::Refresh() {
  if (!Plugin.IsBusy()) Beat.CallIfDue();
  StartOnce(RefreshTimer, Beat.NextCall().value_or(Clock.Now() + kBeatPeriod));
}
