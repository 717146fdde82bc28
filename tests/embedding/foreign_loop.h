// A program that has windows and a main loop and knows nothing of wxWidgets: GTK's own loop on Linux, a plain message
// loop on Windows. Used on the main thread only.
#pragma once

#include <functional>
#include <string>

// Without a display, where that can be: false when the platform always has one.
bool HideDisplay();
void ShowDisplay();

// Opens a window of the program's own; false without a display.
bool OpenForeignWindow();
// A function that says whether the program's own window takes input; null where the system keeps input from it itself.
bool (*ForeignWindowCheck())();
// Runs the program's loop and calls tick every few milliseconds until it says false.
void RunForeignLoop(const std::function<bool()>& tick);
// True while a top-level window of the process with that title, in ASCII, is on the screen.
bool ShowsWindow(const std::string& title);
