// Starts wxWidgets in a process that does not run it itself.
#pragma once

#include "toolkit/system/toolkit_export.h"

// True if windows can be made: the process runs wxWidgets, or this call has started it. In the second case the loop of
// the process serves the windows: the GLib main loop on Linux, the message loop of this thread on Windows. Returns
// false silently without a display, or if another thread runs wxWidgets; the next call tries again.
TOOLKIT_EXPORT bool StartToolkit();

// Ends what StartToolkit started and destroys every top-level window with its bars, so that a module whose classes
// stood there may be unloaded. A no-op in a process that runs wxWidgets itself. The toolkit's library stays loaded: GTK
// keeps addresses in it. Optional at the end of the process.
TOOLKIT_EXPORT void StopToolkit();

// From now on a failed assertion of wxWidgets is a line of CQORLog and no window. StartToolkit calls this if it starts
// wxWidgets; a terminal that starts it itself calls this itself.
TOOLKIT_EXPORT void ReportToolkitAssertions();
