#include "terminal/windows/market_watch_bar.h"

#include <wx/sizer.h>

#include <utility>

namespace {
constexpr const wchar_t* kSection = L"MarketWatchBar";
constexpr int kIndex = 1;
}  // namespace

bool CMarketWatchBar::Create(CQORPDockingManager& manager, std::uint32_t id, MarketWatch& rows,
                             std::function<void()> opened) {
  const wxRect floating(manager.Frame().GetPosition() + FromDIP(wxPoint(80, 120)), FromDIP(wxSize(760, 420)));
  if (!CreateBar(manager, L"Market Watch", floating, id)) return false;
  EnableDocking(true);
  Rows = std::make_unique<CMarketWatchGrid>(rows, std::move(opened)).release();
  if (!Rows->Create(this, wxID_ANY)) return false;
  auto sizer = std::make_unique<wxBoxSizer>(wxVERTICAL);
  sizer->Add(Rows, wxSizerFlags(1).Expand());
  SetSizer(sizer.release());
  return true;
}

void CMarketWatchBar::Save(WindowMemory& memory) {
  SaveState(*memory.Open(), kSection, kIndex, GetDlgCtrlID());
  memory.SaveWatch(Rows->GetPlace());
}

void CMarketWatchBar::Restore(WindowMemory& memory) {
  if (!LoadState(*memory.Open(), kSection, kIndex, GetDlgCtrlID())) {
    TabControlBar();
    ShowControlBar(true);
  }
  if (const auto place = memory.LoadWatch()) Rows->SetPlace(*place);
}

void CMarketWatchBar::OnBarFocus() {
  Rows->GetRowsWindow()->SetFocus();
}

void CMarketWatchBar::OnPressCloseButton() {
  CQORPDockingControlBar::OnPressCloseButton();
  if (Closed) Closed();
}

int CMarketWatchBar::OnTabCloseButton() {
  if (Closed) CallAfter([this] { Closed(); });
  return 1;
}
