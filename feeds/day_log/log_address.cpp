#include "feeds/day_log/log_address.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <fstream>

#include "feeds/common/feed_report.h"

namespace {

constexpr std::string_view kSchemes[] = {"nats://", "tls://"};
constexpr std::string_view kDefaultPort = ":4222";

bool IsLowerOrDigit(char c) {
  return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

bool IsHostCharacter(char c) {
  return IsLowerOrDigit(c) || (c >= 'A' && c <= 'Z') || c == '.' || c == '-' || c == '_';
}

std::string_view SchemeOf(std::string_view text) {
  for (const std::string_view scheme : kSchemes)
    if (text.starts_with(scheme)) return scheme;
  return {};
}

bool IsPort(std::string_view text) {
  unsigned port = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
  return error == std::errc() && end == text.data() + text.size() && port > 0 && port <= 65535;
}

void RefuseUserIn(std::string_view text) {
  if (text.find('@') != std::string_view::npos)
    throw FeedError("the address of a log holds no user or password: put them into the file of --log-access");
}

// Takes what stands before the separator off the text.
std::string_view TakeUntil(std::string_view& text, char separator) {
  const std::size_t end = std::min(text.find(separator), text.size());
  const std::string_view taken = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return taken;
}

// "HOST:PORT" of "HOST[:PORT]", where HOST may be an IPv6 address in brackets.
std::string HostAndPort(std::string_view text) {
  const bool bracketed = text.starts_with('[');
  const std::size_t hostEnd =
      bracketed ? std::min(text.find(']'), text.size() - 1) + 1 : std::min(text.find(':'), text.size());
  const std::string_view host = text.substr(0, hostEnd);
  const std::string_view port = text.substr(hostEnd);
  const auto isAddressCharacter = [](char c) { return c == ':' || IsHostCharacter(c); };
  const bool isHost = bracketed ? host.size() > 3 && host.ends_with(']') &&
                                      std::ranges::all_of(host.substr(1, host.size() - 2), isAddressCharacter)
                                : !host.empty() && std::ranges::all_of(host, IsHostCharacter);
  if (!isHost) throw FeedError("'" + std::string(text) + "' is no host of a log");
  if (port.empty()) return std::string(host) + std::string(kDefaultPort);
  if (!port.starts_with(':') || !IsPort(port.substr(1)))
    throw FeedError("'" + std::string(text) + "' has no port between 1 and 65535 behind its host");
  return std::string(text);
}

bool IsDate(std::string_view text) {
  int year = 0, month = 0, day = 0;
  if (text.size() != 8 || !std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; })) return false;
  std::from_chars(text.data(), text.data() + 4, year);
  std::from_chars(text.data() + 4, text.data() + 6, month);
  std::from_chars(text.data() + 6, text.data() + 8, day);
  return std::chrono::year_month_day(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                     std::chrono::day(static_cast<unsigned>(day)))
      .ok();
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

struct AccessKey {
  std::string_view Name;
  std::string LogAccess::*Text;
  std::filesystem::path LogAccess::*File;
};

constexpr AccessKey kAccessKeys[] = {
    {"user", &LogAccess::User, nullptr},
    {"password_file", nullptr, &LogAccess::PasswordFile},
    {"credentials_file", nullptr, &LogAccess::CredentialsFile},
    {"authorities", nullptr, &LogAccess::Authorities},
};

// False if there is no such key.
bool SetAccess(LogAccess& access, std::string_view key, std::string_view value, const std::filesystem::path& folder) {
  const auto* row = std::ranges::find(kAccessKeys, key, &AccessKey::Name);
  if (row == std::end(kAccessKeys)) return false;
  if (row->Text != nullptr)
    access.*row->Text = value;
  else
    access.*row->File = folder / std::filesystem::path(std::u8string(value.begin(), value.end()));
  return true;
}

}  // namespace

std::string LogDay::Stream() const {
  std::string stream = Name + "_" + Date;
  for (char& c : stream)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return stream;
}

LogDay ParseLogDay(std::string_view text) {
  const std::string_view whole = text;
  LogDay day;
  day.Name = TakeUntil(text, '.');
  day.Date = text;
  const bool isName = !day.Name.empty() && day.Name.size() <= 64 &&
                      std::ranges::all_of(day.Name, [](char c) { return c == '-' || IsLowerOrDigit(c); });
  if (!isName || !IsDate(day.Date))
    throw FeedError("'" + std::string(whole) +
                    "' is no day of a log: a name of lower case letters, digits and hyphens, a point and yyyyMMdd, "
                    "such as trades.20260301");
  return day;
}

std::vector<std::string> ParseLogServers(std::string_view text) {
  RefuseUserIn(text);
  const std::string_view scheme = SchemeOf(text);
  if (scheme.empty()) throw FeedError("the address of a log begins with nats:// or tls://");
  std::vector<std::string> servers;
  do {
    std::string_view server = Trimmed(TakeUntil(text, ','));
    if (const std::string_view own = SchemeOf(server); own == scheme)
      server.remove_prefix(own.size());
    else if (!own.empty())
      throw FeedError("the servers of a log are all nats:// or all tls://");
    servers.push_back(std::string(scheme) + HostAndPort(server));
  } while (!text.empty());
  return servers;
}

LogAddress ParseLogAddress(std::string_view text) {
  RefuseUserIn(text);
  const std::size_t scheme = SchemeOf(text).size();
  if (scheme == 0) throw FeedError("the address of a log begins with nats:// or tls://");
  const std::size_t slash = text.rfind('/');
  if (slash < scheme) throw FeedError("the address of a log ends with its day, such as /trades.20260301");
  LogAddress address;
  for (const std::string& server : ParseLogServers(text.substr(0, slash)))
    address.Servers += (address.Servers.empty() ? "" : ",") + server;
  address.Day = ParseLogDay(text.substr(slash + 1));
  return address;
}

void CheckLogAccess(const LogAccess& access) {
  if (!access.CredentialsFile.empty() && !(access.User.empty() && access.PasswordFile.empty()))
    throw FeedError("credentials_file stands instead of user and password_file");
  if (access.User.empty() != access.PasswordFile.empty())
    throw FeedError("user and password_file of a log go together");
}

LogAccess ReadLogAccess(const std::filesystem::path& file, const LogAddress& address) {
  const auto at = [&file](int line) { return file.string() + ":" + std::to_string(line) + ": "; };
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw FeedError(file.string() + " cannot be read");
  LogAccess access;
  access.Servers = address.Servers;
  std::string text;
  for (int line = 1; std::getline(stream, text); ++line) {
    std::string_view rest = Trimmed(text);
    if (rest.empty() || rest.starts_with('#')) continue;
    if (rest.find('=') == std::string_view::npos) throw FeedError(at(line) + "this is no line 'key = value'");
    const std::string_view key = Trimmed(TakeUntil(rest, '='));
    const std::string_view value = Trimmed(rest);
    if (key == "password") throw FeedError(at(line) + "a password stands in a file of its own, see password_file");
    if (value.empty()) throw FeedError(at(line) + "'" + std::string(key) + "' has no value");
    if (!SetAccess(access, key, value, file.parent_path()))
      throw FeedError(at(line) + "'" + std::string(key) + "' is no key of the access to a log");
  }
  try {
    CheckLogAccess(access);
  } catch (const FeedError& error) {
    throw FeedError(file.string() + ": " + error.what());
  }
  return access;
}
