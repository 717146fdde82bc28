// The commands of the menu bar, those of a script, and what the plug-in asks about windows.
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/menuitem.h>
#include <wx/platinfo.h>
#include <wx/uiaction.h>
#include <wx/utils.h>

#include <algorithm>

#include "foundations/paths.h"
#include "foundations/text_tools.h"
#include "terminal/common/errors.h"
#include "terminal/link/plugin_messages.h"
#include "terminal/program/program.h"
#include "terminal/windows/drivers/book_driver.h"
#include "terminal/windows/drivers/dialog_driver.h"
#include "terminal/windows/drivers/screen_picture.h"
#include "terminal/windows/frame/main_frame.h"
#include "terminal/windows/session/window_session.h"

namespace {

std::wstring Wide(const std::string& text) {
  return wxString::FromUTF8(text).ToStdWstring();
}

std::wstring KeyLine(const KeyPress& key, const std::wstring& text) {
  const std::string name = KeyPressText(key);
  return name.empty() ? std::wstring() : Wide(name) + L": " + text + L"\n";
}

std::wstring KeysText(const PluginDescription& plugin) {
  std::wstring text =
      KeyLine({.Code = plugin.MenuKey}, Utf16ToWide(plugin.MenuEntry)) + L"Enter: the same, in the market watch\n\n";
  for (const CommandRow& row : CommandRows())
    text += KeyLine(row.Key, wxMenuItem::GetLabelText(row.Text).ToStdWstring());
  return text;
}

// A plug-in tells no version of its own: its file's name and time stand for it.
std::wstring AboutText(const PluginDescription& plugin, const std::filesystem::path& file) {
  const wxString built = wxFileName(wxString(WideOfPath(file))).GetModificationTime().FormatISOCombined(' ');
  return L"Trading Terminal " + Wide(kTerminalVersion) + L"\n\nPlug-in: " + Wide(plugin.Name) + L"\n" +
         WideOfPath(file.filename()) + L" of " + built.ToStdWstring() + L"\n" + Wide(plugin.Copyright) + L"\n\n" +
         wxGetLibraryVersionInfo().GetVersionString().ToStdWstring() + L" on " +
         wxPlatformInfo::Get().GetOperatingSystemIdName().ToStdWstring();
}

}  // namespace

void WindowSession::Run(TerminalCommand command) {
  if (Plugin->IsBusy()) return;  // it stands in a dialog of its own
  using Command = TerminalCommand;
  switch (command) {
    case Command::OpenDay:
      return AskForDay();
    case Command::Exit:
      return CloseWindows();
    case Command::OpenBook:
      return static_cast<void>(OpenBook());
    case Command::PlayOrPause:
      return PlayOrPause();
    case Command::RealTime:
      return SetSpeed(1);
    case Command::TenTimes:
      return SetSpeed(10);
    case Command::SixtyTimes:
      return SetSpeed(60);
    case Command::FullSpeed:
      return SetSpeed(std::nullopt);
    case Command::StartAgain:
      return StartAgain();
    case Command::NewLogin:
      return LoginAgain();
    case Command::RefreshBooks:
      if (Plugin->Send(30020)) ++ControlMessages;
      return;
    case Command::MarketWatch:
      return Toggle(*WatchBar);
    case Command::Properties:
      return Toggle(*PropertiesBar);
    case Command::Messages:
      return Toggle(*MessagesBar);
    case Command::Keys:
      return ShowMessage(Frame, L"Keys", KeysText(Plugin->Description()));
    case Command::About:
      return ShowAbout();
  }
}

void WindowSession::ShowAbout() {
  ShowMessage(Frame, L"About", AboutText(Plugin->Description(), Files.Plugin));
}

void WindowSession::AskForDay() {
  wxFileDialog dialog(Frame, L"Open Day", wxString(WideOfPath(Files.Day.parent_path())), wxString(),
                      L"Days (*.csv;*.bin;*.ada)|*.csv;*.bin;*.ada|All files|*", wxFD_OPEN | wxFD_FILE_MUST_EXIST);
  if (dialog.ShowModal() == wxID_OK) OpenDay(PathOfWide(dialog.GetPath().ToStdWstring()));
}

// A day that cannot be opened leaves the one that plays.
void WindowSession::OpenDay(const std::filesystem::path& file) {
  OrShowFailure(Frame, [&] {
    const RunFiles files = Files.WithDay(file);
    auto input = std::make_unique<DayInput>(files, std::nullopt, BadLines);
    input->Open();
    FormerInputs.push_back(std::exchange(Input, std::move(input)));
    Files = files;
    Host.UseSecurities(Input->Securities);
    ForgetDay();
    Rows.Fill(Input->Securities);
    BeginDay(*Input);
  });
}

void WindowSession::BeginDay(DayInput& input) {
  Day->Begin(input);
  Frame->SetTitle(L"Trading Terminal - " + WideOfPath(Files.Day.filename()));
  Loop->PlayOn();
}

// As at a login: the plug-in's trades and those of the market watch.
void WindowSession::ForgetDay() {
  if (Plugin->Send(30022)) ++ControlMessages;
  Rows.ForgetTrades();
}

void WindowSession::StartAgain() {
  OrShowFailure(Frame, [this] {
    ForgetDay();
    BeginDay(*Input);
  });
}

void WindowSession::LoginAgain() {
  OrShowFailure(Frame, [this] {
    Rows.ForgetTrades();
    Day->LoginAgain();
    Loop->PlayOn();
  });
}

void WindowSession::PlayOrPause() {
  if (Day->IsPaused())
    Day->Resume();
  else
    Day->Pause();
  Loop->PlayOn();
  OnBeat();
}

void WindowSession::SetSpeed(std::optional<double> speed) {
  Day->SetSpeed(speed);
  Loop->PlayOn();
  OnBeat();
}

void WindowSession::Toggle(CQORPDockingControlBar& bar) {
  bar.ShowControlBar(!bar.IsBarShown());
  ShowCommands();
}

// Of the market watch its own row; a book is asked itself.
void WindowSession::TellSelection(std::uint64_t window, MessageFunction answer) {
  if (!Frame) return;
  for (const CQORPDockingControlBar* bar : Frame->GetDockingManager().Bars()) {
    if (reinterpret_cast<std::uint64_t>(bar) != window) continue;
    if (IsPluginBar(*bar)) return Plugin->AskSelection(window, answer);
    const WatchRow* row = WatchBar->Grid().Selected();
    return AnswerSelection(answer, row == nullptr ? "" : row->Exchange, row == nullptr ? "" : row->SecurityID, Log);
  }
}

bool WindowSession::IsPluginBar(const CQORPDockingControlBar& bar) const {
  return &bar != WatchBar && Host.Bars().contains(bar.GetDlgCtrlID());
}

// What has the focus is looked up where it is shown; a bar that closes leaves it to another window.
void WindowSession::FocusMoved(const void* window, bool closed) {
  if (closed) GoneBars.Note(window);
  if (Frame && Day) Frame->CallAfter([this] { ShowStatus(); });
  if (closed && PropertiesBar) PropertiesBar->FollowBook();
}

void WindowSession::ShowProperties(const PropertyRequest& request) {
  if (PropertiesBar) PropertiesBar->Fill(request, *Plugin);
}

void WindowSession::PropertiesFilled() {
  if (!PropertiesBar) return;
  PropertiesBar->ShowFilled();
  ShowCommands();
}

bool WindowSession::OpenBook() {
  if (Plugin->IsBusy() || Plugin->Description().MenuCommand == 0) return false;
  LastBook = nullptr;
  Plugin->RunMenuCommand();
  return true;
}

bool WindowSession::Select(const std::string& securityId) {
  return WatchBar->Grid().Select(securityId);
}

// Of several books the one that had the focus last, else the one that was opened last.
CQORPDockingControlBar* WindowSession::BarFor(ScriptFocus where) const {
  if (where == ScriptFocus::MarketWatch) return WatchBar;
  CQORPDockingControlBar* book = nullptr;
  if (where != ScriptFocus::Book || !Frame) return book;
  for (CQORPDockingControlBar* bar : Frame->GetDockingManager().Bars()) {
    if (!IsPluginBar(*bar) || !bar->IsBarShown()) continue;
    book = bar;
    if (bar == LastBook) break;
  }
  return book;
}

std::size_t WindowSession::OpenBooks() {
  const auto isOpen = [this](const auto* bar) { return IsPluginBar(*bar) && bar->IsBarShown(); };
  return static_cast<std::size_t>(std::ranges::count_if(Frame->GetDockingManager().Bars(), isOpen));
}

CQORPDockingControlBar* WindowSession::BookTitled(const std::string& title) const {
  for (CQORPDockingControlBar* bar : Frame->GetDockingManager().Bars())
    if (IsPluginBar(*bar) && bar->IsBarShown() && bar->GetBarTitle().find(Wide(title)) != std::wstring::npos)
      return bar;
  return nullptr;
}

bool WindowSession::Focus(ScriptFocus where, const std::string& title) {
  CQORPDockingControlBar* bar = title.empty() ? BarFor(where) : BookTitled(title);
  if (bar == nullptr && where != ScriptFocus::None) return false;
  if (where == ScriptFocus::Book) LastBook = bar;
  if (bar != nullptr) bar->ShowControlBar(true);
  wxFrame* mini = bar == nullptr ? nullptr : bar->GetParentMiniFrame();
  (mini == nullptr ? Frame.get() : mini)->Raise();
  if (bar == nullptr)
    Frame->GetStatusBar()->SetFocus();
  else
    bar->SetFocus();
  return true;
}

bool WindowSession::HasFocus(ScriptFocus where) {
  return Frame->GetDockingManager().BarOf(wxWindow::FindFocus()) == BarFor(where);
}

bool WindowSession::Press(const KeyPress& key) {
  const int code = WxKeyCode(key);
  return code != 0 && wxUIActionSimulator().Char(code, WxHeldKeys(key));
}

bool WindowSession::RunMenu(const std::vector<std::string>& texts) {
  std::vector<std::wstring> wide;
  std::transform(texts.begin(), texts.end(), std::back_inserter(wide), Wide);
  return Frame->RunMenu(wide);
}

void WindowSession::SavePictureTo(const std::filesystem::path& file) {
  SavePicture(*Frame, file);
}

// A dialog stands on the stack of whoever shows it, and within the window below it: it ends first.
void WindowSession::CloseWindows() {
  constexpr int kUntilDialogIsGoneMs = 50;
  if (DialogDriver::EndTop())
    EndTimer.StartOnce(kUntilDialogIsGoneMs);
  else if (Frame)
    Frame->Close();
}
