#include "feeds/settings/setting_values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fstream>
#include <optional>

#include "foundations/text_tools.h"

namespace {

namespace fs = std::filesystem;

struct Value {
  const SettingKey& Key;
  std::string_view Text;
  const fs::path& Folder;
  FeedSettings& Settings;

  fs::path Path() const { return (Folder / fs::path(Text)).lexically_normal(); }
};

template <typename T>
T& Place(const Value& value) {
  return std::get<FieldOf<T>>(value.Key.Place)(value.Settings);
}

template <typename T>
std::optional<T> NumberOf(std::string_view text) {
  T number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::string SetText(const Value& value) {
  Place<std::string>(value) = value.Text;
  return {};
}

std::string SetVersion(const Value& value) {
  for (const std::string_view known : {"FIX.4.2", "FIX.4.4", "FIXT.1.1"})
    if (value.Text == known) return SetText(value);
  return "must be FIX.4.2, FIX.4.4 or FIXT.1.1";
}

std::string SetNumber(const Value& value) {
  const auto number = NumberOf<int>(value.Text);
  if (!number || *number < value.Key.Least || *number > value.Key.Most)
    return "must be a number from " + std::to_string(value.Key.Least) + " to " + std::to_string(value.Key.Most);
  if (std::holds_alternative<FieldOf<int>>(value.Key.Place))
    Place<int>(value) = *number;
  else
    Place<std::uint16_t>(value) = static_cast<std::uint16_t>(*number);
  return {};
}

std::string SetDecimal(const Value& value) {
  const auto number = NumberOf<double>(value.Text);
  if (!number || !std::isfinite(*number) || *number <= 0) return "must be a number above 0, like 1 or 0.5";
  Place<double>(value) = *number;
  return {};
}

std::string SetYesNo(const Value& value) {
  if (value.Text != "yes" && value.Text != "no") return "must be yes or no";
  Place<bool>(value) = value.Text == "yes";
  return {};
}

std::string SetTime(const Value& value) {
  const std::string_view text = value.Text;
  const auto part = [text](std::size_t at, unsigned most) {
    const auto number = NumberOf<unsigned>(text.substr(at, 2));
    return number && *number <= most;
  };
  if (text.size() != 8 || text[2] != ':' || text[5] != ':' || !part(0, 23) || !part(3, 59) || !part(6, 59))
    return "must be a time in UTC, like 08:30:00";
  return SetText(value);
}

std::string SetDay(const Value& value) {
  for (const std::string_view day : {"monday", "tuesday", "wednesday", "thursday", "friday", "saturday", "sunday"})
    if (value.Text == day) return SetText(value);
  return "must be a day of the week, like monday";
}

bool IsNameCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-';
}

std::string SetLogName(const Value& value) {
  if (!std::ranges::all_of(value.Text, IsNameCharacter)) return "may have lower case letters, digits and hyphens";
  return SetText(value);
}

std::string SetServers(const Value& value) {
  for (const std::string& server : SplitText(value.Text, ',')) {
    if (!server.starts_with("nats://") && !server.starts_with("tls://"))
      return "must be addresses like nats://HOST:4222 or tls://HOST:4222, separated by commas";
    if (server.find('@') != std::string::npos) return "must not hold a user or password: use user and password_file";
  }
  return SetText(value);
}

std::string SetPath(const Value& value) {
  if (std::holds_alternative<FieldOf<std::string>>(value.Key.Place))
    Place<std::string>(value) = value.Path().string();
  else
    Place<fs::path>(value) = value.Path();
  return {};
}

std::string SetFolder(const Value& value) {
  const fs::path folder = value.Path();
  std::error_code ignored;
  if (fs::exists(folder, ignored) && !fs::is_directory(folder, ignored)) return folder.string() + " is not a folder";
  return SetPath(value);
}

std::string WhyUnreadable(const fs::path& file) {
  std::error_code ignored;
  if (!fs::exists(file, ignored)) return file.string() + " does not exist";
  if (!fs::is_regular_file(file, ignored) || !std::ifstream(file)) return file.string() + " cannot be read";
  return {};
}

std::string SetFile(const Value& value) {
  const std::string reason = WhyUnreadable(value.Path());
  return reason.empty() ? SetPath(value) : reason;
}

// The owner may do as he likes with it.
std::string WhyNoSecret(const fs::path& file) {
  std::string reason = WhyUnreadable(file);
  std::error_code error;
  const fs::perms others = fs::perms::group_all | fs::perms::others_all;
  if (reason.empty() && (fs::status(file, error).permissions() & others) != fs::perms::none)
    reason = file.string() + " holds a secret that others may read or change: chmod 600 it";
  return reason;
}

std::string SetSecretFile(const Value& value) {
  const std::string reason = WhyNoSecret(value.Path());
  return reason.empty() ? SetPath(value) : reason;
}

std::string SetSecret(const Value& value) {
  std::string reason = WhyNoSecret(value.Path());
  if (!reason.empty()) return reason;
  std::ifstream stream(value.Path(), std::ios::binary);
  std::string line;
  std::getline(stream, line);
  if (line.ends_with('\r')) line.pop_back();
  if (line.empty()) return value.Path().string() + " has no password in its first line";
  if (std::ranges::any_of(line, [](unsigned char c) { return c < ' '; }))
    return value.Path().string() + " has control characters in its first line";
  Place<std::string>(value) = std::move(line);
  return {};
}

}  // namespace

std::string SetValue(const SettingKey& key, std::string_view value, const fs::path& folder, FeedSettings& settings) {
  const Value given{key, value, folder, settings};
  switch (key.Kind) {
    case SettingKind::Text:
      return SetText(given);
    case SettingKind::Version:
      return SetVersion(given);
    case SettingKind::Number:
      return SetNumber(given);
    case SettingKind::Decimal:
      return SetDecimal(given);
    case SettingKind::YesNo:
      return SetYesNo(given);
    case SettingKind::Time:
      return SetTime(given);
    case SettingKind::Day:
      return SetDay(given);
    case SettingKind::LogName:
      return SetLogName(given);
    case SettingKind::Servers:
      return SetServers(given);
    case SettingKind::Folder:
      return SetFolder(given);
    case SettingKind::File:
      return SetFile(given);
    case SettingKind::SecretFile:
      return SetSecretFile(given);
    case SettingKind::Secret:
      return SetSecret(given);
  }
  return {};
}
