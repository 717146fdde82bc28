// Text conversions between the single-byte records and the wide windows and settings, and between wide text and the
// 16-bit text of stored blocks. Not for names of files, which never pass the code page. Any thread may call.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Through the system code page; see platform/code_page.h. The argument is used up, and NarrowToWide leaves it empty.
std::string WideToNarrow(std::wstring text);
std::wstring NarrowToWide(std::string&& text);

std::wstring NumberToWide(std::uint32_t value);

// As "%.2lf" prints it, with a point whatever the locale.
std::wstring DoubleToWide(double value);

// Characters above U+FFFF become a pair of surrogates and a pair one character again where a wide character has 32
// bits; a lone surrogate passes as it is, and what is no character at all becomes U+FFFD.
std::u16string WideToUtf16(std::wstring_view text);
std::wstring Utf16ToWide(std::u16string_view text);
