// CScriptRunner: does the commands of a window script one after the other, with a moment between two so that windows
// follow. Not their text (terminal/window_script.h) nor what they act on: that is ScriptTarget. The main thread only.
#pragma once

#include <wx/timer.h>

#include <filesystem>
#include <vector>

#include "terminal/bad_lines.h"
#include "terminal/window_script.h"

// False stands for what cannot be done now: there is no such security, window or entry.
class ScriptTarget {
 public:
  virtual ~ScriptTarget() = default;
  virtual bool OpenBook() = 0;
  virtual bool Select(const std::string& securityId) = 0;
  virtual bool Focus(ScriptFocus where) = 0;
  // The window system gives the focus when it likes.
  virtual bool HasFocus(ScriptFocus where) = 0;
  virtual bool Press(const KeyPress& key) = 0;
  virtual bool RunMenu(const std::vector<std::string>& texts) = 0;
  virtual bool HasPlayed() = 0;
  // Throws TerminalError.
  virtual void SavePictureTo(const std::filesystem::path& file) = 0;
  virtual void CloseWindows() = 0;
};

// Promises: a command that fails is reported with its line, and the next ones are done. A command that opens a modal
// dialog does not hold up those behind it, which can drive the dialog.
class CScriptRunner {
 public:
  // Throws TerminalError as ReadWindowScript does. Files of pictures are taken from the folder that is current now.
  CScriptRunner(const std::filesystem::path& file, ScriptTarget& target, CBadLines& badLines);

  void Start() { Step(); }
  void Stop() { StepTimer.Stop(); }
  bool HasEnded() const noexcept { return Next >= Commands.size(); }

 private:
  void Step();
  bool IsAwaited(const ScriptCommand& command);
  bool Do(const ScriptCommand& command);

  std::filesystem::path File;
  std::filesystem::path Folder;
  ScriptTarget& Target;
  CBadLines& BadLines;
  std::vector<ScriptCommand> Commands;
  std::size_t Next = 0;
  bool Settled = false;  // the windows had time to be painted for the picture that comes next
  int FocusWaits = 0;    // how often the focus that was asked for last was not there yet
  wxTimer StepTimer;
};
