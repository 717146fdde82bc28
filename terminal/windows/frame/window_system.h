// What differs between platforms in starting the window system.
#pragma once

#include <wx/frame.h>

// Call before wxWidgets starts. GTK prefers Wayland, where a program cannot place its windows. If an X server is
// reachable, this chooses it, unless the user has set GDK_BACKEND.
void ChooseWindowSystem();

// Call after wxWidgets has started. Hides complaints of the window system's libraries that are known to be harmless
// faults of theirs.
void DropKnownComplaints();

// Call once the frame has its menu bar. A window system that shows a frame without a size first gets the menu bar after
// that.
void HideMenuBarUntilShown(wxFrame& frame);
