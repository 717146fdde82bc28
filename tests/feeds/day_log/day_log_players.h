// A writer and a reader that play a whole day over a log, whatever happens to its servers.
#pragma once

#include <atomic>
#include <chrono>
#include <numeric>
#include <thread>
#include <vector>

#include "feeds/common/feed_report.h"
#include "feeds/day_log/log_reader.h"
#include "feeds/day_log/log_writer.h"
#include "tests/feeds/day_log/log_server.h"

inline const LogDay kDay{"trades", "20260301"};

inline std::chrono::steady_clock::time_point Bound(int seconds = 60) {
  return std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
}
inline bool IsOver(std::chrono::steady_clock::time_point bound) {
  return std::chrono::steady_clock::now() > bound;
}

// The trade ids of a whole day.
inline std::vector<std::uint32_t> IdsUpTo(std::uint32_t last) {
  std::vector<std::uint32_t> ids(last);
  std::iota(ids.begin(), ids.end(), 1u);
  return ids;
}

// Writes messages up to `last` in batches; `written` tells how far it is.
inline void WriteDay(LogWriter& writer, std::uint32_t last, std::uint32_t batch, std::atomic<std::uint32_t>& written) {
  const auto bound = Bound(120);
  bool connected = false;
  while (written < last && !IsOver(bound)) try {
      if (!connected) written = static_cast<std::uint32_t>(writer.Connect(std::chrono::seconds(5)));
      connected = true;
      const std::uint32_t count = std::min(batch, last - written);
      if (count == 0) return;
      writer.Publish(written, count, TradeMessages(written + 1, count));
      written += count;
    } catch (const FeedError&) {
      connected = false;
    }
}

// Reads until that many messages have come, or the time is over.
inline std::vector<std::uint32_t> ReadDay(LogReader& reader, std::size_t count,
                                          std::chrono::steady_clock::time_point bound = Bound()) {
  std::vector<std::uint8_t> messages;
  while (messages.size() < count * TradeMessages(1, 1).size() && !IsOver(bound))
    reader.Take(messages, std::chrono::milliseconds(100));
  return TradeIds(messages);
}

// Appends until there are that many messages, or the time is over.
inline std::vector<std::uint32_t> ReadOn(LogReader& reader, std::size_t count, std::vector<std::uint8_t>& messages) {
  const auto bound = Bound();
  while (TradeIds(messages).size() < count && !IsOver(bound)) reader.Take(messages, std::chrono::milliseconds(50));
  return TradeIds(messages);
}

// Reads until that step, or the time is over; what comes meanwhile is appended.
inline bool ReadUntil(LogReader& reader, LogReader::Step step, std::vector<std::uint8_t>& messages) {
  const auto bound = Bound();
  while (!IsOver(bound))
    if (reader.Take(messages, std::chrono::milliseconds(50)) == step) return true;
  return false;
}
