#include "terminal/windows/frame/terminal_bar.h"

#include <wx/sizer.h>

#include <memory>

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
