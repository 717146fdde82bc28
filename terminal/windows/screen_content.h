// What differs between platforms in reading the screen. The main thread only.
#pragma once

#include <wx/dc.h>

// To be called ahead of each copy from the screen: what an earlier copy has seen does not count.
void ForgetScreenContent(wxDC& screen);
