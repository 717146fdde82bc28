#include "feeds/live/fix_feed.h"

std::function<std::unique_ptr<Feed>()> OpenFixFeeds(const std::filesystem::path& /*settings*/,
                                                    const std::filesystem::path& /*journalFolder*/) {
  throw FeedError("FIX sessions run in the gateway, on Linux; connect to the day log that it fills");
}
