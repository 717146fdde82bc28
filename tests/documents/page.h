// Reads pages for tests that compare them with the code.
#pragma once

#include <string>
#include <vector>

// The lines of the first block fenced with that language after the given text.
std::vector<std::string> FencedBlock(const std::string& page, const std::string& behind, const std::string& language);

// A file of the source folder, with LF line ends.
std::string SourceText(const std::string& path);

// The text from a heading, a line feed ahead, to the next heading.
std::string PageSection(const std::string& page, const std::string& heading);

// Every match: the whole, then its groups.
using Match = std::vector<std::string>;
std::vector<Match> Matches(const std::string& text, const char* pattern);
