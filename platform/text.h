// 8-bit text to wide text and back through the system code page: the ANSI code page on Windows, Windows-1252 on Linux.
// Any thread may call.
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

// The system's own text for the number of a failed call. Any thread may call.

// In one line; empty if the system has none.
std::string SystemErrorText(unsigned long errorNumber);

// The console that a program writes to. Main thread, at the start.

// A program with windows that the desktop has started stands in a console made for it alone: closes that. True when it
// did: nothing that is written can be seen from then on. A console that was there before stays, as does everything on a
// platform without consoles of programs.
bool CloseOwnConsole() noexcept;
