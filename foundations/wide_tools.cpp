#include "foundations/wide_tools.h"

#include <algorithm>
#include <cwchar>
#include <limits>

namespace {

struct CapitalRange {
  wchar_t First;
  wchar_t Last;
  int ToSmall;
};
constexpr CapitalRange kCapitals[] = {
    {L'A', L'Z', 32},   {0xC0, 0xD6, 32},      {0xD8, 0xDE, 32},   {0x152, 0x152, 1},
    {0x160, 0x160, 1},  {0x178, 0x178, -0x79}, {0x17D, 0x17D, 1},  {0x391, 0x3A1, 32},
    {0x3A3, 0x3A9, 32}, {0x400, 0x40F, 80},    {0x410, 0x42F, 32},
};

wchar_t SmallLetter(wchar_t letter) {
  for (const CapitalRange& range : kCapitals)
    if (letter >= range.First && letter <= range.Last) return static_cast<wchar_t>(letter + range.ToSmall);
  return letter;
}

}  // namespace

std::wstring_view TrimWide(std::wstring_view text) {
  while (!text.empty() && IsWideSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsWideSpace(text.back())) text.remove_suffix(1);
  return text;
}

std::wstring LowerWide(std::wstring text) {
  LowerInPlace(text);
  return text;
}

void LowerInPlace(std::span<wchar_t> text) noexcept {
  std::transform(text.begin(), text.end(), text.begin(), SmallLetter);
}

std::int32_t WideToNumber(const std::wstring& text) {
  const long long number = std::wcstoll(text.c_str(), nullptr, 10);
  return static_cast<std::int32_t>(std::clamp<long long>(number, std::numeric_limits<std::int32_t>::min(),
                                                         std::numeric_limits<std::int32_t>::max()));
}
