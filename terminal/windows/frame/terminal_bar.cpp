#include "terminal/windows/frame/terminal_bar.h"

#include <wx/sizer.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "toolkit/bars/docking_control_bar.h"

namespace {
constexpr int kIndex = 1;
}

void TerminalBar::Hold(wxWindow* content) {
  auto sizer = std::make_unique<wxBoxSizer>(wxVERTICAL);
  sizer->Add(content, wxSizerFlags(1).Expand());
  SetSizer(sizer.release());
}

void TerminalBar::Save(WindowMemory& memory) {
  SaveState(*memory.Open(), Section, kIndex, GetDlgCtrlID());
}

void TerminalBar::Restore(WindowMemory& memory) {
  if (!LoadState(*memory.Open(), Section, kIndex, GetDlgCtrlID())) PlaceFirst();
}

void TerminalBar::OnPressCloseButton() {
  CQORPDockingControlBar::OnPressCloseButton();
  if (Closed) Closed();
}

int TerminalBar::OnTabCloseButton() {
  if (Closed) CallAfter([this] { Closed(); });
  return 1;
}

void ClosedBars::Destroy(CQORPDockingManager& manager) {
  const std::vector<const void*> closed = std::exchange(Closed, {});
  const std::vector<CQORPDockingControlBar*> bars = manager.Bars();
  for (CQORPDockingControlBar* bar : bars)
    if (!bar->IsBarShown() && std::ranges::count(closed, bar) != 0) manager.DestroyBar(bar);
}
