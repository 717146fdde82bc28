// The working folder of the plug-in: made, filled with samples of the files that a user may edit, and entered.
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

// The samples to copy, of all that there are, each by its place below the folder: those that the folder lacks. A column
// profile goes only into a folder that nobody has used: one that has no other sample and none of the files that windows
// leave. It comes first, so that a copy that was cut short begins again with it.
std::vector<std::filesystem::path> SamplesToCopy(std::vector<std::filesystem::path> samples,
                                                 const std::function<bool(const std::filesystem::path&)>& isThere);

// Makes the working folder, copies samples and enters it. Call before the module is loaded, which takes over the
// current folder then. Throws TerminalError.
void EnterWorkingFolder(const std::filesystem::path& folder, const std::filesystem::path& samples);
