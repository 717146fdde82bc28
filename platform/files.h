// Replacing and moving whole files, and files that other programs may read while they are written.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string_view>

// Writes a new file beside the old one, flushes it to the disk and renames it over the old one: at any moment, also if
// the process or the machine stops, the file has the old bytes or the new ones. Any number of processes may do so at
// once. Owner, mode, access list and attributes are kept as far as the system allows. The target of a link is replaced,
// or created, and the link stays. Only regular files are replaced. On failure false with the system's error number, and
// the new file is removed.
//
// The new file is named like the old one with ".new", ".new2" to ".new64" appended: the first that no other writer
// holds. A writer holds its name until the rename, by a lock on Linux and by the sharing mode on Windows, so a name
// that a killed process has left is free for the next writer.
bool ReplaceFileContent(const std::filesystem::path& file, std::string_view bytes, unsigned long& errorNumber);

// Renames the file. False, with the system's error number, if the other name is taken.
bool MoveToFreeName(const std::filesystem::path& from, const std::filesystem::path& to, unsigned long& errorNumber);

// Like fopen; other programs may read the file meanwhile. On Windows they cannot write to it; Linux has no such mode.
// Null on failure, with the reason in LastSystemError.
std::FILE* OpenSharedFile(const std::filesystem::path& path, const char* mode);

// Seeks to that offset from the start, also beyond two gigabytes.
bool SeekFile(std::FILE* stream, std::int64_t offset) noexcept;

// Truncates the file to that size and seeks to its end. False on failure, with the reason in LastSystemError.
bool CutFile(std::FILE* stream, std::int64_t size) noexcept;
