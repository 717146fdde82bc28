// A picture of the terminal's windows: the frame and every floating bar, as they stand on the screen.
#pragma once

#include <wx/dc.h>

#include <filesystem>
#include <string>

#include "toolkit/bars/frame.h"

// Writes a PNG file. What another program's window covers is seen as that. Throws TerminalError.
void SavePicture(CQORPFrame& frame, const std::filesystem::path& file);

// What differs between platforms in reading the screen.

// To be called ahead of each copy from the screen: what an earlier copy has seen does not count.
void ForgetScreenContent(wxDC& screen);

// UsageLine: what the program holds at this moment, as a line of a CSV file, so that moments can be compared.

// Appends "name,heap bytes,handles,windows,open books" to the file; the first line of a new file tells the columns.
// Windows are all those of the program, children included. Gives back why it cannot be done, else nothing.
std::string AppendUsage(const std::filesystem::path& file, const std::string& name, std::size_t openBooks);
