#include "toolkit/bars/docking_manager.h"

#include <wx/app.h>
#include <wx/aui/framemanager.h>
// wx needs the manager first.
#include <wx/aui/dockart.h>
#include <wx/aui/floatpane.h>
#include <wx/frame.h>
#include <wx/minifram.h>
#include <wx/settings.h>

#include <algorithm>
#include <memory>

#include "toolkit/bars/docking_parts.h"
#include "toolkit/dialogs/controls.h"
#include "toolkit/start/toolkit_start.h"
#include "toolkit/system/make_child.h"

CQORPDockingManager::CQORPDockingManager(wxFrame& frame) : Parts(std::make_unique<Impl>(*this, frame)) {}
CQORPDockingManager::~CQORPDockingManager() = default;

wxFrame& CQORPDockingManager::Frame() const noexcept {
  return Parts->Frame;
}
const std::vector<CQORPDockingControlBar*>& CQORPDockingManager::Bars() const noexcept {
  return Parts->Bars;
}
CQORPDockingControlBar* CQORPDockingManager::BarOf(wxWindow* window) const {
  return Parts->BarOf(window);
}

void CQORPDockingManager::DestroyBar(CQORPDockingControlBar* bar) {
  if (Parts->Holds(bar)) bar->Destroy();
}

bool CQORPDockingManager::PreTranslateMessage(wxKeyEvent& event) {
  // Alt belongs to the menus; Ctrl and Alt type characters on many keyboards.
  if (event.AltDown() && !event.ControlDown()) return false;
  CQORPDockingControlBar* bar = Parts->BarOf(dynamic_cast<wxWindow*>(event.GetEventObject()));
  if (bar == nullptr) bar = Parts->BarOf(wxWindow::FindFocus());
  return bar != nullptr && bar->PreTranslateMessage(event);
}

CQORPDockingManager::Impl::Impl(CQORPDockingManager& owner, wxFrame& frame)
    : Owner(owner), Frame(frame), Layout(frame) {
  constexpr long kTabStyle = wxAUI_NB_TOP | wxAUI_NB_TAB_MOVE | wxAUI_NB_TAB_SPLIT | wxAUI_NB_SCROLL_BUTTONS |
                             wxAUI_NB_CLOSE_ON_ACTIVE_TAB | wxAUI_NB_MIDDLE_CLICK_CLOSE;
  Tabs = &MakeChild<wxAuiNotebook>(&frame, wxID_ANY, wxDefaultPosition, wxDefaultSize, kTabStyle);
  Layout.AddPane(Tabs, wxAuiPaneInfo().Name(L"tabs").CenterPane().PaneBorder(false));
  Layout.Update();
  BindEvents();
  Layout.OnDragged = [this](wxWindow* window, const wxPoint& position) {
    if (CQORPDockingControlBar* bar = BarOf(window); bar != nullptr) bar->Parts->FloatRect.SetPosition(position);
  };
}

CQORPDockingManager::Impl::~Impl() {
  while (!Bars.empty()) {
    CQORPDockingControlBar* bar = Bars.back();
    Remove(*bar);
    bar->Destroy();
  }
  Layout.UnInit();
}

void CQORPDockingManager::Impl::BindEvents() {
  Frame.Bind(wxEVT_CHAR_HOOK, &Impl::OnKey, this);
  Frame.Bind(wxEVT_SHOW, &Impl::OnFrameShown, this);
  Frame.Bind(wxEVT_SIZE, &Impl::OnFrameSized, this);
  Frame.Bind(wxEVT_CONTEXT_MENU, &Impl::OnContextMenu, this);
  Frame.Bind(wxEVT_LEFT_DCLICK, &Impl::OnDoubleClick, this);
  Layout.Bind(wxEVT_AUI_PANE_CLOSE, &Impl::OnPaneClose, this);
  Tabs->Bind(wxEVT_AUINOTEBOOK_PAGE_CLOSE, &Impl::OnTabClose, this);
  Tabs->Bind(wxEVT_AUINOTEBOOK_END_DRAG, &Impl::OnTabDropped, this);
  Tabs->Bind(wxEVT_AUINOTEBOOK_TAB_RIGHT_UP, &Impl::OnTabMenu, this);
}

void CQORPDockingManager::Impl::OnKey(wxKeyEvent& event) {
  if (!Owner.PreTranslateMessage(event)) event.Skip();
}

void CQORPDockingManager::Impl::OnFrameSized(wxSizeEvent& event) {
  event.Skip();
  const wxSize size = Frame.GetClientSize();
  if (Cramped && (size.x > Cramped->x || size.y > Cramped->y)) CallAfter(&Impl::RestoreDocks);
}

// Window managers read the parent of a mini frame when it appears: one that appears before its frame would stay behind
// it.
void CQORPDockingManager::Impl::OnFrameShown(wxShowEvent& event) {
  event.Skip();
  if (!event.IsShown()) return;
  for (CQORPDockingControlBar* bar : Bars)
    if (bar->IsFloating()) Later(bar, &Impl::ReopenMiniFrame);
}

// A right click on a caption or on an empty place of a bar. GTK handles clicks on the title of a mini frame itself.
void CQORPDockingManager::Impl::OnContextMenu(wxContextMenuEvent& event) {
  event.Skip();
  auto* window = dynamic_cast<wxWindow*>(event.GetEventObject());
  const bool isBare = dynamic_cast<wxPanel*>(window) != nullptr || dynamic_cast<CQORPStatic*>(window) != nullptr ||
                      dynamic_cast<wxMiniFrame*>(window) != nullptr;
  CQORPDockingControlBar* bar = isBare ? BarOf(window) : nullptr;
  if (window == &Frame) bar = BarOf(Layout.CaptionAt(Frame.ScreenToClient(event.GetPosition())));
  if (bar == nullptr || event.GetPosition() == wxDefaultPosition) return;
  event.Skip(false);
  Later(bar, &Impl::ShowMenu);
}

void CQORPDockingManager::Impl::OnDoubleClick(wxMouseEvent& event) {
  CQORPDockingControlBar* bar = BarOf(Layout.CaptionAt(event.GetPosition()));
  if (bar == nullptr) return event.Skip();
  Later(bar, &Impl::FloatAsBefore);
}

void CQORPDockingManager::Impl::OnPaneClose(wxAuiManagerEvent& event) {
  CQORPDockingControlBar* bar = BarOf(event.GetPane()->window);
  if (bar == nullptr) return event.Skip();
  event.Veto();
  Later(bar, &Impl::PressClose);
}

void CQORPDockingManager::Impl::OnTabClose(wxAuiNotebookEvent& event) {
  CQORPDockingControlBar* bar = BarOfTab(event.GetSelection());
  if (bar == nullptr) return event.Skip();
  event.Veto();
  Later(bar, &Impl::PressTabClose);
}

void CQORPDockingManager::Impl::OnTabDropped(wxAuiNotebookEvent& event) {
  event.Skip();
  CQORPDockingControlBar* bar = BarOfTab(event.GetSelection());
  if (bar != nullptr && !Tabs->GetScreenRect().Contains(wxGetMousePosition())) Later(bar, &Impl::FloatAtMouse);
}

void CQORPDockingManager::Impl::OnTabMenu(wxAuiNotebookEvent& event) {
  Later(BarOfTab(event.GetSelection()), &Impl::ShowMenu);
}

CQORPDockingControlBar* CQORPDockingManager::Impl::BarOfTab(int tab) const {
  if (tab < 0 || static_cast<std::size_t>(tab) >= Tabs->GetPageCount()) return nullptr;
  return BarOf(Tabs->GetPage(static_cast<std::size_t>(tab)));
}

// Deferred: wxAUI crashes if a pane or a page is removed inside its own event.
void CQORPDockingManager::Impl::Later(CQORPDockingControlBar* bar, void (Impl::*action)(CQORPDockingControlBar&)) {
  CallAfter([this, bar, action] {
    if (Holds(bar)) (this->*action)(*bar);
  });
}

bool CQORPDockingManager::Impl::Holds(const CQORPDockingControlBar* bar) const {
  return std::find(Bars.begin(), Bars.end(), bar) != Bars.end();
}

CQORPDockingControlBar* CQORPDockingManager::Impl::BarOf(wxWindow* window) const {
  for (wxWindow* candidate = window; candidate != nullptr; candidate = candidate->GetParent()) {
    for (CQORPDockingControlBar* bar : Bars)
      if (candidate == bar || candidate == bar->GetParentMDIChild() || candidate == bar->GetParentMiniFrame())
        return bar;
    if (candidate->IsTopLevel()) break;
  }
  return nullptr;
}

namespace {

const wxSize kSmallestMiniFrame{120, 60};

struct CaptionColour {
  int Id;
  wxSystemColour Colour;
};
constexpr CaptionColour kCaptionColours[] = {
    {wxAUI_DOCKART_ACTIVE_CAPTION_COLOUR, wxSYS_COLOUR_HIGHLIGHT},
    {wxAUI_DOCKART_ACTIVE_CAPTION_TEXT_COLOUR, wxSYS_COLOUR_HIGHLIGHTTEXT},
    {wxAUI_DOCKART_INACTIVE_CAPTION_COLOUR, wxSYS_COLOUR_BTNFACE},
    {wxAUI_DOCKART_INACTIVE_CAPTION_TEXT_COLOUR, wxSYS_COLOUR_BTNTEXT},
};

class MiniFrame : public wxAuiFloatingFrame {
 public:
  MiniFrame(wxWindow* parent, DockingLayout& layout, const wxAuiPaneInfo& pane)
      : wxAuiFloatingFrame(parent, &layout, pane), Layout(layout), Content(pane.window) {}

 protected:
  // The base class may destroy the frame, if its bar was dropped at a side.
  void OnMoveFinished() override {
    if (Layout.OnDragged) Layout.OnDragged(Content, GetPosition());
    wxAuiFloatingFrame::OnMoveFinished();
  }

 private:
  DockingLayout& Layout;
  wxWindow* Content;
};

}  // namespace

DockingLayout::DockingLayout(wxFrame& frame) : wxAuiManager(&frame, wxAUI_MGR_DEFAULT | wxAUI_MGR_ALLOW_ACTIVE_PANE) {
  LimitDocks(kUsualShare);
  TakeThemeColours();
  frame.Bind(wxEVT_SYS_COLOUR_CHANGED, &DockingLayout::OnThemeChanged, this);
}

void DockingLayout::OnThemeChanged(wxSysColourChangedEvent& event) {
  TakeThemeColours();
  event.Skip();
}

// wx 3.2: the default colours of captions are hardly readable in some themes.
void DockingLayout::TakeThemeColours() {
  wxAuiDockArt& art = *GetArtProvider();
  art.SetMetric(wxAUI_DOCKART_GRADIENT_TYPE, wxAUI_GRADIENT_NONE);
  for (const CaptionColour& row : kCaptionColours) art.SetColour(row.Id, wxSystemSettings::GetColour(row.Colour));
}

wxWindow* DockingLayout::CaptionAt(const wxPoint& point) {
  const wxAuiDockUIPart* part = HitTest(point.x, point.y);
  return part != nullptr && part->type == wxAuiDockUIPart::typeCaption && part->pane != nullptr ? part->pane->window
                                                                                                : nullptr;
}

// wx 3.2: the least size of a mini frame is the size that the bar had when it was docked.
void DockingLayout::PlaceMiniFrame(const wxAuiPaneInfo& pane, const wxRect& rect) {
  if (pane.frame == nullptr) return;
  pane.frame->SetMinSize(kSmallestMiniFrame);
  pane.frame->SetSize(rect);
}

wxAuiFloatingFrame* DockingLayout::CreateFloatingFrame(wxWindow* parent, const wxAuiPaneInfo& pane) {
  wxAuiFloatingFrame* frame = &MakeChild<MiniFrame>(parent, *this, pane);
  // wxAUI sets the least size after this call.
  frame->CallAfter([frame] { frame->SetMinSize(kSmallestMiniFrame); });
  return frame;
}

CQORPFrame::CQORPFrame(wxWindow* parent, int id, const std::wstring& title, const wxRect& rect)
    : wxFrame(parent, id, title, rect.GetPosition(), rect.GetSize()),
      Docking(std::make_unique<CQORPDockingManager>(*this)) {}

CQORPFrame::~CQORPFrame() = default;

namespace {

const wxRect kUsualRect{80, 80, 1000, 640};

}  // namespace

BarsFrame::BarsFrame() : CQORPFrame(nullptr, wxID_ANY, wxTheApp->GetAppDisplayName().ToStdWstring(), kUsualRect) {
  Bind(wxEVT_CLOSE_WINDOW, &BarsFrame::OnClose, this);
}

BarsFrame* BarsFrame::Existing() {
  for (wxWindow* window : wxTopLevelWindows)
    if (auto* frame = dynamic_cast<BarsFrame*>(window); frame != nullptr && !frame->IsBeingDeleted()) return frame;
  return nullptr;
}

void BarsFrame::OnClose(wxCloseEvent& event) {
  const std::vector<CQORPDockingControlBar*> bars = GetDockingManager().Bars();
  bool shown = false;
  for (CQORPDockingControlBar* bar : bars) {
    if (bar->IsBarShown()) RunBarCommand(*bar, BarCommand::Hide, DockSide::Left);
    shown = shown || bar->IsBarShown();
  }
  if (!shown) Hide();
  if (event.CanVeto()) event.Veto();
}

CQORPDockingManager* CQORPDockingManager::ForProcess() {
  if (!StartToolkit()) return nullptr;
  BarsFrame* own = BarsFrame::Existing();
  for (wxWindow* window : wxTopLevelWindows) {
    auto* frame = dynamic_cast<CQORPFrame*>(window);
    if (frame != nullptr && frame != own && !frame->IsBeingDeleted()) return &frame->GetDockingManager();
  }
  if (own == nullptr) {
    own = &MakeChild<BarsFrame>();  // a top-level window destroys itself
    own->GetDockingManager().Parts->ShowsFrame = true;
  }
  return &own->GetDockingManager();
}
