// Keys as wxWidgets numbers them. Not their names: terminal/key_press.h. The main thread only.
#pragma once

#include <wx/accel.h>

#include "terminal/key_press.h"

// The key code; 0 for a key that wxWidgets does not know.
int WxKeyCode(const KeyPress& key);
// The held keys as wxACCEL_ bits, which are those of wxMOD_ too.
int WxHeldKeys(const KeyPress& key);
