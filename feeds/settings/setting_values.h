// SetValue: puts the text of one key into the settings.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "feeds/settings/settings_table.h"

// Returns what is wrong with the value, or empty text; then the settings have it. Relative paths are those of the
// folder.
std::string SetValue(const SettingKey& key, std::string_view value, const std::filesystem::path& folder,
                     FeedSettings& settings);
