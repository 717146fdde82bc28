// The current folder, and names of files as wide text and back, for windows and settings. Any thread may call.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// Empty where the system has none any more.
std::filesystem::path CurrentFolder();

// A name that is no text (Linux takes any bytes) has a character for each of its bytes.
std::wstring WideOfPath(const std::filesystem::path& path);
// Empty where the text holds what no name can.
std::filesystem::path PathOfWide(std::wstring_view text);

// All bytes of a file up to a fault of reading; empty where there is none. Throws when memory runs out, where reading a
// stream line by line would end as if the file did.
std::string ReadWholeFile(const std::filesystem::path& file);
