// LogAddress and LogAccess: where a day log is, and how its servers let one in.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// How to reach the servers. Secrets are read from their files when the connection is made.
struct LogAccess {
  std::string Servers;  // "nats://one:4222,nats://two:4222"; tls:// for TLS
  std::string User;
  std::filesystem::path PasswordFile;
  std::filesystem::path CredentialsFile;  // of NATS; instead of user and password
  std::filesystem::path Authorities;      // PEM file; empty for the system's
  bool operator==(const LogAccess&) const = default;
};

// The stream of a day: NAME_DATE in capitals, with the subject name.DATE.
struct LogDay {
  std::string Name;  // lower case letters, digits and hyphens
  std::string Date;  // yyyyMMdd

  std::string Subject() const { return Name + "." + Date; }
  std::string Stream() const;
  bool operator==(const LogDay&) const = default;
};

struct LogAddress {
  std::string Servers;
  LogDay Day;
};

// "nats://HOST[:PORT][,HOST[:PORT]...]/NAME.DATE", or tls://. Throws FeedError that says what is wrong; a user or
// password in it is refused, as everybody sees the command line of a process, and is not repeated.
LogAddress ParseLogAddress(std::string_view text);
// The servers of "nats://HOST[:PORT][,[nats://]HOST[:PORT]...]", or tls://, each with scheme and port; all are nats or
// all tls. Throws FeedError.
std::vector<std::string> ParseLogServers(std::string_view text);
// "trades.20260301". Throws FeedError.
LogDay ParseLogDay(std::string_view text);
// The access of a desk beside the address: lines "key = value" with user, password_file, credentials_file, authorities.
// Relative paths are those of the file's folder. Throws FeedError.
LogAccess ReadLogAccess(const std::filesystem::path& file, const LogAddress& address);
// Throws FeedError if these settings do not go together.
void CheckLogAccess(const LogAccess& access);
