#include "terminal/windows/frame/window_system.h"

void ChooseWindowSystem() {}

void DropKnownComplaints() {}

void HideMenuBarUntilShown(wxFrame& /*frame*/) {}
