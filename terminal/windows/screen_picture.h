// A picture of the terminal's windows: the frame and every floating bar, as they stand on the screen. The main thread
// only.
#pragma once

#include <filesystem>

#include "toolkit/frame.h"

// Writes a PNG file. What another program's window covers is seen as that. Throws TerminalError.
void SavePicture(CQORPFrame& frame, const std::filesystem::path& file);
