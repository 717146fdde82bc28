#include "terminal/windows/session/window_session.h"

#include <wx/app.h>
#include <wx/clipbrd.h>
#include <wx/display.h>
#include <wx/log.h>

#include "foundations/text_tools.h"
#include "platform/modules.h"
#include "terminal/common/errors.h"
#include "terminal/link/plugin_link.h"
#include "terminal/program/program.h"
#include "terminal/windows/drivers/screen_picture.h"
#include "terminal/windows/frame/main_frame.h"
#include "terminal/windows/session/wx_run.h"

namespace {

constexpr std::uint32_t kMarketWatchId = 0xFFFF0001;  // apart from the ids that plug-ins get
constexpr std::uint32_t kPropertyPaneId = 0xFFFF0002;
constexpr std::uint32_t kLogId = 0xFFFF0003;
constexpr int kPaintedMs = 700;  // more than two beats

constexpr double kSpeedWithWindows = 60;

const RunFiles& InWorkingFolder(const RunFiles& files) {
  EnterWorkingFolder(files.Work, ProgramFolder() / "working_folder");
  return files;
}

// In the middle of the screen, with a margin.
wxRect DefaultRect() {
  const wxRect screen = wxDisplay(0U).GetClientArea();
  wxSize size = wxWindow::FromDIP(wxSize(1280, 800), nullptr);
  size.DecTo(screen.GetSize() * 9 / 10);
  return wxRect(size).CentreIn(screen);
}

wxRect RectOf(const SettingsRectangle& kept) {
  return {wxPoint(kept.Left, kept.Top), wxPoint(kept.Right - 1, kept.Bottom - 1)};
}

// A screen that is gone must not take the window with it.
bool CanBeSeen(const wxRect& rect) {
  return wxDisplay::GetFromPoint({rect.x + rect.width / 2, rect.y + 10}) != wxNOT_FOUND;
}

// What was copied last outlives the program, where the desktop lets it.
void KeepClipboard() {
  const wxLogNull silence;  // another program may have the clipboard
  const wxClipboardLocker locker;
  if (!!locker) wxTheClipboard->Flush();
}

}  // namespace

WindowSession::WindowSession(const RunFiles& files, const Options& options, BadLineReport& badLines)
    : Files(files),
      Given(options),
      BadLines(badLines),
      Script(MakeScript()),
      Memory(InWorkingFolder(files).Work),
      Input(FirstDay()),
      Rows(Input->Securities),
      Host(Input->Securities, Beat) {
  EndTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { CloseWindows(); });
  if (!Given.SpeedGiven) Given.Speed = kSpeedWithWindows;
}

// The day that the command line names, else that of the last time; where that cannot be read any more, the sample.
std::unique_ptr<DayInput> WindowSession::FirstDay() {
  const bool given = !Given.Day.empty() || !Given.Securities.empty() || !Given.Desk.empty();
  if (const auto last = given ? std::nullopt : Memory.LoadDay()) {
    try {
      const RunFiles files = Files.WithDay(*last);
      auto input = std::make_unique<DayInput>(files, Given.Live, BadLines);
      input->Open();
      Files = files;
      return input;
    } catch (const TerminalError& failure) {
      LostDay = failure.what();
    }
  }
  return std::make_unique<DayInput>(Files, Given.Live, BadLines);
}

std::unique_ptr<ScriptRunner> WindowSession::MakeScript() {
  ScriptTarget& target = *this;
  return Files.Script.empty() ? nullptr : std::make_unique<ScriptRunner>(Files.Script, target, BadLines);
}

WindowSession::~WindowSession() {
  if (Frame) Frame->Destroy();
  WxRun::DropClosedWindows();
}

void WindowSession::Open() {
  MakeFrame();
  MakeBars();
  LoadPlugin();
  ShowFrame();
  WatchBar->SetFocus();
  StartDay();
}

void WindowSession::MakeFrame() {
  const std::optional<FramePlace> kept = Memory.LoadFrame();
  const bool usesKept = kept && CanBeSeen(RectOf(kept->Rectangle));
  Frame =
      std::make_unique<MainFrame>(usesKept ? RectOf(kept->Rectangle) : DefaultRect(), [this](TerminalCommand command) {
        Run(command);
      }).release();  // destroys itself when it is closed
  if (usesKept && kept->Maximized) Frame->Maximize();
  wxTheApp->SetTopWindow(Frame);
  Frame->Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& event) {
    if (Plugin && Plugin->IsBusy() && event.CanVeto()) return event.Veto();
    Finish();
    event.Skip();
  });
}

// Some window managers choose a place of their own for a new window; a move holds once it is active.
void WindowSession::ShowFrame() {
  const wxPoint wanted = Frame->GetPosition();
  Frame->Bind(wxEVT_ACTIVATE, [this, wanted, placed = false](wxActivateEvent& event) mutable {
    event.Skip();
    if (!std::exchange(placed, true) && !Frame->IsMaximized()) Frame->Move(wanted);
  });
  Frame->Show();
}

// The frame owns its bars.
void WindowSession::MakeBars() {
  CQORPDockingManager& manager = Frame->GetDockingManager();
  WatchBar = std::make_unique<MarketWatchBar>().release();
  PropertiesBar = std::make_unique<PropertyPane>().release();
  MessagesBar = std::make_unique<LogBar>().release();
  if (!WatchBar->Create(manager, kMarketWatchId, Rows, [this] { OpenBook(); }) ||
      !PropertiesBar->Create(manager, kPropertyPaneId) || !MessagesBar->Create(manager, kLogId, Log))
    throw TerminalError(ExitCode::Display, "the market watch and the panes cannot be shown");
  PutBack(*WatchBar);
  PutBack(*PropertiesBar);
  PutBack(*MessagesBar);
}

void WindowSession::PutBack(TerminalBar& bar) {
  bar.Closed = [this] { ShowCommands(); };
  bar.Restore(Memory);
}

void WindowSession::LoadPlugin() {
  Host.UseWindows(this);
  Host.LogTo(&Log);
  Plugin.emplace(Files.Plugin);
  Plugin->LogTo(&Log);
  const PluginDescription& told = Plugin->Description();
  if (told.MenuCommand == 0) return;
  Frame->AddPluginMenu(Utf16ToWide(told.MenuTitle), Utf16ToWide(told.MenuEntry), {.Code = told.MenuKey});
}

void WindowSession::StartDay() {
  Day.emplace(*Plugin, Rows, Clock, Given.Speed);
  Loop.emplace(*Day, Beat, *Plugin, Clock,
               DayLoop::Listener{[this] { OnBeat(); }, [this] { OnBeat(); },
                                 [this](const std::string& reason) {
                                   OnBeat();
                                   ShowFailure(Frame, reason);
                                 }});
  ControlMessages = SendStart(*Plugin, true);
  Begun = Clock.Now();
  BeginDay(*Input);
  Loop->Start();
  if (Script) Script->Start();
  OnBeat();
  if (!LostDay.empty())
    Frame->CallAfter([this] { ShowFailure(Frame, LostDay + "\nThe sample day is played instead."); });
}

// The windows are whole yet, and the books with them.
void WindowSession::Finish() {
  if (Loop) Loop->Stop();
  if (Script) Script->Stop();
  if (!Files.Screenshot.empty()) OrShowFailure(Frame, [this] { SavePicture(*Frame, Files.Screenshot); });
  if (Plugin && Plugin->Send(30021)) ++ControlMessages;
  Beat.Register(nullptr, {});
  const wxRect rect = Frame->GetNormalRect();
  Memory.SaveFrame({{rect.GetLeft(), rect.GetTop(), rect.GetRight() + 1, rect.GetBottom() + 1}, Frame->IsMaximized()});
  WatchBar->Save(Memory);
  PropertiesBar->Empty();
  PropertiesBar->Save(Memory);
  MessagesBar->Save(Memory);
  Memory.SaveDay(Files);
  KeepClipboard();
  if (!Memory.Write()) ShowFailure(Frame, std::string(WindowMemory::kFileName) + " cannot be written");
}

DaySummary WindowSession::Summary() const {
  DaySummary summary;
  summary.PluginName = Plugin->Description().Name;
  summary.Played = Day->Counts();
  summary.ControlMessages = ControlMessages;
  summary.Received = Host.Received();
  summary.Beats = Beat.Calls();
  summary.BadLines = BadLines.Count();
  if (Script) summary.FailedCommands = BadLines.FailedCommands();
  summary.Time = Clock.Now() - Begun;
  return summary;
}

void WindowSession::OnBeat() {
  if (!Frame) return;
  WatchBar->Grid().ShowChanges();
  PropertiesBar->FollowBook();
  if (!Plugin->IsBusy()) GoneBars.Destroy(Frame->GetDockingManager());
  MessagesBar->ShowChanges();
  ShowStatus();
  ShowCommands();
  if (ShouldEnd() && !EndTimer.IsRunning()) EndTimer.StartOnce(kPaintedMs);
}

// Once what --exit-after names has come, and the script is through.
bool WindowSession::ShouldEnd() const {
  if (!Given.ExitAfter || (Script && !Script->HasEnded())) return false;
  if (Given.ExitAfter->Played) return Day->HasEnded();
  return Clock.Now() - Begun >= *Given.ExitAfter->Seconds;
}

void WindowSession::ShowStatus() {
  const PlayCounts counts = Day->Counts();
  Rate.Tell(counts.Trades(), Clock.Now());
  const auto narrow = [this](StatusField field, const std::string& text) {
    Frame->SetStatus(field, wxString::FromUTF8(text).ToStdWstring());
  };
  narrow(StatusField::DayClock, DayClockText(Day->DaySeconds()));
  narrow(StatusField::State, StateText());
  narrow(StatusField::Trades, WithThousands(Day->DayTrades()) + " trades");
  narrow(StatusField::Rate, WithThousands(Rate.PerSecond()) + " / s");
  const CQORPDockingControlBar* focused = Frame->GetDockingManager().BarOf(wxWindow::FindFocus());
  if (std::exchange(FocusedBar, focused) != focused && focused != nullptr && IsPluginBar(*focused)) LastBook = focused;
  Frame->SetStatus(StatusField::Focus, focused == nullptr ? std::wstring() : focused->GetBarTitle());
}

std::string WindowSession::StateText() const {
  std::string text = "Live, " + SpeedText(Day->GetSpeed());
  if (!Day->IsLive()) text = "Download";
  if (Day->IsPaused()) text = "Paused";
  if (Day->HasEnded()) text = "Day played";
  if (BadLines.Count() != 0) text += ", " + WithThousands(BadLines.Count()) + " bad lines";
  return text;
}

void WindowSession::ShowCommands() {
  using enum TerminalCommand;
  constexpr std::pair<TerminalCommand, double> kSpeeds[] = {{RealTime, 1}, {TenTimes, 10}, {SixtyTimes, 60}};
  for (const auto& [command, speed] : kSpeeds)
    if (Day->GetSpeed() == speed) Frame->Check(command, true);
  if (!Day->GetSpeed()) Frame->Check(FullSpeed, true);
  Frame->Check(PlayOrPause, Day->IsPaused());
  Frame->EnableCommand(PlayOrPause, !Day->HasEnded());
  Frame->Check(MarketWatch, WatchBar->IsBarShown());
  Frame->Check(Properties, PropertiesBar->IsBarShown());
  Frame->Check(Messages, MessagesBar->IsBarShown());
}
