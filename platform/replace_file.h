// Replaces what a file holds, whole or not at all. Not for files that others follow while they grow. Any thread.
#pragma once

#include <filesystem>
#include <string_view>

// Writes a new file beside the old one, its name with ".new" behind it, has the system bring it to the disk, and
// renames it over the old one: whatever fails, and whenever the process or the machine stops, the file holds the old
// bytes or the new. A new file that could not be finished is removed. False on failure, with the system's number of the
// error.
bool ReplaceFileContent(const std::filesystem::path& file, std::string_view bytes, unsigned long& errorNumber);
