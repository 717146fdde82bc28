// Files that hold a secret: read only if nobody but their owner may read them.
#pragma once

#include <filesystem>
#include <string>

// True if the file's mode lets its group or others read it. Windows has no such mode: there it is never true, and the
// user's own folder is closed to others by its access list.
bool OthersMayRead(const std::filesystem::path& file);

// Throws FeedError, without a word of the content, if the file cannot be read or others may read it.
void CheckSecretFile(const std::filesystem::path& file);
// The first line, without its end. Throws FeedError as CheckSecretFile does, and if the line is empty or longer than
// 4,096 bytes.
std::string ReadSecretLine(const std::filesystem::path& file);
