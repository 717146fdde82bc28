// wxWidgets in the benchmark program, started by the first figure that needs windows. Not a window. Used on the one
// thread of the program.
#pragma once

// True when windows can be made; false without a display. It runs to the end of the process.
bool StartWindows();

// Serves events for a moment: what has come in, or waits a little for something to come.
void ServeWindows();
