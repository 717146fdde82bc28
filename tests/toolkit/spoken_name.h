// The name of a window that screen readers say.
#pragma once

#include <wx/window.h>

#include <string>

std::wstring SpokenName(wxWindow& window);
