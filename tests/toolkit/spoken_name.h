// What a screen reader is told of a window. For tests; used on the one thread of the tests.
#pragma once

#include <wx/window.h>

#include <string>

std::wstring SpokenName(wxWindow& window);
