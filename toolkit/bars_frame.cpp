#include "toolkit/bars_frame.h"

#include <wx/app.h>
#include <wx/toplevel.h>

#include "toolkit/bar_menu.h"
#include "toolkit/docking_parts.h"
#include "toolkit/toolkit_start.h"

namespace {

const wxRect kUsualRect{80, 80, 1000, 640};

template <typename Wanted>
Wanted* FindFrame() {
  for (wxWindow* window : wxTopLevelWindows)
    if (auto* frame = dynamic_cast<Wanted*>(window); frame != nullptr && !frame->IsBeingDeleted()) return frame;
  return nullptr;
}

}  // namespace

BarsFrame::BarsFrame() : CQORPFrame(nullptr, wxID_ANY, wxTheApp->GetAppDisplayName().ToStdWstring(), kUsualRect) {
  Bind(wxEVT_CLOSE_WINDOW, &BarsFrame::OnClose, this);
}

BarsFrame* BarsFrame::Existing() {
  return FindFrame<BarsFrame>();
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
    own = std::make_unique<BarsFrame>().release();  // a top-level window destroys itself
    own->GetDockingManager().Parts->ShowsFrame = true;
  }
  return &own->GetDockingManager();
}
