// Reads pages and sources, for tests that hold the pages to what the code does.
#pragma once

#include <cstdint>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

// The lines of the first block fenced with that language that stands behind the given text.
inline std::vector<std::string> FencedBlock(const std::string& page, const std::string& behind,
                                            const std::string& language) {
  std::ifstream file(std::string(TRADEBOOK_SOURCE_FOLDER "/docs/") + page);
  std::vector<std::string> lines;
  bool reached = behind.empty();
  bool inside = false;
  for (std::string line; std::getline(file, line);) {
    if (line.ends_with('\r')) line.pop_back();
    if (inside && line == "```") return lines;
    if (inside) lines.push_back(line);
    reached = reached || line.find(behind) != std::string::npos;
    if (reached && line == "```" + language) inside = true;
  }
  throw std::runtime_error(page + " has no block of " + language + " behind '" + behind + "'");
}

// The bytes of the first block of hex behind the given text; a line's remark stands behind a stroke.
std::vector<std::uint8_t> HexBlock(const std::string& page, const std::string& behind);

// A file of the source folder, with LF.
std::string SourceText(const std::string& path);

// Of every match the whole and its groups.
using Match = std::vector<std::string>;
std::vector<Match> Matches(const std::string& text, const char* pattern);
