// BuildFolderPath: a file's path in folders that are made on the way. Any thread.
#pragma once

#include <filesystem>

// The base folder, then each part of the relative folder between its backslashes or slashes, then the file name if
// there is one, joined with the platform's separator. Each folder is made where it is missing; that it cannot be made
// is told by nobody and seen when the file is opened. Without a relative folder the result is empty: meant so, whatever
// the file and the base.
std::filesystem::path BuildFolderPath(const std::filesystem::path& relativeFolder,
                                      const std::filesystem::path& fileName, const std::filesystem::path& baseFolder);
