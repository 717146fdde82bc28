#include "foundations/paths.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <system_error>
#include <type_traits>

#include "foundations/text_tools.h"

namespace fs = std::filesystem;

namespace {

constexpr fs::path::value_type kSeparators[] = {'\\', '/', 0};

// Joins texts, so that a part that looks like a drive or a root does not replace the path.
void AppendPart(fs::path& path, const fs::path::string_type& part) {
  path += fs::path::preferred_separator;
  path += part;
}

}  // namespace

fs::path CurrentFolder() {
  std::error_code ignored;
  return fs::current_path(ignored);
}

// By UTF-16, which the standard library converts without a locale; wide text it would convert with that of "C".
std::wstring WideOfPath(const fs::path& path) try {
  return Utf16ToWide(path.u16string());
} catch (const fs::filesystem_error&) {
  std::wstring text;
  std::ranges::transform(path.native(), std::back_inserter(text), [](fs::path::value_type unit) {
    return static_cast<wchar_t>(static_cast<std::make_unsigned_t<fs::path::value_type>>(unit));
  });
  return text;
}

fs::path PathOfWide(std::wstring_view text) try { return WideToUtf16(text); } catch (const fs::filesystem_error&) {
  return {};
}

fs::path BuildFolderPath(const fs::path& relativeFolder, const fs::path& fileName, const fs::path& baseFolder) {
  if (relativeFolder.empty()) return {};
  fs::path path = baseFolder;
  const fs::path::string_type& parts = relativeFolder.native();
  for (std::size_t at = 0; at < parts.size();) {
    const std::size_t end = std::min(parts.find_first_of(kSeparators, at), parts.size());
    if (end > at) {
      AppendPart(path, parts.substr(at, end - at));
      std::error_code ignored;
      fs::create_directory(path, ignored);
    }
    at = end + 1;
  }
  if (!fileName.empty()) AppendPart(path, fileName.native());
  return path;
}

std::string ReadWholeFile(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::string text;
  std::array<char, 4096> block;
  while (stream.read(block.data(), block.size()) || stream.gcount() > 0)
    text.append(block.data(), static_cast<std::size_t>(stream.gcount()));
  return text;
}
