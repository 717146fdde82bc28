#include "book_windows/windows/book_screen.h"

#include <algorithm>

#include "book_windows/windows/trade_book_bar.h"
#include "grid_base/settings/registry_store.h"
#include "toolkit/bars/docking_manager.h"
#include "toolkit/start/toolkit_start.h"
#include "toolkit/system/make_child.h"

namespace {

// Window systems use signed 16-bit coordinates.
constexpr std::int64_t kFarthestPx = 32767;

// A stored rectangle may be anything. One without an area lets the toolkit choose.
wxRect RectOf(const SettingsRectangle& stored) {
  const auto place = [](std::int64_t value) { return static_cast<int>(std::clamp(value, -kFarthestPx, kFarthestPx)); };
  const auto length = [&](std::int64_t from, std::int64_t to) { return place(std::max<std::int64_t>(0, to - from)); };
  return {place(stored.Left), place(stored.Top), length(stored.Left, stored.Right), length(stored.Top, stored.Bottom)};
}

}  // namespace

TradeBookScreen::TradeBookScreen(PluginState& state, CQORDLLComman& terminal, const BookCallbacks& callbacks)
    : State(state),
      Terminal(terminal),
      Callbacks(callbacks),
      Host{[&terminal](void* window, bool closed) { terminal.ApplicationFocus(window, closed); }},
      Registry(state, terminal, *this, callbacks.OnPluginMessage) {
  Terminal.Boxes = &Boxes;
  CQORPRegistrySP::UseFolder(state.WorkingFolder);
}

TradeBookScreen::~TradeBookScreen() {
  Terminal.Boxes = nullptr;
}

TradeBookScreen::ToolkitEnd::~ToolkitEnd() {
  StopToolkit();
}

bool TradeBookScreen::Start() {
  return CQORPDockingManager::ForProcess() != nullptr;
}

const void* TradeBookScreen::BarWithFocus() const {
  return CQORPDockingManager::ForProcess()->BarOf(wxWindow::FindFocus());
}

BookWindow* TradeBookScreen::MakeWindow(Book& book, const SettingsRectangle& rect, std::uint32_t barId) {
  CQORPDockingManager* manager = CQORPDockingManager::ForProcess();
  auto& bar = MakeChild<CTradeBookBar>(*this, book);
  if (!bar.CreateBook(*manager, RectOf(rect), barId)) {
    bar.Destroy();
    return nullptr;
  }
  bar.EnableDocking(true);
  bar.FloatControlBar(RectOf(rect));
  return &bar;
}

CTradeBookGrid* TradeBookScreen::FocusedGrid() {
  for (wxWindow* window = wxWindow::FindFocus(); window != nullptr; window = window->GetParent())
    if (auto* grid = dynamic_cast<CTradeBookGrid*>(window)) return grid;
  return nullptr;
}

void TradeBookScreen::PropertyChanged(CQORPProp* property, CTradeBookGrid* grid) {
  if (property != nullptr && grid != nullptr && grid->GetHandle() != nullptr) grid->ApplyProperties(*property);
}
