// What differs between platforms in starting the window system.
#pragma once

#include <wx/frame.h>

// To be called before wxWidgets starts. GTK prefers Wayland, where a program cannot place its windows: a floating book
// stands where the desktop puts it. An X server that can be reached beside is used instead, unless the user has set
// GDK_BACKEND.
void ChooseWindowSystem();

// To be called once wxWidgets has started: complaints of the window system's libraries that are known to be faults of
// their own, and harmless, are not printed.
void DropKnownComplaints();

// To be called once the frame has its menu bar: a window system that first shows a frame without a size gets the menu
// bar after that.
void HideMenuBarUntilShown(wxFrame& frame);
