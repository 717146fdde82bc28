// The name under which a screen reader finds a window that paints its own text. Used on the calling thread of the
// windows only.
#pragma once

#include <wx/window.h>

#include <string>

void SetAccessibleName(wxWindow& window, const std::wstring& name);
