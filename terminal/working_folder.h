// The folder in which the plug-in works: made where it is missing, given the sample files, entered. Not its contents.
// Changes the process's current directory: before the module is loaded, which takes it over at that moment.
#pragma once

#include <filesystem>

// Copies every file under samples that the folder does not have yet; one that is there stays as it is. Throws
// TerminalError.
void EnterWorkingFolder(const std::filesystem::path& folder, const std::filesystem::path& samples);
