// CQORPDockingManager: where the bars of a frame stand: docked at a side, floating in a mini frame, or as a tab in the
// middle. One for each frame of the toolkit.
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

// DockingLayout: the wxAUI manager as the toolkit wants it: colours that can be read with every theme, mini frames that
// may be made small, and the pane whose caption lies at a point.
class DockingLayout : public wxAuiManager {
 public:
  explicit DockingLayout(wxFrame& frame);
  // The window of the pane with its caption at that point of the frame; null for none.
  wxWindow* CaptionAt(const wxPoint& point);
  // What of the frame's size a dock that comes to be may take: the usual share, or most of it.
  static constexpr double kUsualShare = 0.6;
  static constexpr double kLargestShare = 0.9;
  void LimitDocks(double share) { SetDockSizeConstraint(share, share); }
  // Brings mini frame and pane to the rectangle of the screen.
  static void PlaceMiniFrame(const wxAuiPaneInfo& pane, const wxRect& rect);

  // The user has dragged the mini frame of that pane's window to the place.
  std::function<void(wxWindow*, const wxPoint&)> OnDragged;

  wxAuiFloatingFrame* CreateFloatingFrame(wxWindow* parent, const wxAuiPaneInfo& pane) override;

 private:
  void TakeThemeColours();
  void OnThemeChanged(wxSysColourChangedEvent& event);
};
