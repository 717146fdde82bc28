// What makes the feed of a day from its address.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "feeds/day_log/log_address.h"
#include "feeds/live/feed.h"
#include "terminal/day/day_spec.h"

// Each call makes a feed that begins with the first trade of the day; the feeds before it should end. Throws
// TerminalError.
using FeedMaker = std::function<std::unique_ptr<Feed>()>;

// How to reach the log of that day. Throws FeedError.
struct LogPlace {
  LogAccess Access;
  LogDay Day;
};
LogPlace PlaceOfLog(const DaySpec& day);

// Throws TerminalError if the address, the access or the settings are wrong. A FIX session keeps its journal below the
// working folder.
FeedMaker OpenFeeds(const DaySpec& day, const std::filesystem::path& work);
using FeedOpener = std::function<FeedMaker(const DaySpec& day, const std::filesystem::path& work)>;
