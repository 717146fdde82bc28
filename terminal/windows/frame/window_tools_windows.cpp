#include "terminal/windows/frame/window_tools.h"

void ChooseWindowSystem() {}

void DropKnownComplaints() {}

void HideMenuBarUntilShown(wxFrame& /*frame*/) {}

void ForgetScreenContent(wxDC& /*screen*/) {}
