#include "tests/documents/page.h"

#include <iterator>
#include <regex>
#include <sstream>

std::vector<std::uint8_t> HexBlock(const std::string& page, const std::string& behind) {
  std::vector<std::uint8_t> bytes;
  for (const std::string& line : FencedBlock(page, behind, "hex")) {
    std::istringstream pairs(line.substr(0, line.find('|')));
    for (unsigned byte; pairs >> std::hex >> byte;) bytes.push_back(static_cast<std::uint8_t>(byte));
  }
  return bytes;
}

std::string SourceText(const std::string& path) {
  std::ifstream file(std::string(TRADEBOOK_SOURCE_FOLDER "/") + path, std::ios::binary);
  std::string text(std::istreambuf_iterator<char>(file), {});
  if (text.empty()) throw std::runtime_error(path + " cannot be read");
  std::erase(text, '\r');
  return text;
}

std::vector<Match> Matches(const std::string& text, const char* pattern) {
  const std::regex expression(pattern);
  std::vector<Match> matches;
  for (std::sregex_iterator at(text.begin(), text.end(), expression); at != std::sregex_iterator(); ++at)
    matches.emplace_back(at->begin(), at->end());
  return matches;
}
