// The menu on a bar's caption, mini frame or tab: Floating, Docking, Tabbed, Hide. Used on the calling thread of the
// windows only.
#pragma once

#include "toolkit/docking_control_bar.h"

enum class BarCommand { Float, Dock, Tab, Hide };

// True for the command that says what the bar is already.
bool IsBarCommandChecked(const CQORPDockingControlBar& bar, BarCommand command);
// Hide is the close button: the bar may answer it in its own way, and is gone afterwards where it destroys itself.
void RunBarCommand(CQORPDockingControlBar& bar, BarCommand command, DockSide side);

// Opens the menu where the mouse is, and runs what is chosen; side is where Docking puts the bar.
void ShowBarMenu(CQORPDockingControlBar& bar, wxWindow& over, DockSide side, bool dockable);
