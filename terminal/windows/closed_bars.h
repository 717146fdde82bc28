// CClosedBars: the bars that a plug-in has closed. A plug-in only hides a bar of its own, as the bar belongs to the
// terminal's frame; the terminal destroys it, since nothing shows it again. The main thread only.
#pragma once

#include <vector>

#include "toolkit/docking_manager.h"

class CClosedBars {
 public:
  // The address of a bar that may be in the midst of its close, or of anything else.
  void Note(const void* window) { Closed.push_back(window); }
  // Those that are bars of the manager and hidden. Not from within a call of the plug-in or an event of a bar.
  void Destroy(CQORPDockingManager& manager);

 private:
  std::vector<const void*> Closed;  // to compare: may be gone
};
