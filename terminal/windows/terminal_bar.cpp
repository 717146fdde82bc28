#include "terminal/windows/terminal_bar.h"

#include <wx/sizer.h>

#include <memory>

namespace {
constexpr int kIndex = 1;
}

void CTerminalBar::Hold(wxWindow* content) {
  auto sizer = std::make_unique<wxBoxSizer>(wxVERTICAL);
  sizer->Add(content, wxSizerFlags(1).Expand());
  SetSizer(sizer.release());
}

void CTerminalBar::Save(WindowMemory& memory) {
  SaveState(*memory.Open(), Section, kIndex, GetDlgCtrlID());
}

void CTerminalBar::Restore(WindowMemory& memory) {
  if (!LoadState(*memory.Open(), Section, kIndex, GetDlgCtrlID())) PlaceFirst();
}

void CTerminalBar::OnPressCloseButton() {
  CQORPDockingControlBar::OnPressCloseButton();
  if (Closed) Closed();
}

int CTerminalBar::OnTabCloseButton() {
  if (Closed) CallAfter([this] { Closed(); });
  return 1;
}
