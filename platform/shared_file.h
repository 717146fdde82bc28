// Opening of a C stream that other programs may read while it is written. Not the reading and writing: that is stdio's.
// Any thread may call.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>

// Opens as fopen does. On Windows other programs are kept from writing to the file meanwhile; Linux has no such mode.
// Null on failure, with the reason in LastSystemError.
std::FILE* OpenSharedFile(const std::filesystem::path& path, const char* mode);

// Goes to that offset from the start, also beyond two gigabytes.
bool SeekFile(std::FILE* stream, std::int64_t offset) noexcept;

// Cuts the file off at that offset, and goes there. False, with the reason in LastSystemError, when it cannot.
bool CutFile(std::FILE* stream, std::int64_t size) noexcept;
