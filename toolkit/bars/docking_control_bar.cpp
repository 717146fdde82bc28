#include "toolkit/bars/docking_control_bar.h"

#include <wx/aui/auibook.h>
#include <wx/menu.h>
#include <wx/settings.h>

#include "toolkit/bars/docking_parts.h"
#include "toolkit/system/make_child.h"

CQORPMDIChildWnd::CQORPMDIChildWnd(wxWindow* parent) : wxPanel(parent) {}
CQORPMDIChildWnd::~CQORPMDIChildWnd() = default;

void CQORPMDIChildWnd::SetTitle(const std::wstring& title) {
  Title = title;
  SetLabel(title);
  if (auto* tabs = dynamic_cast<wxAuiNotebook*>(GetParent()); tabs != nullptr) {
    const int tab = tabs->FindPage(this);
    if (tab != wxNOT_FOUND) tabs->SetPageText(static_cast<std::size_t>(tab), title);
  }
}

void CQORPMDIChildWnd::SetFocus() {
  if (Bar != nullptr) {
    Bar->SetFocus();
  } else {
    wxPanel::SetFocus();
  }
}

CQORPDockingControlBar::CQORPDockingControlBar() : Parts(std::make_unique<Impl>()) {}

CQORPDockingControlBar::~CQORPDockingControlBar() {
  if (Parts->Manager != nullptr) Parts->Manager->Parts->Remove(*this);
}

bool CQORPDockingControlBar::CreateBar(CQORPDockingManager& manager, const std::wstring& caption, const wxRect& rect,
                                       std::uint32_t id) {
  if (Parts->Manager != nullptr) return false;
  Hide();
  if (!wxPanel::Create(&manager.Frame(), wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL | wxCLIP_CHILDREN))
    return false;
  // wxGTK: a panel without a background colour is transparent and shows the gaps between the panes.
  SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE));
  Parts->Name = Parts->Title = caption;
  Parts->Id = id;
  Parts->Manager = &manager;
  manager.Parts->Add(*this, rect);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    OnBarMoved();
  });
  return true;
}

void CQORPDockingControlBar::EnableDocking(bool enabled) {
  if (Parts->Manager != nullptr) Parts->Manager->Parts->EnableDocking(*this, enabled);
}

void CQORPDockingControlBar::FloatControlBar(const wxRect& rect) {
  if (Parts->Manager != nullptr) Parts->Manager->Parts->Float(*this, rect);
}

void CQORPDockingControlBar::DockControlBar(DockSide side) {
  if (Parts->Manager != nullptr) Parts->Manager->Parts->Dock(*this, side);
}

void CQORPDockingControlBar::DockControlBar(DockSide side, int sizePx) {
  if (Parts->Manager != nullptr) Parts->Manager->Parts->DockSized(*this, side, sizePx);
}

void CQORPDockingControlBar::ForgetPlaces(const wxRect& rect) {
  if (Parts->Manager == nullptr) return;
  Parts->Manager->Parts->Show(*this, false);
  Parts->Manager->Parts->PlaceAnew(*this, rect);
}

void CQORPDockingControlBar::TabControlBar() {
  if (Parts->Manager != nullptr) Parts->Manager->Parts->Tab(*this);
}

void CQORPDockingControlBar::ShowControlBar(bool show, bool activate) {
  if (Parts->Manager == nullptr) return;
  Parts->Manager->Parts->Show(*this, show);
  if (show && activate) Parts->Manager->Parts->Activate(*this);
}

bool CQORPDockingControlBar::IsBarShown() const {
  return Parts->Shown;
}

bool CQORPDockingControlBar::IsDocked() const {
  return Parts->Shown && !Parts->Tabbed && Parts->Manager->Parts->PaneOf(*this).IsDocked();
}

bool CQORPDockingControlBar::IsFloating() const {
  return GetParentMiniFrame() != nullptr;
}

bool CQORPDockingControlBar::IsMDITabbed() const {
  return Parts->Page != nullptr;
}

wxFrame* CQORPDockingControlBar::GetParentMiniFrame() const {
  if (!Parts->Shown || Parts->Tabbed) return nullptr;
  const wxAuiPaneInfo& pane = Parts->Manager->Parts->PaneOf(*this);
  return pane.IsFloating() ? pane.frame : nullptr;
}

CQORPMDIChildWnd* CQORPDockingControlBar::GetParentMDIChild() const {
  return Parts->Page;
}

wxRect CQORPDockingControlBar::GetFloatRect() const {
  return Parts->Manager == nullptr ? wxRect() : Parts->Manager->Parts->FloatRectOf(*this);
}

void CQORPDockingControlBar::SetBarTitle(const std::wstring& title) {
  if (title == Parts->Title) return;
  Parts->Title = title;
  if (Parts->Manager != nullptr) Parts->Manager->Parts->ShowTitle(*this);
}

const std::wstring& CQORPDockingControlBar::GetBarTitle() const noexcept {
  return Parts->Title;
}
const std::wstring& CQORPDockingControlBar::GetBarName() const noexcept {
  return Parts->Name;
}
std::uint32_t CQORPDockingControlBar::GetDlgCtrlID() const noexcept {
  return Parts->Id;
}
CQORPDockingManager* CQORPDockingControlBar::GetDockingManager() const noexcept {
  return Parts->Manager;
}

bool CQORPDockingControlBar::SaveState(CQORPRegistry& settings, const std::wstring& section, int index,
                                       std::uint32_t /*id*/) {
  if (Parts->Manager == nullptr || !settings.CreatePath(section)) return false;
  const std::wstring text = BarPlaceText(Parts->Manager->Parts->PlaceOf(*this));
  const bool written = settings.Write(L"Bar-" + std::to_wstring(index), text);
  settings.ClosePath();
  return written;
}

bool CQORPDockingControlBar::LoadState(CQORPRegistry& settings, const std::wstring& section, int index,
                                       std::uint32_t /*id*/) {
  if (Parts->Manager == nullptr || !settings.OpenPath(section)) return false;
  std::wstring text;
  const bool read = settings.Read(L"Bar-" + std::to_wstring(index), text);
  settings.ClosePath();
  const std::optional<BarPlace> place = read ? ParseBarPlace(text) : std::nullopt;
  if (!place) return false;
  Parts->Manager->Parts->Restore(*this, *place);
  return true;
}

CQORPMDIChildWnd* CQORPDockingControlBar::CreateTabbedFrame(wxWindow* parent) {
  return &MakeChild<CQORPMDIChildWnd>(parent);
}

void CQORPDockingControlBar::SetFocus() {
  if (Parts->Manager == nullptr) return;
  wxPanel::SetFocus();
  OnBarFocus();
}

namespace {

struct MenuRow {
  BarCommand Command;
  const wchar_t* Caption;
};
constexpr MenuRow kMenu[] = {
    {BarCommand::Float, L"&Floating"},
    {BarCommand::Dock, L"&Docking"},
    {BarCommand::Tab, L"&Tabbed"},
    {BarCommand::Hide, L"&Hide"},
};
constexpr int kFirstBarId = 1;

void PressCloseButton(CQORPDockingControlBar& bar) {
  if (!bar.IsMDITabbed()) {
    bar.OnPressCloseButton();
  } else if (bar.OnTabCloseButton() != 0) {
    bar.ShowControlBar(false);
  }
}

}  // namespace

bool IsBarCommandChecked(const CQORPDockingControlBar& bar, BarCommand command) {
  switch (command) {
    case BarCommand::Float:
      return bar.IsFloating();
    case BarCommand::Dock:
      return bar.IsDocked();
    case BarCommand::Tab:
      return bar.IsMDITabbed();
    case BarCommand::Hide:
      return !bar.IsBarShown();
  }
  return false;
}

void RunBarCommand(CQORPDockingControlBar& bar, BarCommand command, DockSide side) {
  switch (command) {
    case BarCommand::Float:
      return bar.FloatControlBar(bar.GetFloatRect());
    case BarCommand::Dock:
      return bar.DockControlBar(side);
    case BarCommand::Tab:
      return bar.TabControlBar();
    case BarCommand::Hide:
      return PressCloseButton(bar);
  }
}

void ShowBarMenu(CQORPDockingControlBar& bar, wxWindow& over, DockSide side, bool dockable) {
  wxMenu menu;
  for (const MenuRow& row : kMenu) {
    const int id = kFirstBarId + static_cast<int>(row.Command);
    const bool isState = row.Command != BarCommand::Hide;
    menu.Append(id, row.Caption, wxEmptyString, isState ? wxITEM_CHECK : wxITEM_NORMAL);
    if (isState) menu.Check(id, IsBarCommandChecked(bar, row.Command));
    if (row.Command == BarCommand::Dock) menu.Enable(id, dockable);
  }
  const int chosen = over.GetPopupMenuSelectionFromUser(menu);
  for (const MenuRow& row : kMenu)
    if (chosen == kFirstBarId + static_cast<int>(row.Command) && !IsBarCommandChecked(bar, row.Command))
      return RunBarCommand(bar, row.Command, side);
}
