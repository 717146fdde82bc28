// The names that a module exports, read from its file: 64-bit ELF or PE, by its first bytes.
#pragma once

#include <filesystem>
#include <set>
#include <string>

// Throws std::out_of_range or std::runtime_error if the file is neither or is damaged.
std::multiset<std::string> ExportedNames(const std::filesystem::path& file);
