// TerminalBar: base of the terminal's own bars. It holds one window, stores its place and tells when the user closes
// it.
#pragma once

#include <functional>

#include "terminal/program/window_memory.h"
#include "toolkit/bars/docking_control_bar.h"
#include "toolkit/bars/docking_manager.h"

class TerminalBar : public CQORPDockingControlBar {
 public:
  // The section of the file of windows that keeps the place.
  explicit TerminalBar(const wchar_t* section) : Section(section) {}

  virtual void Save(WindowMemory& memory);
  // As stored, else at its first place.
  virtual void Restore(WindowMemory& memory);

  void OnPressCloseButton() override;
  int OnTabCloseButton() override;

  // Called when the user has closed the bar.
  std::function<void()> Closed;

 protected:
  // Fills the bar with a child window.
  void Hold(wxWindow* content);
  virtual void PlaceFirst() = 0;

 private:
  const wchar_t* Section;
};
