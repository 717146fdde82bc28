// How a bar moves from one place to another; the event handlers of the manager are in docking_manager.cpp.
#include "toolkit/bars/docking_parts.h"

#include <wx/display.h>
#include <wx/sizer.h>

#include <algorithm>
#include <utility>

#include "toolkit/bars/docking_control_bar.h"
#include "toolkit/system/make_child.h"

namespace {

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

ScreenRect FromWx(const wxRect& rect) {
  return {rect.x, rect.y, rect.width, rect.height};
}

wxRect UsableRect(const wxRect& rect) {
  std::vector<DisplayArea> displays;
  for (unsigned i = 0; i < wxDisplay::GetCount(); ++i)
    displays.push_back({FromWx(wxDisplay(i).GetGeometry()), FromWx(wxDisplay(i).GetClientArea())});
  const ScreenRect usable = UsableFloatRect(FromWx(rect), displays);
  return {usable.Left, usable.Top, usable.Width, usable.Height};
}

}  // namespace

void CQORPDockingManager::Impl::Add(CQORPDockingControlBar& bar, const wxRect& rect) {
  PlaceAnew(bar, rect);
  Bars.push_back(&bar);
}

void CQORPDockingManager::Impl::PlaceAnew(CQORPDockingControlBar& bar, const wxRect& rect) {
  bar.Parts->FloatRect = UsableRect(rect);
  bar.Parts->LastPane = wxAuiPaneInfo();
  bar.Parts->LastPane.Float().BestSize(bar.Parts->FloatRect.GetSize()).MinSize(kSmallestBar);
  bar.Parts->LastPane.Dockable(bar.Parts->Dockable);
  bar.Parts->Restored.reset();
  bar.Parts->Tabbed = false;
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

// After the bars that are already at that side.
void CQORPDockingManager::Impl::Dock(CQORPDockingControlBar& bar, DockSide side) {
  const auto standsThere = [&](CQORPDockingControlBar* other) {
    return other != &bar && other->IsDocked() && PaneOf(*other).dock_direction == DirectionOf(side);
  };
  WhileHidden(bar, [&] {
    bar.Parts->Tabbed = false;
    bar.Parts->Restored.reset();
    bar.Parts->LastPane.Dock().Direction(DirectionOf(side)).Layer(0).Row(0);
    bar.Parts->LastPane.Position(static_cast<int>(std::count_if(Bars.begin(), Bars.end(), standsThere)));
  });
}

// As a stored place, which waits for its frame.
void CQORPDockingManager::Impl::DockSized(CQORPDockingControlBar& bar, DockSide side, int sizePx) {
  BarPlace place = PlaceOf(bar);
  place.State = BarState::Docked;
  place.Side = side;
  place.Layer = place.Row = place.Position = place.Proportion = 0;
  place.DockWidth = place.DockHeight = sizePx;
  Restore(bar, place);
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

// Destroys the mini frame: wxGTK shows one again by itself if it is hidden soon after it was shown.
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

// The page is a child of the tabs, and the bar is the only child of the page.
void CQORPDockingManager::Impl::OpenPage(CQORPDockingControlBar& bar) {
  CQORPMDIChildWnd* page = bar.CreateTabbedFrame(Tabs);
  page->Bar = &bar;
  bar.Reparent(page);
  page->SetSizer(&MakeChild<wxBoxSizer>(wxVERTICAL));
  page->GetSizer()->Add(&bar, wxSizerFlags(1).Expand());
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
  bar.Parts->Restored = place;
  pane.Direction(DirectionOf(place.Side)).BestSize(place.DockWidth, place.DockHeight);
  pane.dock_proportion = place.Proportion;
  bar.Parts->Tabbed = place.State == BarState::Tabbed;
  if (place.State == BarState::Docked && bar.Parts->Dockable) pane.Dock();
  if (place.State == BarState::Floating) pane.Float();
  for (CQORPDockingControlBar* other : Bars) PlaceAsRestored(*other);
  Layout.LimitDocks(DockingLayout::kLargestShare);
  Show(bar, place.Shown);
  Layout.LimitDocks(DockingLayout::kUsualShare);
  if (bar.IsDocked() && !HasStoredSize(place)) Cramped = Frame.GetClientSize();
  bar.OnBarMoved();
}

// A bar that the user has docked at another side meanwhile stays there.
void CQORPDockingManager::Impl::PlaceAsRestored(CQORPDockingControlBar& bar) {
  const std::optional<BarPlace>& place = bar.Parts->Restored;
  wxAuiPaneInfo& pane = PaneOf(bar);
  if (place && pane.dock_direction == DirectionOf(place->Side))
    pane.Layer(place->Layer).Row(place->Row).Position(place->Position);
}

bool CQORPDockingManager::Impl::HasStoredSize(const BarPlace& place) const {
  const bool atSide = place.Side == DockSide::Left || place.Side == DockSide::Right;
  const wxSize frame = Frame.GetClientSize();
  return atSide ? place.DockWidth <= DockingLayout::kLargestShare * frame.x
                : place.DockHeight <= DockingLayout::kLargestShare * frame.y;
}

// wxAUI sizes a dock when it is made. A new frame has not its final size, with wxGTK hardly any at first, so the docks
// are made again after it has grown.
void CQORPDockingManager::Impl::RestoreDocks() {
  if (!std::exchange(Cramped, std::nullopt)) return;
  CQORPDockingControlBar* focused = BarOf(wxWindow::FindFocus());
  std::vector<CQORPDockingControlBar*> docked;
  std::ranges::copy_if(Bars, std::back_inserter(docked),
                       [](CQORPDockingControlBar* bar) { return bar->Parts->Restored && bar->IsDocked(); });
  for (CQORPDockingControlBar* bar : docked) Show(*bar, false);
  for (CQORPDockingControlBar* bar : docked) {
    BarPlace place = *bar->Parts->Restored;
    place.Shown = true;
    Restore(*bar, place);
  }
  if (focused != nullptr) Activate(*focused);
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
