// LiveFrom: where in a day the download ends and the live part begins, as the user says it. Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

struct LiveFrom {
  enum class Kind : std::uint8_t {
    AsNumbered,  // each message keeps its number: 8111 is download, 9101 is live
    Count,       // so many trades are download
    TimeOfDay,   // trades before that second of the first trade's date are download
    Instant,     // trades before that second are download
  };
  Kind By = Kind::AsNumbered;
  std::int64_t Value = 0;
};

// "5000", "12:00:00" or "20131007-12:00:00"; nothing for any other text.
std::optional<LiveFrom> ParseLiveFrom(std::string_view text);
