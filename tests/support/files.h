// Whole files for tests, byte for byte.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

// Empty if the file cannot be read.
inline std::string ReadFile(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}
inline void WriteFile(const std::filesystem::path& file, std::string_view content) {
  std::ofstream(file, std::ios::binary) << content;
}

// The daily file in a folder; empty without one.
inline std::filesystem::path DailyFileIn(const std::filesystem::path& folder) {
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    if (entry.path().extension() == ".CSV") return entry.path();
  return {};
}
