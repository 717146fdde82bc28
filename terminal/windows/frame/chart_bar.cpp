#include "terminal/windows/frame/chart_bar.h"

#include <utility>

#include "toolkit/system/make_child.h"

bool ChartBar::Create(CQORPDockingManager& manager, std::uint32_t id, const TradeLedger& trades,
                      std::function<void()> selectedRows) {
  const wxRect floating(manager.Frame().GetPosition() + FromDIP(wxPoint(140, 140)), FromDIP(wxSize(760, 420)));
  if (!CreateBar(manager, L"Chart", floating, id)) return false;
  Picture = &MakeChild<ChartView>(this, trades, std::move(selectedRows));
  Hold(Picture);
  return true;
}

void ChartBar::ShowChanges() {
  if (IsBarShown()) Picture->ShowChanges();
}

void ChartBar::PlaceFirst() {
  DockControlBar(DockSide::Right);
}

void ChartBar::OnBarFocus() {
  Picture->SetFocus();
}
