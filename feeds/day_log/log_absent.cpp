// Reader and writer of a build without the NATS client: they say so.
#include <thread>

#include "feeds/common/feed_report.h"
#include "feeds/day_log/log_reader.h"
#include "feeds/day_log/log_writer.h"

struct LogReader::State {
  std::string Why = "this build cannot read day logs: it was made without the NATS client";
  std::string Server;
};
struct LogWriter::State {};

LogReader::LogReader(LogAccess, LogDay) : Self(std::make_unique<State>()) {}
LogReader::~LogReader() = default;
LogReader::Step LogReader::Take(std::vector<std::uint8_t>&, std::chrono::milliseconds atMost) {
  std::this_thread::sleep_for(atMost);
  return Step::Lost;
}
const std::string& LogReader::Reason() const noexcept {
  return Self->Why;
}
bool LogReader::IsCaughtUp() const noexcept {
  return false;
}
std::uint64_t LogReader::Behind() const noexcept {
  return 0;
}
void LogReader::Cancel() noexcept {}
const std::string& LogReader::Server() const noexcept {
  return Self->Server;
}

LogWriter::LogWriter(LogAccess, LogDay, int) : Self(std::make_unique<State>()) {}
LogWriter::~LogWriter() = default;
std::uint64_t LogWriter::Connect(std::chrono::milliseconds) {
  throw FeedError("this build cannot write day logs: it was made without the NATS client");
}
void LogWriter::Publish(std::uint64_t, std::uint32_t, std::span<const std::uint8_t>) {
  Connect({});
}
