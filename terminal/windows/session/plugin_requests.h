// PluginRequests: answers what the plug-in asks of the terminal's windows.
#pragma once

#include <functional>

#include "terminal/windows/session/day_control.h"
#include "terminal/windows/session/session_windows.h"

class PluginRequests : public TerminalWindows {
 public:
  // changed is called when the focus has moved or a pane was shown, which status bar and menu then show.
  PluginRequests(PluginConnection& connection, SessionWindows& windows, BookBars& books, std::function<void()> changed)
      : Connection(connection), Windows(windows), Books(books), Changed(std::move(changed)) {}

  // Of the market watch its own row; a book is asked itself.
  void TellSelection(std::uint64_t window, MessageFunction answer) override;
  void FocusMoved(const void* window, bool closed) override;
  void ShowProperties(const PropertyRequest& request) override;
  void PropertiesFilled() override;

 private:
  PluginConnection& Connection;
  SessionWindows& Windows;
  BookBars& Books;
  std::function<void()> Changed;
};
