// ShowPopupMessage: says one thing in the corner of the screen. Used on the calling thread of the windows only.
#pragma once

#include <string>

// Text of the system code page. Returns at once; the popup goes by itself. Nothing without a display.
void ShowPopupMessage(std::string text);
