// ScriptRunner: runs the commands of a window script one after the other, with a pause for the windows between two.
#pragma once

#include <wx/timer.h>
#include <wx/weakref.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "terminal/common/errors.h"
#include "terminal/script/window_script.h"
#include "terminal/windows/drivers/user_drivers.h"
#include "toolkit/bars/docking_control_bar.h"

// False if that is impossible now: no such security, window or entry.
class ScriptTarget {
 public:
  virtual ~ScriptTarget() = default;
  virtual bool OpenBook() = 0;
  virtual bool Select(const std::string& securityId) = 0;
  // A title chooses a book; empty for the one that was opened or had the focus last.
  virtual bool Focus(ScriptFocus where, const std::string& title) = 0;
  // The window system gives the focus when it likes.
  virtual bool HasFocus(ScriptFocus where) = 0;
  virtual bool Press(const KeyPress& key) = 0;
  virtual bool RunMenu(const std::vector<std::wstring>& texts) = 0;
  // The book that was opened or had the focus last; null for none.
  virtual CQORPDockingControlBar* Book() = 0;
  virtual std::size_t OpenBooks() = 0;
  virtual bool HasPlayed() = 0;
  // The download has ended.
  virtual bool IsLive() = 0;
  // Throws TerminalError.
  virtual void SavePictureTo(const std::filesystem::path& file) = 0;
  virtual void CloseWindows() = 0;
};

// A command that fails is reported with its line; the next ones run. Commands that look at windows are tried for about
// a second before they fail. A command that opens a modal dialog does not block the next ones, which can drive the
// dialog.
class ScriptRunner {
 public:
  // Throws TerminalError as ReadWindowScript does. Relative files are in the current folder of this moment; their
  // folders are made.
  ScriptRunner(const std::filesystem::path& file, ScriptTarget& target, BadLineReport& badLines);

  void Start() { Step(); }
  void Stop() { StepTimer.Stop(); }
  bool HasEnded() const noexcept { return Next >= Commands.size() && !Typist.IsTyping(); }

 private:
  // Why a command failed; empty on success.
  using Refusal = std::string;

  void Step();
  void TypeOn();
  bool IsAwaited(const ScriptCommand& command);
  bool IsActivationAwaited();
  bool IsBookLost(const ScriptCommand& command);
  void NoteFocus(const ScriptCommand& command);
  bool IsTriedAgain(const ScriptCommand& command);
  void Report(const ScriptCommand& command, const Refusal& refusal);
  Refusal Do(const ScriptCommand& command);
  Refusal InBook(const std::function<Refusal(CQORPGridCtrl& grid)>& act);
  Refusal CloseBook();
  Refusal PlaceBook(ScriptPlace place);
  Refusal Filter(const ScriptCommand& command);
  Refusal Find(const std::wstring& text);
  Refusal SavePicture(const ScriptCommand& command);
  Refusal EndAll();
  std::filesystem::path FileOf(const std::string& text) const;

  std::filesystem::path File;
  std::filesystem::path Folder;
  ScriptTarget& Target;
  BadLineReport& BadLines;
  std::vector<ScriptCommand> Commands;
  std::size_t Next = 0;
  bool Settled = false;                         // the windows had time to be painted for the picture that comes next
  int FocusWaits = 0;                           // how often the focus that was asked for last was not there yet
  bool IsManaged = false;                       // the window system has made a frame of ours active
  int ActivationWaits = 0;                      // how often the frame with the focus was not active yet
  int Tries = 0;                                // of the command that comes next
  wxWeakRef<CQORPDockingControlBar> MeantBook;  // that the script has named, until it moves the focus on
  std::string MeantTitle;
  int Refocuses = 0;
  DialogDriver Dialogs;
  FieldTypist Typist;
  wxTimer StepTimer;
};
