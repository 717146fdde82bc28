// How bars get from one place to another; the other half of the manager is docking_manager.cpp.
#include <wx/display.h>
#include <wx/sizer.h>

#include <algorithm>
#include <utility>

#include "toolkit/bar_menu.h"
#include "toolkit/docking_parts.h"

namespace {

const wxRect kUsualFloatRect{100, 100, 530, 300};
const wxSize kSmallestBar{60, 40};

struct SideRow {
  DockSide Side;
  int Direction;
};
constexpr SideRow kSides[] = {
    {DockSide::Left, wxAUI_DOCK_LEFT},
    {DockSide::Right, wxAUI_DOCK_RIGHT},
    {DockSide::Top, wxAUI_DOCK_TOP},
    {DockSide::Bottom, wxAUI_DOCK_BOTTOM},
};

int DirectionOf(DockSide side) {
  for (const SideRow& row : kSides)
    if (row.Side == side) return row.Direction;
  return wxAUI_DOCK_LEFT;
}

DockSide SideOf(int direction) {
  for (const SideRow& row : kSides)
    if (row.Direction == direction) return row.Side;
  return DockSide::Left;
}

// A rectangle that can be seen and taken hold of: one with an area, on a display that is there.
wxRect UsableRect(const wxRect& rect) {
  if (rect.width <= 0 || rect.height <= 0) return kUsualFloatRect;
  for (unsigned i = 0; i < wxDisplay::GetCount(); ++i)
    if (wxDisplay(i).GetClientArea().Intersects(rect)) return rect;
  return {kUsualFloatRect.GetPosition(), rect.GetSize()};
}

}  // namespace

void CQORPDockingManager::Impl::Add(CQORPDockingControlBar& bar, const wxRect& rect) {
  bar.Parts->FloatRect = UsableRect(rect);
  bar.Parts->LastPane.Float().BestSize(bar.Parts->FloatRect.GetSize()).MinSize(kSmallestBar);
  Bars.push_back(&bar);
}

void CQORPDockingManager::Impl::Remove(CQORPDockingControlBar& bar) {
  Show(bar, false);
  bar.Parts->Manager = nullptr;
  std::erase(Bars, &bar);
}

wxAuiPaneInfo& CQORPDockingManager::Impl::PaneOf(const CQORPDockingControlBar& bar) {
  const bool inLayout = bar.Parts->Shown && !bar.Parts->Tabbed;
  return inLayout ? Layout.GetPane(const_cast<CQORPDockingControlBar*>(&bar)) : bar.Parts->LastPane;
}

wxRect CQORPDockingManager::Impl::FloatRectOf(const CQORPDockingControlBar& bar) {
  const wxFrame* mini = bar.GetParentMiniFrame();
  return {bar.Parts->FloatRect.GetPosition(), mini == nullptr ? bar.Parts->FloatRect.GetSize() : mini->GetSize()};
}

template <typename Change>
void CQORPDockingManager::Impl::WhileHidden(CQORPDockingControlBar& bar, Change change) {
  const bool shown = bar.Parts->Shown;
  const bool focused = BarOf(wxWindow::FindFocus()) == &bar;
  Show(bar, false);
  change();
  Show(bar, shown);
  if (shown && focused) Activate(bar);
  bar.OnBarMoved();
}

void CQORPDockingManager::Impl::Float(CQORPDockingControlBar& bar, const wxRect& rect) {
  const wxRect usable = UsableRect(rect);
  if (bar.IsFloating()) {
    bar.Parts->FloatRect = usable;
    return DockingLayout::PlaceMiniFrame(PaneOf(bar), usable);
  }
  WhileHidden(bar, [&] {
    bar.Parts->Tabbed = false;
    bar.Parts->LastPane.Float();
    bar.Parts->FloatRect = usable;
  });
}

void CQORPDockingManager::Impl::FloatAsBefore(CQORPDockingControlBar& bar) {
  Float(bar, bar.GetFloatRect());
}

void CQORPDockingManager::Impl::FloatAtMouse(CQORPDockingControlBar& bar) {
  Float(bar, {wxGetMousePosition(), bar.GetFloatRect().GetSize()});
}

// Behind the bars that stand at that side already.
void CQORPDockingManager::Impl::Dock(CQORPDockingControlBar& bar, DockSide side) {
  const auto standsThere = [&](CQORPDockingControlBar* other) {
    return other != &bar && other->IsDocked() && PaneOf(*other).dock_direction == DirectionOf(side);
  };
  WhileHidden(bar, [&] {
    bar.Parts->Tabbed = false;
    bar.Parts->LastPane.Dock().Direction(DirectionOf(side)).Layer(0).Row(0);
    bar.Parts->LastPane.Position(static_cast<int>(std::count_if(Bars.begin(), Bars.end(), standsThere)));
  });
}

void CQORPDockingManager::Impl::Tab(CQORPDockingControlBar& bar) {
  if (!bar.Parts->Tabbed) WhileHidden(bar, [&] { bar.Parts->Tabbed = true; });
}

void CQORPDockingManager::Impl::Show(CQORPDockingControlBar& bar, bool show) {
  if (show && ShowsFrame && !Frame.IsShown()) Frame.Show();
  if (show == bar.Parts->Shown) return;
  if (bar.Parts->Tabbed) {
    show ? OpenPage(bar) : ClosePage(bar);
  } else {
    show ? OpenPane(bar) : ClosePane(bar);
  }
  bar.Parts->Shown = show;
}

void CQORPDockingManager::Impl::OpenPane(CQORPDockingControlBar& bar) {
  const wxRect& rect = bar.Parts->FloatRect;
  bar.Parts->LastPane.Show().Caption(bar.GetBarTitle());
  bar.Parts->LastPane.FloatingPosition(rect.GetPosition()).FloatingSize(rect.GetSize());
  Layout.AddPane(&bar, bar.Parts->LastPane);
  Layout.Update();
  DockingLayout::PlaceMiniFrame(Layout.GetPane(&bar), rect);
}

// Its mini frame goes: wxGTK shows one that is hidden soon after it was shown again of itself.
void CQORPDockingManager::Impl::ClosePane(CQORPDockingControlBar& bar) {
  bar.Parts->FloatRect = FloatRectOf(bar);
  wxAuiPaneInfo& pane = bar.Parts->LastPane = Layout.GetPane(&bar);
  if (pane.IsDocked()) pane.BestSize(bar.GetSize());
  pane.window = nullptr;
  pane.frame = nullptr;
  Layout.DetachPane(&bar);
  bar.Hide();
  if (!Frame.IsBeingDeleted()) Layout.Update();
}

void CQORPDockingManager::Impl::Activate(CQORPDockingControlBar& bar) {
  if (wxFrame* mini = bar.GetParentMiniFrame(); mini != nullptr) mini->Raise();
  if (CQORPMDIChildWnd* page = bar.GetParentMDIChild(); page != nullptr)
    Tabs->SetSelection(static_cast<std::size_t>(Tabs->FindPage(page)));
  bar.SetFocus();
}

void CQORPDockingManager::Impl::ReopenMiniFrame(CQORPDockingControlBar& bar) {
  wxFrame* mini = bar.GetParentMiniFrame();
  if (mini == nullptr) return;
  mini->Hide();
  mini->ShowWithoutActivating();
}

void CQORPDockingManager::Impl::EnableDocking(CQORPDockingControlBar& bar, bool enabled) {
  bar.Parts->Dockable = enabled;
  PaneOf(bar).Dockable(enabled);
}

void CQORPDockingManager::Impl::ShowTitle(CQORPDockingControlBar& bar) {
  const std::wstring& title = bar.GetBarTitle();
  wxAuiPaneInfo& pane = PaneOf(bar);
  pane.Caption(title);
  if (bar.Parts->Page != nullptr) return bar.Parts->Page->SetTitle(title);
  if (pane.frame != nullptr) pane.frame->SetTitle(title);
  if (bar.IsDocked()) Layout.Update();
}

// The page is the child of the tabs, and the bar the only child of the page.
void CQORPDockingManager::Impl::OpenPage(CQORPDockingControlBar& bar) {
  CQORPMDIChildWnd* page = bar.CreateTabbedFrame(Tabs);
  page->Bar = &bar;
  bar.Reparent(page);
  auto sizer = std::make_unique<wxBoxSizer>(wxVERTICAL);
  sizer->Add(&bar, wxSizerFlags(1).Expand());
  page->SetSizer(sizer.release());
  bar.Parts->Page = page;
  bar.Show();
  Tabs->AddPage(page, bar.GetBarTitle(), true);
  page->SetTitle(bar.GetBarTitle());
}

void CQORPDockingManager::Impl::ClosePage(CQORPDockingControlBar& bar) {
  CQORPMDIChildWnd* page = std::exchange(bar.Parts->Page, nullptr);
  if (page == nullptr) return;
  page->Bar = nullptr;
  page->SetSizer(nullptr);
  bar.Hide();
  bar.Reparent(&Frame);
  const int tab = Tabs->FindPage(page);
  if (tab != wxNOT_FOUND) Tabs->RemovePage(static_cast<std::size_t>(tab));
  page->Destroy();
}

BarPlace CQORPDockingManager::Impl::PlaceOf(CQORPDockingControlBar& bar) {
  const wxRect floatRect = bar.GetFloatRect();
  const wxAuiPaneInfo& pane = PaneOf(bar);
  const wxSize dockSize = bar.IsDocked() ? bar.GetSize() : pane.best_size;
  BarPlace place;
  place.State = bar.Parts->Tabbed ? BarState::Tabbed : pane.IsFloating() ? BarState::Floating : BarState::Docked;
  place.Shown = bar.IsBarShown();
  place.Left = floatRect.x, place.Top = floatRect.y, place.Width = floatRect.width, place.Height = floatRect.height;
  place.Side = SideOf(pane.dock_direction);
  place.Layer = pane.dock_layer, place.Row = pane.dock_row, place.Position = pane.dock_pos;
  place.Proportion = pane.dock_proportion;
  place.DockWidth = dockSize.x, place.DockHeight = dockSize.y;
  return place;
}

void CQORPDockingManager::Impl::Restore(CQORPDockingControlBar& bar, const BarPlace& place) {
  Show(bar, false);
  wxAuiPaneInfo& pane = bar.Parts->LastPane;
  bar.Parts->FloatRect = UsableRect({place.Left, place.Top, place.Width, place.Height});
  pane.Direction(DirectionOf(place.Side)).Layer(place.Layer).Row(place.Row).Position(place.Position);
  pane.BestSize(place.DockWidth, place.DockHeight);
  pane.dock_proportion = place.Proportion;
  bar.Parts->Tabbed = place.State == BarState::Tabbed;
  if (place.State == BarState::Docked && bar.Parts->Dockable) pane.Dock();
  if (place.State == BarState::Floating) pane.Float();
  Show(bar, place.Shown);
  bar.OnBarMoved();
}

void CQORPDockingManager::Impl::PressClose(CQORPDockingControlBar& bar) {
  bar.OnPressCloseButton();
}

void CQORPDockingManager::Impl::PressTabClose(CQORPDockingControlBar& bar) {
  if (bar.OnTabCloseButton() != 0 && Holds(&bar)) bar.ShowControlBar(false);
}

void CQORPDockingManager::Impl::ShowMenu(CQORPDockingControlBar& bar) {
  ShowBarMenu(bar, Frame, SideOf(PaneOf(bar).dock_direction), bar.Parts->Dockable);
}
