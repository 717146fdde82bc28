// DockingLayout: the wxAUI manager as the toolkit wants it: colours that can be read with every theme, mini frames that
// may be made small, and the pane whose caption lies at a point. Used on the calling thread of the windows only.
#pragma once

#include <wx/aui/framemanager.h>

#include <functional>

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
