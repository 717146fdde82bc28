// Starts wxWidgets where the process has not: in a terminal that does not use it.
#pragma once

#include "toolkit/bars/frame.h"
#include "toolkit/system/toolkit_export.h"

// True when windows can be made: the process runs wxWidgets, or it has been started here. Then the process's own loop
// serves the windows: on Linux the GLib main loop, on Windows the message loop of this thread. False, with nothing
// said, where there is no display or another thread runs wxWidgets; asked again it tries again.
TOOLKIT_EXPORT bool StartToolkit();

// Ends what StartToolkit started: the frame that CQORPDockingManager::ForProcess made is gone afterwards with its bars,
// and a module whose classes stood there may be unloaded. Nothing in a process that runs wxWidgets itself. The
// toolkit's library stays in the process: the system keeps addresses in it. At the end of the process it need not be
// called.
TOOLKIT_EXPORT void StopToolkit();

// From now on a failed assertion of wxWidgets is a line of CQORLog and no window. StartToolkit does so where it starts
// wxWidgets; a terminal that does it itself calls this.
TOOLKIT_EXPORT void ReportToolkitAssertions();

// BarsFrame: the frame that a process without a frame of the toolkit gets for the bars. Closing it presses the close
// button of every bar, and hides it once none is shown. It does not keep a process alive.
class BarsFrame : public CQORPFrame {
 public:
  BarsFrame();
  bool ShouldPreventAppExit() const override { return false; }
  // The frame made so far; null for none.
  static BarsFrame* Existing();

 private:
  void OnClose(wxCloseEvent& event);
};
