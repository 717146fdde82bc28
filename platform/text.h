// 8-bit text to wide text and back through the system code page (the ANSI code page on Windows, Windows-1252 on Linux),
// the system's error texts, and the console.
#pragma once

#include <string>
#include <string_view>

// The number of the code page in use.
unsigned SystemCodePage() noexcept;

// Each byte becomes its character in the code page. In Windows-1252 the five bytes without a character become U+0081,
// U+008D, U+008F, U+0090 and U+009D, so that no byte is lost there and back.
std::wstring CodePageToWide(std::string_view text);
// Into a place with room for one character per byte; returns their count. Does not allocate.
std::size_t CodePageToWide(std::string_view text, wchar_t* to) noexcept;

// A character outside the code page becomes '?'.
std::string WideToCodePage(std::wstring_view text);

// The system's text for an error number, in one line; empty if the system has none.
std::string SystemErrorText(unsigned long errorNumber);

// Closes the console that Windows opens for a program started from the desktop; true if there was one, and output is
// not visible from then on. Any other console stays. Main thread, before anything is written.
bool CloseOwnConsole() noexcept;
