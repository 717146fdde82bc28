// CQORPFrame: the main frame of a terminal, with a docking manager over its client area. A key goes to the bar with the
// focus before any control gets it.
#pragma once

#include <wx/frame.h>

#include <memory>
#include <string>

#include "toolkit/bars/docking_manager.h"
#include "toolkit/system/toolkit_export.h"

class TOOLKIT_EXPORT CQORPFrame : public wxFrame {
 public:
  CQORPFrame(wxWindow* parent, int id, const std::wstring& title, const wxRect& rect);
  // Destroys the bars first, while the frame is still whole.
  ~CQORPFrame() override;
  CQORPDockingManager& GetDockingManager() noexcept { return *Docking; }

 private:
  std::unique_ptr<CQORPDockingManager> Docking;
};

// BarsFrame: the frame for the bars of a process that has no CQORPFrame. Closing it presses the close button of every
// bar, and hides it if no bar is left. It does not keep a process alive.
class BarsFrame : public CQORPFrame {
 public:
  BarsFrame();
  bool ShouldPreventAppExit() const override { return false; }
  // The frame made so far; null for none.
  static BarsFrame* Existing();

 private:
  void OnClose(wxCloseEvent& event);
};
