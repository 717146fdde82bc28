// A picture of the frame and its floating bars as they stand on the screen, as a PNG file, and a line of what the
// program holds.
#pragma once

#include <filesystem>
#include <string>

#include "toolkit/bars/docking_manager.h"

// Writes a PNG file of the smallest rectangle around all windows. Windows of other programs are not left out. Throws
// TerminalError.
void SavePicture(CQORPFrame& frame, const std::filesystem::path& file);

// Appends "name,heap bytes,handles,windows,open books" to the file, in a new file after a line of titles. Counts all
// windows of the program, children included. Returns why it failed, else an empty text.
std::string AppendUsage(const std::filesystem::path& file, const std::string& name, std::size_t openBooks);
