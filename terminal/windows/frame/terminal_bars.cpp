#include "terminal/windows/frame/terminal_bars.h"

#include <wx/sizer.h>

#include <utility>

#include "terminal/windows/frame/window_tools.h"
#include "toolkit/bars/docking_control_bar.h"
#include "toolkit/system/make_child.h"

namespace {
constexpr int kIndex = 1;
}

void TerminalBar::Hold(wxWindow* content) {
  auto& sizer = MakeChild<wxBoxSizer>(wxVERTICAL);
  sizer.Add(content, wxSizerFlags(1).Expand());
  SetSizer(&sizer);
}

void TerminalBar::Save(WindowMemory& memory) {
  SaveState(*memory.Open(), Section, kIndex, GetDlgCtrlID());
}

void TerminalBar::Restore(WindowMemory& memory) {
  FirstRect = GetFloatRect();
  if (!LoadState(*memory.Open(), Section, kIndex, GetDlgCtrlID())) PlaceFirst();
}

void TerminalBar::Reset() {
  ForgetPlaces(FirstRect);
  PlaceFirst();
}

void TerminalBar::OnPressCloseButton() {
  CQORPDockingControlBar::OnPressCloseButton();
  if (Closed) Closed();
}

int TerminalBar::OnTabCloseButton() {
  if (Closed) CallAfter([this] { Closed(); });
  return 1;
}

void ListBar::HoldList(ListGrid* list) {
  List = list;
  Hold(list);
}

void ListBar::Save(WindowMemory& memory) {
  TerminalBar::Save(memory);
  memory.SaveList(ListSection, List->GetPlace());
}

void ListBar::Restore(WindowMemory& memory) {
  TerminalBar::Restore(memory);
  FirstPlace = List->GetPlace();
  if (const auto place = memory.LoadList(ListSection)) List->SetPlace(*place);
}

void ListBar::Reset() {
  TerminalBar::Reset();
  List->OnFilterBarClearAll();
  List->SetPlace(FirstPlace);
}

void ListBar::ShowChanges() {
  if (IsBarShown()) List->ShowChanges();
}

void ListBar::OnBarFocus() {
  List->GetRowsWindow()->SetFocus();
}

bool MarketWatchBar::Create(CQORPDockingManager& manager, std::uint32_t id, MarketWatch& rows,
                            std::function<void()> opened) {
  const wxRect floating(manager.Frame().GetPosition() + FromDIP(wxPoint(80, 120)), FromDIP(wxSize(760, 420)));
  if (!CreateBar(manager, L"Market Watch", floating, id)) return false;
  Rows = &MakeChild<MarketWatchGrid>(rows, std::move(opened));
  if (!Rows->Create(this, wxID_ANY)) return false;
  HoldList(Rows);
  return true;
}

void MarketWatchBar::PlaceFirst() {
  TabControlBar();
  ShowControlBar(true);
}

bool LogBar::Create(CQORPDockingManager& manager, std::uint32_t id, MessageLog& log) {
  const wxRect floating(manager.Frame().GetPosition() + FromDIP(wxPoint(120, 160)), FromDIP(wxSize(900, 360)));
  if (!CreateBar(manager, L"Messages", floating, id)) return false;
  Rows = &MakeChild<LogGrid>(log);
  if (!Rows->Create(this, wxID_ANY)) return false;
  HoldList(Rows);
  return true;
}

void LogBar::PlaceFirst() {
  DockControlBar(DockSide::Bottom);
}

namespace {

constexpr const wchar_t* kHint = L"\"Property\" in the menu of a book shows its properties here.";

CQORPDockingControlBar* BarOfGrid(const CQORPDockingManager& manager, std::uint64_t grid) {
  const auto isGrid = [grid](const wxWindow& window) { return reinterpret_cast<std::uint64_t>(&window) == grid; };
  for (CQORPDockingControlBar* bar : manager.Bars())
    if (FindChild<wxWindow>(*bar, isGrid) != nullptr) return bar;
  return nullptr;
}

}  // namespace

bool PropertyPane::Create(CQORPDockingManager& manager, std::uint32_t id) {
  const wxRect floating(manager.Frame().GetPosition() + FromDIP(wxPoint(160, 160)), FromDIP(wxSize(360, 480)));
  if (!CreateBar(manager, L"Properties", floating, id)) return false;
  Items = &MakeChild<CQORPPropList>();
  if (!Items->Create(this, wxID_ANY, L"Properties")) return false;
  Items->SetHint(kHint);
  Items->OnChange = [this](CQORPProp& item) { Apply(item); };
  Hold(Items);
  return true;
}

void PropertyPane::Fill(const PropertyRequest& request, PluginLink& plugin) {
  Empty();
  Book = BarOfGrid(*GetDockingManager(), request.Grid);
  if (!HasBook()) return;
  Request = request;
  Plugin = &plugin;
  plugin.Run([this] { Request.Fill(Items, this); });
}

void PropertyPane::ShowFilled() {
  if (HasBook()) ShowControlBar(true);
}

bool PropertyPane::HasBook() const {
  return Book && Book->IsBarShown();
}

void PropertyPane::FollowBook() {
  if (Plugin != nullptr && !HasBook()) Empty();
}

void PropertyPane::Empty() {
  Plugin = nullptr;
  Book = nullptr;
  Request = {};
  Items->RemoveAll();
}

void PropertyPane::Apply(CQORPProp& item) {
  if (Plugin == nullptr || !HasBook()) return;
  Plugin->Run([&] { Request.Apply(&item, reinterpret_cast<void*>(Request.Grid)); });
}

void PropertyPane::PlaceFirst() {
  DockControlBar(DockSide::Right);
}

void PropertyPane::OnBarFocus() {
  Items->SetFocus();
}
