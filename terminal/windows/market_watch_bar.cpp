#include "terminal/windows/market_watch_bar.h"

#include <utility>

bool CMarketWatchBar::Create(CQORPDockingManager& manager, std::uint32_t id, MarketWatch& rows,
                             std::function<void()> opened) {
  const wxRect floating(manager.Frame().GetPosition() + FromDIP(wxPoint(80, 120)), FromDIP(wxSize(760, 420)));
  if (!CreateBar(manager, L"Market Watch", floating, id)) return false;
  EnableDocking(true);
  Rows = std::make_unique<CMarketWatchGrid>(rows, std::move(opened)).release();
  if (!Rows->Create(this, wxID_ANY)) return false;
  Hold(Rows);
  return true;
}

void CMarketWatchBar::Save(WindowMemory& memory) {
  CTerminalBar::Save(memory);
  memory.SaveWatch(Rows->GetPlace());
}

void CMarketWatchBar::Restore(WindowMemory& memory) {
  CTerminalBar::Restore(memory);
  if (const auto place = memory.LoadWatch()) Rows->SetPlace(*place);
}

void CMarketWatchBar::PlaceFirst() {
  TabControlBar();
  ShowControlBar(true);
}

void CMarketWatchBar::OnBarFocus() {
  Rows->GetRowsWindow()->SetFocus();
}
