// 8-bit text to wide text and back through the system code page: the ANSI code page on Windows, Windows-1252 on
// Linux. Not UTF-8 and not UTF-16: names of files never come through here, and stored 16-bit text has
// WideToUtf16 of foundations/wide_text.h. Any thread may call.
#pragma once

#include <string>
#include <string_view>

// The number of the code page in use.
unsigned SystemCodePage() noexcept;

// Each byte becomes the character that the code page gives it. In Windows-1252 the five bytes without a character
// become U+0081, U+008D, U+008F, U+0090 and U+009D, so that all 256 bytes survive the way there and back.
std::wstring CodePageToWide(std::string_view text);
// The same into a place with room for a character per byte; returns how many there are. Takes no memory.
std::size_t CodePageToWide(std::string_view text, wchar_t* to) noexcept;

// A character outside the code page becomes '?'.
std::string WideToCodePage(std::wstring_view text);
