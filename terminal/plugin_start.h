// What a plug-in gets ahead of a day: its timer, its saved books, and no trades. The calling thread only.
#pragma once

#include <cstdint>

#include "terminal/plugin_link.h"

// Sends 30025, 30026 and 30022; gives how many of them the plug-in takes. 30026 only where there are windows: the
// plug-in would open its books in a frame of its own otherwise.
std::uint64_t SendStart(CPluginLink& plugin, bool withWindows);
