// The mapping with which a day log was begun, kept beside the journal. Another mapping numbers the trades anew, so that
// going on with it would lose and double trades.
#pragma once

#include <filesystem>
#include <string>

#include "feeds/fix/trade_mapper.h"

// One line for each choice.
std::string MappingText(const MappingChoices& choices);

// True if a log of that name, which holds that many messages of the journal, was begun with this mapping, or nothing is
// known of it. Keeps the mapping in JOURNAL.NAME.mapping then, where it can be written.
bool IsMappingOfLog(const std::filesystem::path& journal, const std::string& logName, const MappingChoices& choices,
                    std::uint64_t messages);
