#include "terminal/windows/drivers/script_runner.h"

#include <wx/string.h>
#include <wx/toplevel.h>

#include <algorithm>
#include <system_error>
#include <utility>

#include "terminal/windows/drivers/screen_picture.h"
#include "terminal/windows/drivers/user_drivers.h"
#include "terminal/windows/frame/window_tools.h"

namespace {

constexpr int kStepMs = 60;
constexpr int kPaintedMs = 400;  // more than a beat, which repaints
constexpr int kFocusWaits = 20;
constexpr int kTries = 20;

constexpr const char* kUsageFile = "out/usage.csv";
constexpr const char* kNoBook = "there is no book";

std::vector<std::wstring> WideEach(const std::vector<std::string>& texts) {
  std::vector<std::wstring> wide;
  for (const std::string& text : texts) wide.push_back(Wide(text));
  return wide;
}

bool IsAboutBook(ScriptAction action) {
  using enum ScriptAction;
  constexpr ScriptAction kAboutBook[] = {BookMenu, Header, Rows, Filter, ExpectRows, Place, CloseBook};
  return std::ranges::count(kAboutBook, action) != 0;
}

// Intentional: the focus may be elsewhere after these.
bool MovesFocus(ScriptAction action) {
  using enum ScriptAction;
  constexpr ScriptAction kMoves[] = {OpenBook, CloseBook, Focus, Key, Menu};
  return std::ranges::count(kMoves, action) != 0;
}

std::string Unless(bool done) {
  return done ? "" : "the command cannot be done now";
}

}  // namespace

ScriptRunner::ScriptRunner(const std::filesystem::path& file, ScriptTarget& target, BadLineReport& badLines)
    : File(file),
      Folder(std::filesystem::current_path()),
      Target(target),
      BadLines(badLines),
      Commands(ReadWindowScript(file)) {
  StepTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Step(); });
}

void ScriptRunner::Step() {
  if (Typist.IsTyping()) return TypeOn();
  if (HasEnded()) return;
  const ScriptCommand& command = Commands[Next];
  if (command.Action == ScriptAction::Screenshot && !std::exchange(Settled, true)) {
    StepTimer.StartOnce(kPaintedMs);
    return;
  }
  Settled = false;
  if (IsAwaited(command) || IsActivationAwaited() || IsBookLost(command)) {
    StepTimer.StartOnce(kStepMs);
    return;
  }
  ActivationWaits = 0;
  const std::size_t current = Next++;
  // Before the command, which may run the loop of a dialog.
  StepTimer.StartOnce(kStepMs + static_cast<int>(command.Time.count()));
  const Refusal refusal = Do(command);
  NoteFocus(command);
  if (!refusal.empty() && IsTriedAgain(command))
    Next = current;
  else
    Report(command, refusal);
}

// The last command is the one that types.
void ScriptRunner::TypeOn() {
  StepTimer.StartOnce(kStepMs);
  Report(Commands[Next - 1], Typist.TypeOn());
}

void ScriptRunner::Report(const ScriptCommand& command, const Refusal& refusal) {
  Tries = 0;
  if (!refusal.empty()) BadLines.AtCommand(File, command.Line, refusal);
}

// The window system activates a frame some time after it was shown or got the focus, and then moves the focus. Commands
// wait for that.
bool ScriptRunner::IsActivationAwaited() {
  auto* frame = dynamic_cast<wxTopLevelWindow*>(wxGetTopLevelParent(wxWindow::FindFocus()));
  if (frame == nullptr) return false;
  if (!frame->IsActive()) return IsManaged && ++ActivationWaits < kFocusWaits;
  IsManaged = true;
  return false;
}

// Commands that have no effect if they fail.
bool ScriptRunner::IsTriedAgain(const ScriptCommand& command) {
  using enum ScriptAction;
  constexpr ScriptAction kPatient[] = {Answer, Choose, Check, ExpectRows, ExpectText};
  return std::ranges::count(kPatient, command.Action) != 0 && ++Tries < kTries;
}

// Gives the focus back to the book that the script named if another window took it late.
bool ScriptRunner::IsBookLost(const ScriptCommand& command) {
  if (!MeantBook || !IsAboutBook(command.Action) || Target.Book() == MeantBook.get()) return false;
  return ++Refocuses < kFocusWaits && Target.Focus(ScriptFocus::Book, MeantTitle);
}

void ScriptRunner::NoteFocus(const ScriptCommand& command) {
  if (!MovesFocus(command.Action)) return;
  const bool named =
      command.Action == ScriptAction::Focus && command.Focus == ScriptFocus::Book && !command.Text.empty();
  MeantBook = named ? Target.Book() : nullptr;
  MeantTitle = command.Text;
  Refocuses = 0;
}

// Waits for the end of the day or its download, and for the focus of the command before.
bool ScriptRunner::IsAwaited(const ScriptCommand& command) {
  const ScriptCommand* before = Next == 0 ? nullptr : &Commands[Next - 1];
  if (before != nullptr && before->Action == ScriptAction::Focus && FocusWaits < kFocusWaits &&
      !Target.HasFocus(before->Focus)) {
    ++FocusWaits;
    return true;
  }
  FocusWaits = 0;
  return (command.Action == ScriptAction::WaitPlayed && !Target.HasPlayed()) ||
         (command.Action == ScriptAction::WaitLive && !Target.IsLive());
}

ScriptRunner::Refusal ScriptRunner::Do(const ScriptCommand& command) {
  const std::wstring text = Wide(command.Text);
  switch (command.Action) {
    case ScriptAction::OpenBook:
      return Unless(Target.OpenBook());
    case ScriptAction::CloseBook:
      return CloseBook();
    case ScriptAction::Select:
      return Unless(Target.Select(command.Text));
    case ScriptAction::Focus:
      return Unless(Target.Focus(command.Focus, command.Text));
    case ScriptAction::Key:
      return Unless(Target.Press(command.Key));
    case ScriptAction::Menu:
      return Unless(Target.RunMenu(WideEach(command.Menu)));
    case ScriptAction::WaitPlayed:
    case ScriptAction::WaitLive:
    case ScriptAction::WaitTime:
      return {};
    case ScriptAction::Screenshot:
      return SavePicture(command);
    case ScriptAction::Filter:
      return Filter(command);
    case ScriptAction::Find:
      return Find(text);
    case ScriptAction::Header:
      return InBook([&](auto& grid) { return BookDriver::ClickHeader(grid, Wide(command.Column), command.Ctrl); });
    case ScriptAction::Rows:
      return InBook([&](auto& grid) { return BookDriver::SelectRows(grid, command.FirstRow, command.LastRow); });
    case ScriptAction::BookMenu:
      return InBook([&](auto& grid) { return BookDriver::RunMenu(grid, WideEach(command.Menu)); });
    case ScriptAction::Place:
      return PlaceBook(command.Place);
    case ScriptAction::SaveAs:
      return Dialogs.SaveNextAs(FileOf(command.Text));
    case ScriptAction::CancelSave:
      return Dialogs.CancelNextSave();
    case ScriptAction::Answer:
      return Dialogs.PressButton(text);
    case ScriptAction::Choose:
      return Dialogs.ChooseItem(text);
    case ScriptAction::Check:
      return Dialogs.CheckItem(text);
    case ScriptAction::ExpectRows:
      return InBook([&](auto& grid) { return BookDriver::ExpectRows(grid, command.Count); });
    case ScriptAction::ExpectText:
      return Dialogs.ExpectText(Target.Book(), text);
    case ScriptAction::Usage:
      return AppendUsage(FileOf(kUsageFile), command.Text, Target.OpenBooks());
    case ScriptAction::Exit:
      return EndAll();
  }
  return {};
}

ScriptRunner::Refusal ScriptRunner::InBook(const std::function<Refusal(CQORPGridCtrl& grid)>& act) {
  CQORPGridCtrl* grid = BookDriver::FindGrid(Target.Book());
  return grid == nullptr ? kNoBook : act(*grid);
}

// Does what the button in its caption or tab does.
ScriptRunner::Refusal ScriptRunner::CloseBook() {
  CQORPDockingControlBar* book = Target.Book();
  if (book == nullptr) return kNoBook;
  if (DialogDriver::IsUp()) return "a dialog is up";
  if (!book->IsMDITabbed())
    book->OnPressCloseButton();
  else if (book->OnTabCloseButton() != 0)
    book->ShowControlBar(false);
  return {};
}

ScriptRunner::Refusal ScriptRunner::PlaceBook(ScriptPlace place) {
  constexpr std::pair<ScriptPlace, DockSide> kSides[] = {{ScriptPlace::Left, DockSide::Left},
                                                         {ScriptPlace::Right, DockSide::Right},
                                                         {ScriptPlace::Top, DockSide::Top},
                                                         {ScriptPlace::Bottom, DockSide::Bottom}};
  CQORPDockingControlBar* book = Target.Book();
  if (book == nullptr) return kNoBook;
  if (place == ScriptPlace::Tab) book->TabControlBar();
  if (place == ScriptPlace::Floating) book->FloatControlBar(book->GetFloatRect());
  for (const auto& [named, side] : kSides)
    if (place == named) book->DockControlBar(side);
  return {};
}

// The letters follow in the next steps.
ScriptRunner::Refusal ScriptRunner::Filter(const ScriptCommand& command) {
  return InBook([&](CQORPGridCtrl& grid) {
    return Typist.BeginFilter(grid, BookDriver::FindColumn(grid, Wide(command.Column)), Wide(command.Text));
  });
}

ScriptRunner::Refusal ScriptRunner::Find(const std::wstring& text) {
  if (CQORPGridCtrl* grid = BookDriver::GridWithFocus()) return Typist.BeginFind(*grid, text);
  return InBook([&](CQORPGridCtrl& grid) { return Typist.BeginFind(grid, text); });
}

ScriptRunner::Refusal ScriptRunner::SavePicture(const ScriptCommand& command) {
  try {
    Target.SavePictureTo(FileOf(command.Text));
  } catch (const std::exception& failure) {
    return failure.what();
  }
  return {};
}

ScriptRunner::Refusal ScriptRunner::EndAll() {
  Next = Commands.size();
  Target.CloseWindows();
  return Dialogs.ExpectSaved();
}

// If the folder cannot be made, writing the file reports it.
std::filesystem::path ScriptRunner::FileOf(const std::string& text) const {
  const auto file = Folder / std::filesystem::path(std::u8string(text.begin(), text.end()));
  std::error_code ignored;
  std::filesystem::create_directories(file.parent_path(), ignored);
  return file;
}
