#include "terminal/windows/session/window_session.h"

#include <wx/app.h>
#include <wx/clipbrd.h>
#include <wx/log.h>

#include <memory>
#include <ostream>

#include "foundations/paths.h"
#include "platform/locale.h"
#include "platform/modules.h"
#include "terminal/common/errors.h"
#include "terminal/common/numbers.h"
#include "terminal/program/working_folder.h"
#include "terminal/windows/drivers/screen_picture.h"
#include "terminal/windows/drivers/user_drivers.h"
#include "terminal/windows/frame/main_frame.h"
#include "terminal/windows/frame/window_tools.h"
#include "terminal/windows/session/chart_selection.h"
#include "toolkit/start/toolkit_start.h"
#include "toolkit/system/make_child.h"

namespace {

constexpr int kPaintedMs = 700;  // more than two beats
constexpr int kUntilDialogIsGoneMs = 50;

const RunFiles& InWorkingFolder(const RunFiles& files) {
  EnterWorkingFolder(files.Work, ProgramFolder() / "working_folder");
  return files;
}

// Keeps the clipboard after the end of the program if the desktop allows it.
void KeepClipboard() {
  const wxLogNull silence;  // another program may have the clipboard
  const wxClipboardLocker locker;
  if (!!locker) wxTheClipboard->Flush();
}

}  // namespace

WindowSession::WindowSession(const RunFiles& files, const Options& options, BadLineReport& badLines,
                             const FeedOpener& openFeeds)
    : Files(files),
      ExitAfter(options.ExitAfter),
      BadLines(badLines),
      Script(MakeScript()),
      Memory(InWorkingFolder(files).Work),
      Day(files, options, Memory, badLines, openFeeds),
      Menu(Day, Connection, Windows, Books, Memory, files.Plugin, [this] { Close(); }),
      Actions(Day, Windows, Books, Menu, [this] { Close(); }),
      Requests(Connection, Windows, Books, [this] { ShowStatus(); }) {
  EndTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Close(); });
}

std::unique_ptr<ScriptRunner> WindowSession::MakeScript() {
  return Files.Script.empty() ? nullptr : std::make_unique<ScriptRunner>(Files.Script, Actions, BadLines);
}

WindowSession::~WindowSession() {
  Windows.Destroy();
  WxRun::DropClosedWindows();
}

void WindowSession::Open() {
  Windows.Make(Memory, {Day.Watch(), Day.Positions(), Connection.Log}, Day.Trades(),
               {.Command = [this](int id) { Menu.Run(static_cast<TerminalCommand>(id)); },
                .RowOpened = [this] { Menu.OpenBook(); },
                .OwnBarClosed = [this] { Menu.ShowStates(); },
                .SelectedRows = [this] { Menu.Run(TerminalCommand::ChartOfRows); }});
  Menu.AddTo(*Windows.Frame());
  Windows.Frame()->Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& event) {
    if (Connection.IsBusy() && event.CanVeto()) return event.Veto();
    Finish();
    event.Skip();
  });
  Connection.Load(Files.Plugin, Requests);
  Menu.AddPluginEntry(*Windows.Frame());
  Windows.Show();
  Windows.Watch().SetFocus();
  Day.Start(Connection, *this);
  if (Memory.IsNew()) Menu.First().Begin();
  if (Script) Script->Start();
  OnBeat();
  if (!Day.LostDay().empty())
    Windows.Frame()->CallAfter(
        [this] { ShowFailure(Windows.Frame(), Day.LostDay() + "\nThe sample day is played instead."); });
}

void WindowSession::OnBeat() {
  if (Windows.Frame() == nullptr) return;
  Day.LogNews();
  Windows.ShowChanges();
  if (!Connection.IsBusy()) Books.DestroyClosed();
  ShowStatus();
  const bool scriptRuns = Script && !Script->HasEnded();
  const bool ends = ExitAfter && !scriptRuns && ExitAfter->HasCome(Day.Day().HasEnded(), Day.TimePlayed());
  if (ends && !EndTimer.IsRunning()) EndTimer.StartOnce(kPaintedMs);
}

void WindowSession::OnDayBegun(const DaySpec& day) {
  const std::wstring name = day.IsFeed() ? Wide(day.Name()) : WideOfPath(day.File.filename());
  Windows.Frame()->SetTitle(L"Trading Terminal - " + name);
}

void WindowSession::OnDayFailed(const std::string& reason) {
  OnBeat();
  ShowFailure(Windows.Frame(), reason);
}

// What the rows selected in the grid with the focus come to, else the bar with the focus: there is no room for both.
std::wstring WindowSession::FocusText(const CQORPDockingControlBar* focused) {
  CQORPGridCtrl* grid = BookDriver::GridWithFocus();
  const std::wstring selected = grid == nullptr ? std::wstring() : grid->SelectionText();
  if (!selected.empty() || focused == nullptr) return selected;
  return focused->GetBarTitle();
}

// Updates status bar and menu.
void WindowSession::ShowStatus() {
  if (Windows.Frame() == nullptr || !Day.IsStarted()) return;
  MainFrame& frame = *Windows.Frame();
  const DayRun& day = Day.Day();
  const CQORPDockingControlBar* focused = frame.GetDockingManager().BarOf(wxWindow::FindFocus());
  Books.NoteFocus(focused);
  FollowSelection(Windows, Books);
  frame.SetStatus(StatusField::Focus, FocusText(focused));
  frame.SetStatus(StatusField::DayClock, Wide(DayClockText(day.DaySeconds())));
  frame.SetStatus(StatusField::State, Wide(Day.StateText()));
  frame.SetStatus(StatusField::Trades, CountText(day.DayTrades()) + L" trades");
  frame.SetStatus(StatusField::Rate, CountText(Day.TradesPerSecond()) + L" / s");
  Menu.ShowStates();
}

// A dialog must end first: it is on the stack of its caller and inside the window below it.
void WindowSession::Close() {
  if (DialogDriver::EndTop())
    EndTimer.StartOnce(kUntilDialogIsGoneMs);
  else if (Windows.Frame() != nullptr)
    Windows.Frame()->Close();
}

void WindowSession::Finish() {
  Day.Stop();
  if (Script) Script->Stop();
  MainFrame* frame = Windows.Frame();
  if (!Files.Screenshot.empty()) OrShowFailure(frame, [&] { SavePicture(*frame, Files.Screenshot); });
  if (Connection.IsLoaded()) Connection.SendControl(30021);
  Connection.Beat.Register({});
  Windows.Save(Memory);
  Memory.SaveDay(Day.Files());
  if (Day.Files().Day.IsFeed()) Memory.SaveFeed(Day.Files().Day);
  KeepClipboard();
  if (!Memory.Write()) ShowFailure(frame, std::string(WindowMemory::kFileName) + " cannot be written");
}

DaySummary WindowSession::Summary() const {
  DaySummary summary;
  summary.PluginName = Connection.Plugin->Description().Name;
  summary.Played = Day.Day().Counts();
  summary.ControlMessages = Connection.ControlMessages;
  summary.Received = Connection.Host.Received();
  summary.Beats = Connection.Beat.Calls();
  summary.BadLines = BadLines.Count();
  if (Script) summary.FailedCommands = BadLines.FailedCommands();
  summary.Time = Day.TimePlayed();
  return summary;
}

namespace {

// Screen readers take it for the name of the program. One that is called terminal is a console to them, of whose
// windows they leave out the descriptions.
constexpr const char* kProgramName = "Trading Terminal";

class TerminalApp : public wxApp {
 public:
  // Intentional: wxWidgets does not parse the command line again.
  bool OnInit() override {
    SetAppName(L"terminal");
    SetAppDisplayName(kProgramName);
    return true;
  }
};

bool StartWx() {
  const wxLogNull silence;  // without a display wxWidgets would say so on its own
  // It gets no command line, as its options are not the terminal's.
  wxApp::SetInstance(&MakeChild<TerminalApp>());
  static std::string name = kProgramName;
  static char* words[] = {name.data(), nullptr};
  static int count = 1;
  return wxEntryStart(count, words);
}

}  // namespace

WxRun::WxRun() {
  ChooseWindowSystem();
  if (!StartWx())
    throw TerminalError(ExitCode::Display,
                        "there is no display to show windows on: give it one, or start with --headless");
  DropKnownComplaints();
  ReportToolkitAssertions();
  wxTheApp->CallOnInit();
  wxLog::SetActiveTarget(&MakeChild<wxLogStderr>());  // no boxes by themselves
  wxLog::SetLogLevel(wxLOG_Message);  // what wxWidgets tells its own developers says nothing to the user
}

WxRun::~WxRun() {
  DropClosedWindows();
  wxTheApp->OnExit();
  wxEntryCleanup();
}

void WxRun::Loop() {
  wxTheApp->OnRun();
}

void WxRun::DropClosedWindows() {
  wxTheApp->ProcessPendingEvents();
  wxTheApp->ProcessIdle();
}

namespace {

void Play(WxRun& wx, const RunFiles& files, const Options& options, BadLineReport& badLines, std::ostream& out) {
  WindowSession session(files, options, badLines);
  session.Open();
  wx.Loop();
  out << SummaryText(session.Summary());
}

}  // namespace

void PlayInWindows(const RunFiles& files, const Options& options, BadLineReport& badLines, std::ostream& out) {
  const bool isUnseen = CloseOwnConsole();
  WxRun wx;
  try {
    Play(wx, files, options, badLines, out);
  } catch (const std::exception& failure) {
    if (isUnseen) ShowFailure(nullptr, failure.what());
    throw;
  }
}
