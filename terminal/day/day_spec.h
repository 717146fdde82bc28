// DaySpec: which day plays: a file, or a feed by the address of its log or by the settings of its FIX session.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

struct DaySpec {
  enum class Kind : std::uint8_t { File, Log, Fix };

  DaySpec() = default;
  // As the user writes it: "nats://" and "tls://" begin the address of a log, "fix:" the path of a settings file; all
  // else is the path of a day. Paths become absolute. The access belongs to a log; empty for none.
  explicit DaySpec(const std::filesystem::path& given, const std::filesystem::path& access = {});

  bool IsFeed() const noexcept { return What != Kind::File; }
  // What the constructor takes.
  std::filesystem::path Given() const;
  // For titles: the name of the file, or what stands behind the servers of the log.
  std::string Name() const;
  bool operator==(const DaySpec&) const = default;

  Kind What = Kind::File;
  std::filesystem::path File;  // the day, or the settings of the session
  std::string Address;         // of a log
  std::filesystem::path Access;
};
