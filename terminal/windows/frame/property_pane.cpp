#include "terminal/windows/frame/property_pane.h"

#include <utility>

#include "terminal/windows/frame/window_tools.h"

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
  EnableDocking(true);
  Items = std::make_unique<CQORPPropList>().release();
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
