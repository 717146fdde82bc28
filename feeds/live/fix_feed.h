// A FIX session of the terminal's own as a feed: what the session takes goes into a journal, and feeds read the
// journal.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "feeds/live/feed.h"

// Each call of the result makes a feed that reads the journal of the day from its begin. The session begins with the
// first feed and ends with the result and all feeds; that end waits for the logout, some seconds at most. Throws
// FeedError if the settings are wrong; on Windows always, as sessions run in the gateway there.
//
// A feed is caught up when it has given what the journal held at the logon, or at the begin if there is no logon for a
// while. It ends with the day of the session; the next one reads the next day.
std::function<std::unique_ptr<Feed>()> OpenFixFeeds(const std::filesystem::path& settings,
                                                    const std::filesystem::path& journalFolder);
