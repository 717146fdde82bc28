// The names that a module's file exports, read from the file itself: ELF and PE, 64 bits, told apart by their first
// bytes. Any thread.
#pragma once

#include <filesystem>
#include <set>
#include <string>

// Throws std::out_of_range or std::runtime_error for a file that is neither or is damaged.
std::multiset<std::string> ExportedNames(const std::filesystem::path& file);
