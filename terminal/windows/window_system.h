// What differs between platforms in starting the window system. The main thread only.
#pragma once

// To be called once wxWidgets has started: complaints of the window system's libraries that are known to be faults of
// their own, and harmless, are not printed.
void DropKnownComplaints();
