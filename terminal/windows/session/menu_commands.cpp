#include "terminal/windows/session/menu_commands.h"

#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/menuitem.h>
#include <wx/platinfo.h>
#include <wx/utils.h>

#include <optional>
#include <utility>

#include "foundations/paths.h"
#include "foundations/text_tools.h"
#include "terminal/program/program.h"
#include "terminal/report/day_report.h"
#include "terminal/windows/frame/connect_dialog.h"
#include "terminal/windows/frame/window_tools.h"
#include "terminal/windows/session/chart_selection.h"
#include "toolkit/dialogs/dialog.h"
#include "toolkit/dialogs/popups.h"

namespace {

constexpr const wchar_t* kMenuBehindPlugin = L"&Day";

constexpr int IdOf(TerminalCommand command) {
  return static_cast<int>(command);
}
constexpr KeyPress Ctrl(char letter) {
  return {.Code = static_cast<std::uint8_t>(letter), .Ctrl = true};
}
constexpr KeyPress CtrlShift(char letter) {
  return {.Code = static_cast<std::uint8_t>(letter), .Ctrl = true, .Shift = true};
}
constexpr KeyPress FunctionKey(int number) {
  return {.Code = static_cast<std::uint8_t>(0x6F + number)};
}

constexpr std::optional<double> SpeedOf(int times) {
  return times == 0 ? std::nullopt : std::optional<double>(times);
}

TerminalBar& AsBar(TerminalBar& bar) {
  return bar;
}
TerminalBar& AsBar(TerminalBar* bar) {
  return *bar;
}

using Command = TerminalCommand;
using enum MenuEntry::Form;

}  // namespace

template <int Times>
void MenuCommands::SetSpeed() {
  Day.SetSpeed(SpeedOf(Times));
}

template <int Times>
MenuCommands::State MenuCommands::SpeedState() const {
  return {.Checked = Day.Day().GetSpeed() == SpeedOf(Times), .Enabled = !Day.Day().IsFeed()};
}

template <auto Bar>
void MenuCommands::Toggle() {
  TerminalBar& bar = AsBar((Windows.*Bar)());
  bar.ShowControlBar(!bar.IsBarShown());
  ShowStates();
}

template <auto Bar>
MenuCommands::State MenuCommands::ShownState() const {
  return {.Checked = AsBar((Windows.*Bar)()).IsBarShown()};
}

// In the order of TerminalCommand, rows of one menu together. The plug-in tells the texts of its own entry.
constexpr MenuCommands::Row MenuCommands::kRows[] = {
    {{IdOf(Command::OpenDay), L"&File", L"&Open Day...", L"Play another day", Ctrl('O')}, &MenuCommands::AskForDay},
    {{IdOf(Command::Connect), L"&File", L"&Connect...", L"Show trades as they happen", Ctrl('N')},
     &MenuCommands::AskForFeed},
    {{IdOf(Command::DayReport), L"&File", L"&Day Report...", L"Save positions, sums and charts of the day as a page",
      Ctrl('D'), Plain, true},
     &MenuCommands::AskForReport},
    {{IdOf(Command::Exit), L"&File", L"E&xit", L"Close the terminal; the books come back at the next start", Ctrl('Q'),
      Plain, true},
     &MenuCommands::Exit},
    {{IdOf(Command::OpenBook), nullptr, nullptr, L"Open a book of the security in focus, or of all"},
     &MenuCommands::RunPluginEntry},
    {{IdOf(Command::PlayOrPause), L"&Day", L"&Pause", L"Hold the live trades, or let them go on", FunctionKey(5),
      Check},
     &MenuCommands::PlayOrPause,
     &MenuCommands::PauseState},
    {{IdOf(Command::RealTime), L"&Day", L"&Real Time", L"Live trades as they came on the day", Ctrl('1'), Radio, true},
     &MenuCommands::SetSpeed<1>,
     &MenuCommands::SpeedState<1>},
    {{IdOf(Command::TenTimes), L"&Day", L"&10 Times", L"Live trades ten times as fast", Ctrl('2'), Radio},
     &MenuCommands::SetSpeed<10>,
     &MenuCommands::SpeedState<10>},
    {{IdOf(Command::SixtyTimes), L"&Day", L"&60 Times", L"Live trades sixty times as fast", Ctrl('3'), Radio},
     &MenuCommands::SetSpeed<60>,
     &MenuCommands::SpeedState<60>},
    {{IdOf(Command::FullSpeed), L"&Day", L"As &Fast As Possible", L"Live trades without waiting", Ctrl('4'), Radio},
     &MenuCommands::SetSpeed<0>,
     &MenuCommands::SpeedState<0>},
    {{IdOf(Command::StartAgain), L"&Day", L"&Start Again", L"Play the day from its begin", Ctrl('B'), Plain, true},
     &MenuCommands::StartAgain},
    {{IdOf(Command::NewLogin), L"&Day", L"New &Login", L"Log in anew: the trades so far come once more", Ctrl('L')},
     &MenuCommands::LoginAgain},
    {{IdOf(Command::RefreshBooks), L"&Day", L"Refresh &Books", L"Have every book apply its filter again", Ctrl('R')},
     &MenuCommands::RefreshBooks},
    {{IdOf(Command::MarketWatch), L"&View", L"&Market Watch", L"Show or hide the market watch", Ctrl('M'), Check},
     &MenuCommands::Toggle<&SessionWindows::Watch>,
     &MenuCommands::ShownState<&SessionWindows::Watch>},
    {{IdOf(Command::Properties), L"&View", L"&Properties", L"Show or hide the properties of a book", Ctrl('P'), Check},
     &MenuCommands::Toggle<&SessionWindows::Properties>,
     &MenuCommands::ShownState<&SessionWindows::Properties>},
    {{IdOf(Command::Messages), L"&View", L"M&essages", L"Show or hide the log of messages", Ctrl('E'), Check},
     &MenuCommands::Toggle<&SessionWindows::Messages>,
     &MenuCommands::ShownState<&SessionWindows::Messages>},
    {{IdOf(Command::Positions), L"&View", L"P&ositions", L"Show or hide the positions", Ctrl('T'), Check},
     &MenuCommands::Toggle<&SessionWindows::Positions>,
     &MenuCommands::ShownState<&SessionWindows::Positions>},
    {{IdOf(Command::Chart), L"&View", L"&Chart", L"Show or hide the chart of a security", Ctrl('G'), Check},
     &MenuCommands::ToggleChart,
     &MenuCommands::ShownState<&SessionWindows::Chart>},
    {{IdOf(Command::ChartOfRows), L"&View", L"Chart of &Selected Rows", L"Show the times of a book's selected rows",
      CtrlShift('G')},
     &MenuCommands::ShowChartOfRows},
    {{IdOf(Command::ResetWindows), L"&View", L"&Reset Windows", L"Put all windows where a first start shows them",
      KeyPress{}, Plain, true},
     &MenuCommands::ResetWindows},
    {{IdOf(Command::Keys), L"&Help", L"&Keys", L"The keys of terminal and books", FunctionKey(1)},
     &MenuCommands::ShowKeys},
    {{IdOf(Command::About), L"&Help", L"&About", L"Versions", FunctionKey(12)}, &MenuCommands::ShowAbout},
};

MenuCommands::MenuCommands(DayControl& day, PluginConnection& connection, SessionWindows& windows, BookBars& books,
                           WindowMemory& memory, std::filesystem::path plugin, std::function<void()> close)
    : Day(day),
      Connection(connection),
      Windows(windows),
      Books(books),
      Memory(memory),
      PluginFile(std::move(plugin)),
      Close(std::move(close)) {}

void MenuCommands::AddTo(MainFrame& frame) const {
  for (const Row& row : kRows)
    if (row.Entry.Text != nullptr) frame.AddEntry(row.Entry);
}

void MenuCommands::AddPluginEntry(MainFrame& frame) const {
  const PluginDescription& told = Connection.Plugin->Description();
  if (told.MenuCommand == 0) return;
  const std::wstring title = L"&" + Utf16ToWide(told.MenuTitle);
  const std::wstring text = Utf16ToWide(told.MenuEntry);
  MenuEntry entry = kRows[IdOf(Command::OpenBook)].Entry;
  entry.Menu = title.c_str();
  entry.Text = text.c_str();
  entry.Key = {.Code = told.MenuKey};
  frame.AddEntry(entry, kMenuBehindPlugin);
}

void MenuCommands::Run(TerminalCommand command) {
  static_assert([] {
    for (int id = 0; const Row& row : kRows)
      if (row.Entry.Id != id++) return false;
    return true;
  }());
  if (Connection.IsBusy()) return;
  OrShowFailure(Windows.Frame(), [&] { (this->*kRows[IdOf(command)].Run)(); });
}

bool MenuCommands::OpenBook() {
  if (Connection.IsBusy() || Connection.Plugin->Description().MenuCommand == 0) return false;
  Books.NoteOpening();
  Connection.Plugin->RunMenuCommand();
  return true;
}

void MenuCommands::ResetWindows() {
  FirstWindows.Restore();
  ShowStates();
}

void MenuCommands::ShowStates() const {
  for (const Row& row : kRows) {
    if (row.Now == nullptr) continue;
    const State now = (this->*row.Now)();
    if (row.Entry.Kind == Check || now.Checked) Windows.Frame()->Check(row.Entry.Id, now.Checked);
    Windows.Frame()->EnableEntry(row.Entry.Id, now.Enabled);
  }
}

// The selection that the chart follows is the one before the chart takes the focus.
void MenuCommands::ToggleChart() {
  Books.NoteFocus(Windows.Frame()->GetDockingManager().BarOf(wxWindow::FindFocus()));
  Toggle<&SessionWindows::Chart>();
  FollowSelection(Windows, Books);
}

void MenuCommands::ShowChartOfRows() {
  Books.NoteFocus(Windows.Frame()->GetDockingManager().BarOf(wxWindow::FindFocus()));
  ShowSelectedRows(Windows, Books);
  ShowStates();
}

void MenuCommands::AskForDay() {
  wxFileDialog dialog(Windows.Frame(), L"Open Day", wxString(WideOfPath(Day.Files().Day.File.parent_path())),
                      wxString(), L"Days (*.csv;*.bin;*.ada;*.journal)|*.csv;*.bin;*.ada;*.journal|All files|*",
                      wxFD_OPEN | wxFD_FILE_MUST_EXIST);
  if (dialog.ShowModal() == wxID_OK) Day.Open(DaySpec(PathOfWide(dialog.GetPath().ToStdWstring())));
}

void MenuCommands::AskForFeed() {
  const auto connect = [this](const DaySpec& feed) {
    Day.Open(feed);
    Memory.SaveFeed(feed);
  };
  ConnectDialog dialog(Memory.LoadFeeds(), connect);
  if (dialog.CreateOver(Windows.Frame())) dialog.DoModal();
}

void MenuCommands::AskForReport() {
  MainFrame& frame = *Windows.Frame();
  const auto path = CQORPFileDialog(&frame, "day_report.html", L".html", L"Web page (*.html)").AskForPath();
  if (!path) return;
  CQORPProgressOverlay overlay(frame);
  SaveDayReport(Day.Trades(), {Day.Files().Day.Name(), Day.Positions().Settings().Method}, *path, [&overlay](std::size_t done, std::size_t all) {
    overlay.ShowProgress(L"Drawing charts", static_cast<int>(done * 100 / all));
  });
}

MenuCommands::State MenuCommands::PauseState() const {
  return {.Checked = Day.Day().IsPaused(), .Enabled = !Day.Day().HasEnded()};
}

namespace {

std::wstring KeyLine(const KeyPress& key, const std::wstring& text) {
  const std::string name = KeyPressText(key);
  return name.empty() ? std::wstring() : Wide(name) + L": " + text + L"\n";
}

}  // namespace

std::wstring MenuCommands::KeysText() const {
  const PluginDescription& plugin = Connection.Plugin->Description();
  std::wstring text = KeyLine({.Code = plugin.MenuKey}, Utf16ToWide(plugin.MenuEntry)) +
                      L"Enter: the same, in market watch and positions\n\n";
  for (const Row& row : kRows)
    if (row.Entry.Text != nullptr)
      text += KeyLine(row.Entry.Key, wxMenuItem::GetLabelText(row.Entry.Text).ToStdWstring());
  return text;
}

// A plug-in tells no version of its own: its file's name and time stand for it.
std::wstring MenuCommands::AboutText() const {
  const PluginDescription& plugin = Connection.Plugin->Description();
  const wxString built = wxFileName(wxString(WideOfPath(PluginFile))).GetModificationTime().FormatISOCombined(' ');
  return L"Trading Terminal " + Wide(kTerminalVersion) + L"\n\nPlug-in: " + Wide(plugin.Name) + L"\n" +
         WideOfPath(PluginFile.filename()) + L" of " + built.ToStdWstring() + L"\n" + Wide(plugin.Copyright) + L"\n\n" +
         wxGetLibraryVersionInfo().GetVersionString().ToStdWstring() + L" on " +
         wxPlatformInfo::Get().GetOperatingSystemIdName().ToStdWstring();
}

void MenuCommands::ShowKeys() {
  ShowMessage(Windows.Frame(), L"Keys", KeysText());
}

void MenuCommands::ShowAbout() {
  ShowMessage(Windows.Frame(), L"About", AboutText());
}
