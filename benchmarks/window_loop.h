// wxWidgets in the benchmark program, started by the first figure that needs windows.
#pragma once

// False without a display. wxWidgets runs until the end of the process.
bool StartWindows();

// Handles the pending events, or waits a moment for one.
void ServeWindows();
