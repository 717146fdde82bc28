// CQORPDockingManager: where the bars of a frame stand: docked at a side, floating in a mini frame, or as a tab in the
// middle. One for each frame of the toolkit. Not the bars: docking_control_bar.h. Used on the calling thread of the
// windows only.
#pragma once

#include <wx/frame.h>

#include <memory>
#include <vector>

#include "toolkit/toolkit_export.h"

class CQORPDockingControlBar;

class TOOLKIT_EXPORT CQORPDockingManager {
 public:
  // Takes the frame's client area: docked bars around tabs. What a terminal shows in the middle is a bar as a tab.
  // Destroyed before the frame; all bars go with it.
  explicit CQORPDockingManager(wxFrame& frame);
  ~CQORPDockingManager();
  CQORPDockingManager(const CQORPDockingManager&) = delete;
  CQORPDockingManager& operator=(const CQORPDockingManager&) = delete;

  // The manager of the process's main window where that is a frame of the toolkit. In any other process one with a
  // frame of its own, made at the first call: it shows itself with each bar that is shown, and closing it presses the
  // close button of every bar. Its title is Frame().SetTitle(). Null where there is no display.
  static CQORPDockingManager* ForProcess();

  wxFrame& Frame() const noexcept;
  // Every bar, shown or not, in the order in which they were made.
  const std::vector<CQORPDockingControlBar*>& Bars() const noexcept;
  // The bar that holds the window, or is it, or that the mini frame or page was made for; null for none.
  CQORPDockingControlBar* BarOf(wxWindow* window) const;
  // Destroys the bar at once; the same as bar->Destroy(). Not from within an event of the bar.
  void DestroyBar(CQORPDockingControlBar* bar);

  // A key before any control sees it: goes to the bar with the focus. True when it was swallowed.
  bool PreTranslateMessage(wxKeyEvent& event);

 private:
  friend class CQORPDockingControlBar;
  friend class CQORPFrame;
  class Impl;
  std::unique_ptr<Impl> Parts;
};
