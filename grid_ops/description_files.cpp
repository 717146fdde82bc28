#include "grid_ops/description_files.h"

#include <algorithm>
#include <array>
#include <fstream>

namespace {

// The text up to the delimiter, which is taken out of the rest with it.
std::string_view TakeUntil(std::string_view& rest, char delimiter) {
  const std::size_t end = std::min(rest.find(delimiter), rest.size());
  const std::string_view taken = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return taken;
}

std::string_view TakeLine(std::string_view& text) {
  std::string_view line = TakeUntil(text, '\n');
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// What stands between commas: one part more than there are commas.
std::vector<std::string_view> PartsOf(std::string_view line) {
  std::vector<std::string_view> parts;
  const auto commas = std::count(line.begin(), line.end(), ',');
  for (auto i = commas; i >= 0; --i) parts.push_back(TakeUntil(line, ','));
  return parts;
}

bool IsEmpty(std::string_view part) {
  return part.empty();
}

std::string ReadWhole(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text;
  std::array<char, 4096> block;
  while (file.read(block.data(), block.size()) || file.gcount() > 0)
    text.append(block.data(), static_cast<std::size_t>(file.gcount()));
  return text;
}

}  // namespace

DescriptionList ParseExchangeFormat(std::string_view text) {
  DescriptionList entries;
  while (!text.empty()) {
    const std::string_view line = TakeLine(text);
    if (line.empty()) continue;
    const auto parts = PartsOf(line);
    entries.push_back({std::string(parts[0]), {}, parts.size() > 1 ? std::string(parts[1]) : std::string()});
  }
  return entries;
}

DescriptionList ParseBookExport(std::string_view text) {
  DescriptionList entries;
  while (!text.empty()) {
    const auto parts = PartsOf(TakeLine(text));
    if (parts.size() < 2 || parts.size() > 3 || std::any_of(parts.begin(), parts.end(), IsEmpty)) continue;
    entries.push_back(
        {std::string(parts[0]), std::string(parts[1]), parts.size() > 2 ? std::string(parts[2]) : std::string()});
  }
  return entries;
}

DescriptionList ReadExchangeFormat(const std::filesystem::path& folder) {
  return ParseExchangeFormat(ReadWhole(folder / "EXCHANGETRADEFORMAT.TXT"));
}

DescriptionList ReadBookExport(const std::filesystem::path& folder) {
  return ParseBookExport(ReadWhole(folder / "TRADEBOOKEXPORT.TXT"));
}
