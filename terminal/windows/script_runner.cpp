#include "terminal/windows/script_runner.h"

#include <utility>

namespace {
constexpr int kStepMs = 60;
constexpr int kPaintedMs = 400;  // more than a beat, which repaints
constexpr int kFocusWaits = 20;
}  // namespace

CScriptRunner::CScriptRunner(const std::filesystem::path& file, ScriptTarget& target, CBadLines& badLines)
    : File(file),
      Folder(std::filesystem::current_path()),
      Target(target),
      BadLines(badLines),
      Commands(ReadWindowScript(file)) {
  StepTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Step(); });
}

void CScriptRunner::Step() {
  if (HasEnded()) return;
  const ScriptCommand& command = Commands[Next];
  if (command.Action == ScriptAction::Screenshot && !std::exchange(Settled, true)) {
    StepTimer.StartOnce(kPaintedMs);
    return;
  }
  Settled = false;
  if (IsAwaited(command)) {
    StepTimer.StartOnce(kStepMs);
    return;
  }
  ++Next;
  // Ahead of the command, which may end in the loop of a dialog.
  StepTimer.StartOnce(kStepMs + static_cast<int>(command.Time.count()));
  if (!Do(command)) BadLines.AtLine(File, command.Line, "the command cannot be done now");
}

// Waits for the end of the day, and for the focus that the command before has asked for.
bool CScriptRunner::IsAwaited(const ScriptCommand& command) {
  const ScriptCommand* before = Next == 0 ? nullptr : &Commands[Next - 1];
  if (before != nullptr && before->Action == ScriptAction::Focus && FocusWaits < kFocusWaits &&
      !Target.HasFocus(before->Focus)) {
    ++FocusWaits;
    return true;
  }
  FocusWaits = 0;
  return command.Action == ScriptAction::WaitPlayed && !Target.HasPlayed();
}

bool CScriptRunner::Do(const ScriptCommand& command) {
  switch (command.Action) {
    case ScriptAction::OpenBook:
      return Target.OpenBook();
    case ScriptAction::Select:
      return Target.Select(command.Text);
    case ScriptAction::Focus:
      return Target.Focus(command.Focus);
    case ScriptAction::Key:
      return Target.Press(command.Key);
    case ScriptAction::Menu:
      return Target.RunMenu(command.Menu);
    case ScriptAction::WaitPlayed:
    case ScriptAction::WaitTime:
      return true;
    case ScriptAction::Screenshot:
      try {
        Target.SavePictureTo(Folder / std::filesystem::path(std::u8string(command.Text.begin(), command.Text.end())));
      } catch (const std::exception& failure) {
        BadLines.AtLine(File, command.Line, failure.what());
      }
      return true;
    case ScriptAction::Exit:
      Next = Commands.size();
      Target.CloseWindows();
      return true;
  }
  return false;
}
