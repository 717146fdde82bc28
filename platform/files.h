// Changes of whole files that leave no moment in which one holds a part. Any thread, any number of processes.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string_view>

// Writes a new file beside the old one, has the system bring it to the disk, and renames it over the old one: whatever
// fails, and whenever the process or the machine stops, the file holds the old bytes or the new. Owner, mode, access
// list and attributes stay as far as the system lets us. A link stays a link: the file that it leads to is replaced, or
// made. Only plain files are replaced. False on failure, with the system's number of the error; the new file is removed
// then.
//
// The new file has the name of the old one with ".new", ".new2" and so on up to ".new64" behind it: the first that no
// other writer holds. A writer holds its name, by a lock on Linux and by the sharing mode on Windows, until the rename
// is done, so a name that a killed process left behind is free again and serves the next writer.
bool ReplaceFileContent(const std::filesystem::path& file, std::string_view bytes, unsigned long& errorNumber);

// Renames the file; false, with the system's number of the error, where the other name is taken.
bool MoveToFreeName(const std::filesystem::path& from, const std::filesystem::path& to, unsigned long& errorNumber);

// Opening of a C stream that other programs may read while it is written. Any thread may call.

// Opens as fopen does. On Windows other programs are kept from writing to the file meanwhile; Linux has no such mode.
// Null on failure, with the reason in LastSystemError.
std::FILE* OpenSharedFile(const std::filesystem::path& path, const char* mode);

// Goes to that offset from the start, also beyond two gigabytes.
bool SeekFile(std::FILE* stream, std::int64_t offset) noexcept;

// Cuts the file off at that offset, and goes there. False, with the reason in LastSystemError, when it cannot.
bool CutFile(std::FILE* stream, std::int64_t size) noexcept;
