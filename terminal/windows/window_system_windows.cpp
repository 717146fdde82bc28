#include "terminal/windows/window_system.h"

void DropKnownComplaints() {}
