// CQORPDockingManager: the layout of the bars of a frame: docked at a side, floating in a mini frame, or as a tab in
// the middle. CQORPFrame: the main frame of a terminal, with a docking manager.
#pragma once

#include <wx/frame.h>

#include <memory>
#include <string>
#include <vector>

#include "toolkit/system/toolkit_export.h"

class CQORPDockingControlBar;

class TOOLKIT_EXPORT CQORPDockingManager {
 public:
  // Fills the client area of the frame: docked bars around tabs. A terminal shows its own content as a tabbed bar.
  // Destroy the manager before the frame; it destroys all bars.
  explicit CQORPDockingManager(wxFrame& frame);
  ~CQORPDockingManager();
  CQORPDockingManager(const CQORPDockingManager&) = delete;
  CQORPDockingManager& operator=(const CQORPDockingManager&) = delete;

  // The manager of the process's main window if that is a CQORPFrame. In any other process, one with its own frame,
  // made at the first call: it appears with each bar that is shown, and closing it presses the close button of every
  // bar. Set its title by Frame().SetTitle(). Null without a display.
  static CQORPDockingManager* ForProcess();

  wxFrame& Frame() const noexcept;
  // All bars, shown or not, in the order in which they were made.
  const std::vector<CQORPDockingControlBar*>& Bars() const noexcept;
  // The bar that is the window or contains it, or whose mini frame or page it is; null for none.
  CQORPDockingControlBar* BarOf(wxWindow* window) const;
  // Destroys the bar at once, as bar->Destroy() does. Do not call it inside an event of the bar.
  void DestroyBar(CQORPDockingControlBar* bar);

  // Offers a key to the bar with the focus before any control gets it. True if the bar consumed it.
  bool PreTranslateMessage(wxKeyEvent& event);

 private:
  friend class CQORPDockingControlBar;
  friend class CQORPFrame;
  class Impl;
  std::unique_ptr<Impl> Parts;
};

// The manager has the client area. A key goes to the bar with the focus before any control gets it.
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
