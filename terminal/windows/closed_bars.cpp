#include "terminal/windows/closed_bars.h"

#include <algorithm>
#include <utility>

#include "toolkit/docking_control_bar.h"

void CClosedBars::Destroy(CQORPDockingManager& manager) {
  const std::vector<const void*> closed = std::exchange(Closed, {});
  const std::vector<CQORPDockingControlBar*> bars = manager.Bars();
  for (CQORPDockingControlBar* bar : bars)
    if (!bar->IsBarShown() && std::ranges::count(closed, bar) != 0) manager.DestroyBar(bar);
}
