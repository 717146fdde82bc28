#include "grid_ops/description_files.h"

#include <algorithm>

#include "foundations/paths.h"
#include "foundations/text_tools.h"

namespace {

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

}  // namespace

DescriptionList ParseExchangeFormat(std::string_view text) {
  DescriptionList entries;
  text = WithoutByteOrderMark(text);
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
  text = WithoutByteOrderMark(text);
  while (!text.empty()) {
    const auto parts = PartsOf(TakeLine(text));
    if (parts.size() < 2 || parts.size() > 3 || std::any_of(parts.begin(), parts.end(), IsEmpty)) continue;
    entries.push_back(
        {std::string(parts[0]), std::string(parts[1]), parts.size() > 2 ? std::string(parts[2]) : std::string()});
  }
  return entries;
}

DescriptionList ReadExchangeFormat(const std::filesystem::path& folder) {
  return ParseExchangeFormat(ReadWholeFile(folder / "EXCHANGETRADEFORMAT.TXT"));
}

DescriptionList ReadBookExport(const std::filesystem::path& folder) {
  return ParseBookExport(ReadWholeFile(folder / "TRADEBOOKEXPORT.TXT"));
}
