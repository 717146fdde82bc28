// The two settings of the exports in config.ini, a private profile of Windows. All other content is kept. Failures are
// silent: a file that cannot be read or written stays unchanged.
#pragma once

#include <filesystem>
#include <string>

// In the current folder at the time of each call.
inline constexpr const char* kConfigFile = "config.ini";

// [TRADECSV] ExchangeFormatCSV: exactly "TRUE" sets the flag. A missing or empty value clears it and writes "FALSE".
// Any other value leaves it unchanged.
void ReadExchangeFormatFlag(const std::filesystem::path& configFile, bool& flag);

// [PATH] Trade: converts both folders to upper case in place and, if they differ, writes and remembers the new one. The
// plug-in never reads the setting.
void SaveTradePath(const std::filesystem::path& configFile, std::string& newFolder, std::string& rememberedFolder);

// A folder as text for SaveTradePath: the bytes of the name on Linux, the code page on Windows.
std::string FolderText(const std::filesystem::path& folder);
