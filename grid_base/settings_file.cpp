#include "grid_base/settings_file.h"

#include <istream>

#include "foundations/wide_text.h"
#include "grid_base/settings_text.h"

std::string SettingsFileBytes(const CVELDPXMLNode& root) {
  std::string bytes;
  for (const char character : WideToNarrow(SerializeNode(root))) {
    if (character == '\n') bytes += '\r';
    bytes += character;
  }
  return bytes;
}

std::optional<std::wstring> JoinedLines(std::istream& file) {
  std::string text;
  for (std::string line; std::getline(file, line);) {
    if (line.ends_with('\r')) line.pop_back();
    text += line;
  }
  if (file.bad()) return std::nullopt;
  return NarrowToWide(std::move(text));
}
