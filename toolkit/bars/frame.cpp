#include "toolkit/bars/frame.h"

#include <wx/app.h>

#include "toolkit/bars/bar_menu.h"
#include "toolkit/bars/docking_parts.h"
#include "toolkit/start/toolkit_start.h"
#include "toolkit/system/make_child.h"

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
