// wxWidgets in a process whose main loop is another program's: the half that differs between platforms.
#pragma once

// Starts wxWidgets with the app set before, and ties its events to the process's loop. False, with everything as it
// was, when it cannot: no display.
bool StartEmbedding();
// Ends wxWidgets, its app with it.
void StopEmbedding();
