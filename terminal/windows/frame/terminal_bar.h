// TerminalBar: a bar of the terminal's own: it holds one window, keeps its place from one start to the next and tells
// when the user has closed it.
#pragma once

#include <functional>
#include <vector>

#include "terminal/program/window_memory.h"
#include "toolkit/bars/docking_control_bar.h"
#include "toolkit/bars/docking_manager.h"

class TerminalBar : public CQORPDockingControlBar {
 public:
  // The section of the file of windows that keeps the place.
  explicit TerminalBar(const wchar_t* section) : Section(section) {}

  virtual void Save(WindowMemory& memory);
  // As it was, else where it stands first.
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

// ClosedBars: the bars that a plug-in has closed. A plug-in only hides a bar of its own, as the bar belongs to the
// terminal's frame; the terminal destroys it, since nothing shows it again.
class ClosedBars {
 public:
  // The address of a bar that may be in the midst of its close, or of anything else.
  void Note(const void* window) { Closed.push_back(window); }
  // Those that are bars of the manager and hidden. Not from within a call of the plug-in or an event of a bar.
  void Destroy(CQORPDockingManager& manager);

 private:
  std::vector<const void*> Closed;  // to compare: may be gone
};
