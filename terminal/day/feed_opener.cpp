#include "terminal/day/feed_opener.h"

#include <utility>

#include "feeds/live/fix_feed.h"
#include "feeds/live/log_feed.h"
#include "terminal/common/errors.h"

namespace {

FeedMaker OpenLog(const DaySpec& day) {
  return [log = PlaceOfLog(day)] { return std::make_unique<LogFeed>(log.Access, log.Day); };
}

}  // namespace

LogPlace PlaceOfLog(const DaySpec& day) {
  const LogAddress address = ParseLogAddress(day.Address);
  if (!day.Access.empty()) return {ReadLogAccess(day.Access, address), address.Day};
  LogAccess open;
  open.Servers = address.Servers;
  return {open, address.Day};
}

FeedMaker OpenFeeds(const DaySpec& day, const std::filesystem::path& work) {
  try {
    return day.What == DaySpec::Kind::Log ? OpenLog(day) : OpenFixFeeds(day.File, work / "journal");
  } catch (const FeedError& failure) {
    throw TerminalError(ExitCode::File, failure.what());
  }
}
