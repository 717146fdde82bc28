// The inside of docking manager and bars: what either keeps, over wxAUI. A bar that is docked or floats is a pane of
// the layout, shown or hidden; a tabbed bar has left the layout and is, while shown, the content of a notebook page.
// Seen by the toolkit's own sources only.
#pragma once

#include <wx/aui/auibook.h>
#include <wx/aui/framemanager.h>

#include <optional>
#include <string>
#include <vector>

#include "toolkit/bars/docking_control_bar.h"
#include "toolkit/bars/docking_manager.h"
#include "toolkit/model/bar_place.h"

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
  wxAuiPaneInfo LastPane;            // while not in the layout: the pane that it was or is to be
  // Where the bar floats: as asked for or as the user dragged it. wxGTK: a mini frame that has just appeared tells
  // other positions for a while, so that it cannot be asked.
  wxRect FloatRect;
  // The place last brought back: the layout numbers rows and positions anew with every bar that comes in.
  std::optional<BarPlace> Restored;
};

// An event handler, so that what it binds to the frame goes with it.
class CQORPDockingManager::Impl : public wxEvtHandler {
 public:
  Impl(CQORPDockingManager& owner, wxFrame& frame);
  ~Impl() override;

  void Add(CQORPDockingControlBar& bar, const wxRect& rect);
  void Remove(CQORPDockingControlBar& bar);

  void Float(CQORPDockingControlBar& bar, const wxRect& rect);
  void Dock(CQORPDockingControlBar& bar, DockSide side);
  void Tab(CQORPDockingControlBar& bar);
  void Show(CQORPDockingControlBar& bar, bool show);
  void Activate(CQORPDockingControlBar& bar);
  void EnableDocking(CQORPDockingControlBar& bar, bool enabled);
  void ShowTitle(CQORPDockingControlBar& bar);

  BarPlace PlaceOf(CQORPDockingControlBar& bar);
  void Restore(CQORPDockingControlBar& bar, const BarPlace& place);

  // The bar's pane: that of the layout, or the one kept while it is not there.
  wxAuiPaneInfo& PaneOf(const CQORPDockingControlBar& bar);
  wxRect FloatRectOf(const CQORPDockingControlBar& bar);
  bool Holds(const CQORPDockingControlBar* bar) const;
  CQORPDockingControlBar* BarOf(wxWindow* window) const;

  CQORPDockingManager& Owner;
  wxFrame& Frame;
  DockingLayout Layout;
  wxAuiNotebook* Tabs = nullptr;
  std::vector<CQORPDockingControlBar*> Bars;
  // The frame's size when it was too small for a bar that was brought back to a side.
  std::optional<wxSize> Cramped;
  bool ShowsFrame = false;  // the frame is there for the bars alone

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
  // Runs once the current event is done, if the bar still lives then.
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
  // Takes the bar off the screen for a change of place, and puts it back as it was, with the focus if it had it.
  template <typename Change>
  void WhileHidden(CQORPDockingControlBar& bar, Change change);
};
