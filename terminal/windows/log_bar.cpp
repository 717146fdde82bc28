#include "terminal/windows/log_bar.h"

#include <memory>

bool CLogBar::Create(CQORPDockingManager& manager, std::uint32_t id, CMessageLog& log) {
  const wxRect floating(manager.Frame().GetPosition() + FromDIP(wxPoint(120, 160)), FromDIP(wxSize(900, 360)));
  if (!CreateBar(manager, L"Messages", floating, id)) return false;
  EnableDocking(true);
  Rows = std::make_unique<CLogGrid>(log).release();
  if (!Rows->Create(this, wxID_ANY)) return false;
  Hold(Rows);
  return true;
}

void CLogBar::ShowChanges() {
  if (IsBarShown()) Rows->ShowChanges();
}

void CLogBar::PlaceFirst() {
  DockControlBar(DockSide::Bottom);
}

void CLogBar::OnBarFocus() {
  Rows->GetRowsWindow()->SetFocus();
}
