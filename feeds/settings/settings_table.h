// The keys of a settings file, one row each: where its value goes, what it may be, its default and what the sample says
// of it.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <variant>

#include "feeds/settings/feed_settings.h"

enum class SettingKind : std::uint8_t {
  Text,
  Version,  // of FIX
  Number,   // within Least and Most
  Decimal,  // above 0
  YesNo,
  Time,     // HH:MM:SS
  Day,      // of the week
  LogName,  // lower case letters, digits and hyphens
  Servers,  // nats:// or tls:// addresses
  Folder,   // made when it is used
  File,
  SecretFile,  // a file that nobody but its owner may read
  Secret,      // the same; the value is its first line
};

// One of the fields of FeedSettings.
template <typename T>
using FieldOf = T& (*)(FeedSettings&);
using SettingPlace = std::variant<FieldOf<std::string>, FieldOf<std::filesystem::path>, FieldOf<int>,
                                  FieldOf<std::uint16_t>, FieldOf<double>, FieldOf<bool>>;

struct SettingKey {
  const char* Section;
  const char* Name;
  SettingKind Kind;
  SettingPlace Place;
  const char* Default;  // empty for none
  const char* Comment;
  bool IsRequired = false;
  int Least = 0;
  int Most = 0;
};

// In the order of the sample, with the keys of a section together.
std::span<const SettingKey> SettingKeys() noexcept;
