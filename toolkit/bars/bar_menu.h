// The context menu on the caption, mini frame or tab of a bar: Floating, Docking, Tabbed, Hide.
#pragma once

#include "toolkit/bars/docking_control_bar.h"

enum class BarCommand { Float, Dock, Tab, Hide };

// True if the bar is already in the state that the command sets.
bool IsBarCommandChecked(const CQORPDockingControlBar& bar, BarCommand command);
// Hide presses the close button: the bar decides what follows, and may destroy itself. Docking uses the side.
void RunBarCommand(CQORPDockingControlBar& bar, BarCommand command, DockSide side);

// Opens the menu at the mouse pointer and runs the chosen command. Docking is disabled if the bar is not dockable.
void ShowBarMenu(CQORPDockingControlBar& bar, wxWindow& over, DockSide side, bool dockable);
