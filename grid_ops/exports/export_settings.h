// config.ini: the two settings of the exports, in the form of the Windows private profile. What else the file holds
// stays; a file that cannot be read or written is left as it is, and nothing is reported. One thread at a time.
#pragma once

#include <filesystem>
#include <string>

// In the folder that is current when it is used.
inline constexpr const char* kConfigFile = "config.ini";

// [TRADECSV] ExchangeFormatCSV: the flag is set by exactly "TRUE" and stays as it is with any other value. Where the
// value is missing or empty, "FALSE" is written and the flag cleared.
void ReadExchangeFormatFlag(const std::filesystem::path& configFile, bool& flag);

// [PATH] Trade: both folders turn to upper case in place, and where they differ the new one is written and remembered.
// The plug-in never reads it back.
void SaveTradePath(const std::filesystem::path& configFile, std::string& newFolder, std::string& rememberedFolder);

// A folder as SaveTradePath takes it: in the bytes of file names on Linux, in the code page on Windows.
std::string FolderText(const std::filesystem::path& folder);
