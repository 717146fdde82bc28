// EventLog: what happens, as one line of JSON each, for programs that watch the gateway. Texts of the counterparty are
// made harmless here, as they may hold any byte.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

struct EventField {
  std::string Name;
  std::variant<std::string, std::uint64_t, bool> Value;
};
using EventFields = std::vector<EventField>;

// {"time":"2026-03-01T09:00:00.123Z","event":"alarm","kind":"gap"} and a line feed. Always valid JSON in UTF-8: a byte
// that is not part of a UTF-8 character becomes the character of that number.
std::string JsonLine(std::int64_t timeMs, std::string_view event, const EventFields& fields);

// One line that a terminal may show: the SOH between FIX fields becomes |, other control characters and bytes that are
// no UTF-8 become ?.
std::string PlainLine(std::string_view text);

class EventLog {
 public:
  // Appends to the file, or makes it for its owner to write and the group to read; writes nothing without a name.
  // Throws FeedError.
  explicit EventLog(const std::filesystem::path& file);
  ~EventLog();
  EventLog(const EventLog&) = delete;
  EventLog& operator=(const EventLog&) = delete;

  // One write for each line, so that several processes may append. False, with the system's error number, if it failed.
  bool Write(std::string_view event, const EventFields& fields, int& errorNumber) const;

 private:
  int Handle;
};
