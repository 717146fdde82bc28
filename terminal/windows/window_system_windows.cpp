#include "terminal/windows/window_system.h"

void ChooseWindowSystem() {}

void DropKnownComplaints() {}

void HideMenuBarUntilShown(wxFrame& /*frame*/) {}
