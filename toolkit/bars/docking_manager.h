// CQORPDockingManager: the layout of the bars of a frame: docked at a side, floating in a mini frame, or as a tab in
// the middle. One for each CQORPFrame.
#pragma once

#include <wx/aui/framemanager.h>
#include <wx/frame.h>

#include <functional>
#include <memory>
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

// DockingLayout: a wxAUI manager with readable colours in every theme, mini frames that may be small, and a search for
// the caption at a point.
class DockingLayout : public wxAuiManager {
 public:
  explicit DockingLayout(wxFrame& frame);
  // The window of the pane whose caption is at that point of the frame; null for none.
  wxWindow* CaptionAt(const wxPoint& point);
  // The share of the frame that a new dock may take.
  static constexpr double kUsualShare = 0.6;
  static constexpr double kLargestShare = 0.9;
  void LimitDocks(double share) { SetDockSizeConstraint(share, share); }
  // Moves the mini frame of the pane to the rectangle of the screen.
  static void PlaceMiniFrame(const wxAuiPaneInfo& pane, const wxRect& rect);

  // The user has dragged the mini frame with that window to the place.
  std::function<void(wxWindow*, const wxPoint&)> OnDragged;

  wxAuiFloatingFrame* CreateFloatingFrame(wxWindow* parent, const wxAuiPaneInfo& pane) override;

 private:
  void TakeThemeColours();
  void OnThemeChanged(wxSysColourChangedEvent& event);
};
