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
  // Brings mini frame and pane to the rectangle of the screen.
  static void PlaceMiniFrame(const wxAuiPaneInfo& pane, const wxRect& rect);

  // The user has dragged the mini frame of that pane's window to the place.
  std::function<void(wxWindow*, const wxPoint&)> OnDragged;

  wxAuiFloatingFrame* CreateFloatingFrame(wxWindow* parent, const wxAuiPaneInfo& pane) override;

 private:
  void TakeThemeColours();
  void OnThemeChanged(wxSysColourChangedEvent& event);
};
