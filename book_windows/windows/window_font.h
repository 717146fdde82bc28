// The stored block of a font as a font of the window system, and back.
#pragma once

#include <wx/font.h>

#include "grid_base/settings/registry_store.h"

// A face that the system lacks becomes the nearest one.
wxFont WindowFontOf(const GridFont& block);
GridFont FontBlockOf(const wxFont& font);
