// The private parts of docking manager and bars, over wxAUI. A bar that is shown docked or floating is a pane of the
// layout; a bar that is shown tabbed is the content of a notebook page; a hidden bar is neither.
#pragma once

#include <wx/aui/auibook.h>
#include <wx/aui/framemanager.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/bars/docking_control_bar.h"
#include "toolkit/bars/docking_manager.h"
#include "toolkit/model/bar_place.h"

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

class CQORPDockingControlBar::Impl {
 public:
  CQORPDockingManager* Manager = nullptr;
  std::wstring Name;
  std::wstring Title;
  std::uint32_t Id = 0;
  bool Dockable = true;
  bool Shown = false;
  bool Tabbed = false;
  CQORPMDIChildWnd* Page = nullptr;  // while tabbed and shown
  wxAuiPaneInfo LastPane;            // while not in the layout: its last or next pane
  // Where the bar floats, by the program or by the user's drag. wxGTK: a new mini frame reports other positions for a
  // while, so its position is kept here.
  wxRect FloatRect;
  // The place that was restored last: the layout renumbers rows and positions with every new bar.
  std::optional<BarPlace> Restored;
};

// An event handler, so that its bindings to the frame end with it.
class CQORPDockingManager::Impl : public wxEvtHandler {
 public:
  Impl(CQORPDockingManager& owner, wxFrame& frame);
  ~Impl() override;

  void Add(CQORPDockingControlBar& bar, const wxRect& rect);
  // Of a hidden bar: the places of a new one, which floats in that rectangle.
  void PlaceAnew(CQORPDockingControlBar& bar, const wxRect& rect);
  void Remove(CQORPDockingControlBar& bar);

  void Float(CQORPDockingControlBar& bar, const wxRect& rect);
  void Dock(CQORPDockingControlBar& bar, DockSide side);
  void DockSized(CQORPDockingControlBar& bar, DockSide side, int sizePx);
  void Tab(CQORPDockingControlBar& bar);
  void Show(CQORPDockingControlBar& bar, bool show);
  void Activate(CQORPDockingControlBar& bar);
  void EnableDocking(CQORPDockingControlBar& bar, bool enabled);
  void ShowTitle(CQORPDockingControlBar& bar);

  BarPlace PlaceOf(CQORPDockingControlBar& bar);
  void Restore(CQORPDockingControlBar& bar, const BarPlace& place);

  // The bar's pane in the layout, or LastPane.
  wxAuiPaneInfo& PaneOf(const CQORPDockingControlBar& bar);
  wxRect FloatRectOf(const CQORPDockingControlBar& bar);
  bool Holds(const CQORPDockingControlBar* bar) const;
  CQORPDockingControlBar* BarOf(wxWindow* window) const;

  CQORPDockingManager& Owner;
  wxFrame& Frame;
  DockingLayout Layout;
  wxAuiNotebook* Tabs = nullptr;
  std::vector<CQORPDockingControlBar*> Bars;
  // The size of the frame if it was too small for a restored bar at a side.
  std::optional<wxSize> Cramped;
  bool ShowsFrame = false;  // the frame appears with its bars

 private:
  void BindEvents();
  void OnKey(wxKeyEvent& event);
  void OnFrameShown(wxShowEvent& event);
  void OnContextMenu(wxContextMenuEvent& event);
  void OnDoubleClick(wxMouseEvent& event);
  void OnPaneClose(wxAuiManagerEvent& event);
  void OnTabClose(wxAuiNotebookEvent& event);
  void OnTabDropped(wxAuiNotebookEvent& event);
  void OnTabMenu(wxAuiNotebookEvent& event);
  CQORPDockingControlBar* BarOfTab(int tab) const;
  // Runs after the current event if the bar still exists.
  void Later(CQORPDockingControlBar* bar, void (Impl::*action)(CQORPDockingControlBar&));
  void ReopenMiniFrame(CQORPDockingControlBar& bar);
  void OnFrameSized(wxSizeEvent& event);
  void PlaceAsRestored(CQORPDockingControlBar& bar);
  bool HasStoredSize(const BarPlace& place) const;
  void RestoreDocks();
  void ShowMenu(CQORPDockingControlBar& bar);
  void PressClose(CQORPDockingControlBar& bar);
  void PressTabClose(CQORPDockingControlBar& bar);
  void FloatAsBefore(CQORPDockingControlBar& bar);
  void FloatAtMouse(CQORPDockingControlBar& bar);
  void OpenPane(CQORPDockingControlBar& bar);
  void ClosePane(CQORPDockingControlBar& bar);
  void OpenPage(CQORPDockingControlBar& bar);
  void ClosePage(CQORPDockingControlBar& bar);
  // Hides the bar, makes the change, and shows it again if it was shown, with the focus if it had it.
  template <typename Change>
  void WhileHidden(CQORPDockingControlBar& bar, Change change);
};
