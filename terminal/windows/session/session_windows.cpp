#include "terminal/windows/session/session_windows.h"

#include <wx/app.h>
#include <wx/display.h>

#include <algorithm>
#include <utility>

#include "terminal/common/errors.h"
#include "terminal/windows/frame/window_tools.h"
#include "toolkit/system/make_child.h"

namespace {

constexpr std::uint32_t kMarketWatchId = 0xFFFF0001;  // apart from the ids that plug-ins get
constexpr std::uint32_t kPropertyPaneId = 0xFFFF0002;
constexpr std::uint32_t kLogId = 0xFFFF0003;
constexpr std::uint32_t kPositionsId = 0xFFFF0004;
constexpr std::uint32_t kChartId = 0xFFFF0005;

wxRect RectOf(const SettingsRectangle& kept) {
  return {wxPoint(kept.Left, kept.Top), wxPoint(kept.Right - 1, kept.Bottom - 1)};
}

// False if that screen is gone.
bool CanBeSeen(const wxRect& rect) {
  return wxDisplay::GetFromPoint({rect.x + rect.width / 2, rect.y + 10}) != wxNOT_FOUND;
}

}  // namespace

// In the middle of the screen, with a margin.
wxRect SessionWindows::FirstRect() {
  const wxRect screen = wxDisplay(0U).GetClientArea();
  wxSize size = wxWindow::FromDIP(wxSize(1280, 800), nullptr);
  size.DecTo(screen.GetSize() * 9 / 10);
  return wxRect(size).CentreIn(screen);
}

void SessionWindows::MakeFrame(WindowMemory& memory, const std::function<void(int)>& command) {
  const std::optional<FramePlace> kept = memory.LoadFrame();
  const bool usesKept = kept && CanBeSeen(RectOf(kept->Rectangle));
  MainWindow = &MakeChild<MainFrame>(usesKept ? RectOf(kept->Rectangle) : FirstRect(), command);
  if (usesKept && kept->Maximized) MainWindow->Maximize();
  wxTheApp->SetTopWindow(MainWindow);
}

void SessionWindows::Make(WindowMemory& memory, const Lists& lists, const TradeLedger& trades, const Events& events) {
  MakeFrame(memory, events.Command);
  CQORPDockingManager& manager = MainWindow->GetDockingManager();
  WatchBar = &MakeChild<MarketWatchBar>();
  PropertiesBar = &MakeChild<PropertyPane>();
  MessagesBar = &MakeChild<LogBar>();
  PositionRows = &MakeChild<PositionsBar>();
  ChartsBar = &MakeChild<ChartBar>();
  if (!WatchBar->Create(manager, kMarketWatchId, lists.Watch, events.RowOpened) ||
      !PropertiesBar->Create(manager, kPropertyPaneId) || !MessagesBar->Create(manager, kLogId, lists.Messages) ||
      !PositionRows->Create(manager, kPositionsId, lists.Positions, events.RowOpened) ||
      !ChartsBar->Create(manager, kChartId, trades, events.SelectedRows))
    throw TerminalError(ExitCode::Display, "the market watch and the panes cannot be shown");
  for (TerminalBar* bar : OwnBars()) {
    bar->Closed = events.OwnBarClosed;
    bar->Restore(memory);
  }
}

// Some window managers place a new window elsewhere; a move has effect once it is active.
void SessionWindows::Show() {
  const wxPoint wanted = MainWindow->GetPosition();
  MainWindow->Bind(wxEVT_ACTIVATE, [this, wanted, placed = false](wxActivateEvent& event) mutable {
    event.Skip();
    if (!std::exchange(placed, true) && !MainWindow->IsMaximized()) MainWindow->Move(wanted);
  });
  MainWindow->Show();
}

void SessionWindows::ShowChanges() {
  MainWindow->GrowIfTiny();
  WatchBar->ShowChanges();
  PositionRows->ShowChanges();
  PropertiesBar->FollowBook();
  MessagesBar->ShowChanges();
  ChartsBar->ShowChanges();
}

void SessionWindows::Save(WindowMemory& memory) {
  const wxRect rect = MainWindow->GetNormalRect();
  memory.SaveFrame(
      {{rect.GetLeft(), rect.GetTop(), rect.GetRight() + 1, rect.GetBottom() + 1}, MainWindow->IsMaximized()});
  PropertiesBar->Empty();
  for (TerminalBar* bar : OwnBars()) bar->Save(memory);
}

void SessionWindows::Reset() {
  MainWindow->PlaceAt(FirstRect());
  for (TerminalBar* bar : OwnBars()) bar->Reset();
}

void SessionWindows::Destroy() {
  if (MainWindow) MainWindow->Destroy();
}

std::vector<CQORPDockingControlBar*> BookBars::Shown() const {
  std::vector<CQORPDockingControlBar*> shown;
  if (Windows.Frame() == nullptr) return shown;
  for (CQORPDockingControlBar* bar : Windows.Frame()->GetDockingManager().Bars())
    if (Has(*bar) && bar->IsBarShown()) shown.push_back(bar);
  return shown;
}

CQORPDockingControlBar* BookBars::Current() const {
  const std::vector<CQORPDockingControlBar*> shown = Shown();
  const auto last = std::ranges::find(shown, Last);
  if (last != shown.end()) return *last;
  return shown.empty() ? nullptr : shown.back();
}

CQORPDockingControlBar* BookBars::Titled(const std::string& title) const {
  const std::vector<CQORPDockingControlBar*> shown = Shown();
  const auto found = std::ranges::find_if(
      shown, [wanted = Wide(title)](const auto* bar) { return bar->GetBarTitle().find(wanted) != std::wstring::npos; });
  return found == shown.end() ? nullptr : *found;
}

void BookBars::NoteFocus(const CQORPDockingControlBar* bar) {
  if (std::exchange(Focused, bar) == bar || bar == nullptr) return;
  if (Has(*bar)) MakeCurrent(bar);
  if (bar == &Windows.Watch()) Selecting = SelectingBar::MarketWatch;
  if (bar == &Windows.Positions()) Selecting = SelectingBar::Positions;
}

void BookBars::DestroyClosed() {
  CQORPDockingManager& manager = Windows.Frame()->GetDockingManager();
  const std::vector<const void*> closed = std::exchange(Closed, {});
  const std::vector<CQORPDockingControlBar*> bars = manager.Bars();
  for (CQORPDockingControlBar* bar : bars)
    if (!bar->IsBarShown() && std::ranges::count(closed, bar) != 0) manager.DestroyBar(bar);
}
