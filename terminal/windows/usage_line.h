// UsageLine: what the program holds at this moment, as a line of a CSV file, so that moments can be compared. Not the
// measuring of the process: platform/process_usage.h. The main thread only.
#pragma once

#include <filesystem>
#include <string>

// Appends "name,heap bytes,handles,windows,open books" to the file; the first line of a new file tells the columns.
// Windows are all those of the program, children included. Gives back why it cannot be done, else nothing.
std::string AppendUsage(const std::filesystem::path& file, const std::string& name, std::size_t openBooks);
