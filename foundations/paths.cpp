#include "foundations/paths.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <system_error>
#include <type_traits>

#include "foundations/text_tools.h"

namespace fs = std::filesystem;

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

std::string ReadWholeFile(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::string text;
  std::array<char, 4096> block;
  while (stream.read(block.data(), block.size()) || stream.gcount() > 0)
    text.append(block.data(), static_cast<std::size_t>(stream.gcount()));
  return text;
}
