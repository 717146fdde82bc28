// The current folder, paths in folders that are created on the way, file names as wide text and back, and whole files.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// Empty if the folder is gone.
std::filesystem::path CurrentFolder();

// A name that is not text (Linux takes any bytes) gives one character per byte.
std::wstring WideOfPath(const std::filesystem::path& path);
// Empty if the text cannot be a name.
std::filesystem::path PathOfWide(std::wstring_view text);

// The base folder, each part of the relative folder between its backslashes or slashes, and the file name, if any,
// joined with the platform's separator. Creates missing folders; a failure is silent and shows when the file is opened.
// Intentional: without a relative folder the result is empty.
std::filesystem::path BuildFolderPath(const std::filesystem::path& relativeFolder,
                                      const std::filesystem::path& fileName, const std::filesystem::path& baseFolder);

// All bytes of a file, up to a read error; empty without a file. Throws std::bad_alloc, where a loop over std::getline
// ends as at the end of the file.
std::string ReadWholeFile(const std::filesystem::path& file);
