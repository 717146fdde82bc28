#include "feeds/day_log/log_address.h"

#include <gtest/gtest.h>

#include "feeds/common/feed_report.h"
#include "tests/support/own_folder.h"

namespace {

// What the call throws; empty if it does not.
template <typename Call>
std::string MistakeOf(Call call) {
  try {
    call();
  } catch (const FeedError& error) {
    return error.what();
  }
  return {};
}

TEST(LogAddressTest, ReadsServersAndDay) {
  const struct {
    const char* Text;
    const char* Servers;
    const char* Subject;
    const char* Stream;
  } kCases[] = {
      {"nats://desk-log/trades.20260301", "nats://desk-log:4222", "trades.20260301", "TRADES_20260301"},
      {"tls://a.b:1,C_d,[::1]:65535/x-1.20240229", "tls://a.b:1,tls://C_d:4222,tls://[::1]:65535", "x-1.20240229",
       "X-1_20240229"},
      {"nats://one:4222,nats://two:4223/t.20260301", "nats://one:4222,nats://two:4223", "t.20260301", "T_20260301"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.Text);
    const LogAddress address = ParseLogAddress(c.Text);
    EXPECT_EQ(address.Servers, c.Servers);
    EXPECT_EQ(address.Day.Subject(), c.Subject);
    EXPECT_EQ(address.Day.Stream(), c.Stream);
  }
}

TEST(LogAddressTest, TellsMistakes) {
  constexpr const char* kCases[][2] = {
      {"", "begins with nats:// or tls://"},
      {"NATS://h/t.20260301", "begins with nats:// or tls://"},
      {"http://h/t.20260301", "begins with nats:// or tls://"},
      {"nats:///t.20260301", "'' is no host"},
      {"nats://h,,i/t.20260301", "'' is no host"},
      {"nats://h i/t.20260301", "'h i' is no host"},
      {"nats://[::1/t.20260301", "'[::1' is no host"},
      {"nats://[::1]x/t.20260301", "no port between 1 and 65535"},
      {"nats://h:/t.20260301", "no port between 1 and 65535"},
      {"nats://h:0/t.20260301", "no port between 1 and 65535"},
      {"nats://h:65536/t.20260301", "no port between 1 and 65535"},
      {"nats://h:42x/t.20260301", "no port between 1 and 65535"},
      {"nats://h,tls://i/t.20260301", "all nats:// or all tls://"},
      {"nats://h", "ends with its day"},
      {"nats://h/", "'' is no day of a log"},
      {"nats://h/t.20260229", "'t.20260229' is no day"},
      {"nats://h/t.2026030", "'t.2026030' is no day"},
      {"nats://h/t.202603011", "'t.202603011' is no day"},
      {"nats://h/T.20260301", "'T.20260301' is no day"},
      {"nats://h/a.b.20260301", "'a.b.20260301' is no day"},
      {"nats://h/.20260301", "'.20260301' is no day"},
      {"nats://h/*.20260301", "'*.20260301' is no day"},
      {"nats://desk:hidden@h/t.20260301", "holds no user or password"},
      {"nats://h/t.20260301@hidden", "holds no user or password"},
  };
  for (const auto& [text, mistake] : kCases) {
    SCOPED_TRACE(text);
    const std::string told = MistakeOf([address = text] { ParseLogAddress(address); });
    EXPECT_NE(told.find(mistake), std::string::npos) << told;
    EXPECT_EQ(told.find("hidden"), std::string::npos) << told;
  }
}

class LogAccessFileTest : public OwnFolder {
 protected:
  LogAccess Read(const std::string& text) {
    WriteFile(Folder / "access", text);
    return ReadLogAccess(Folder / "access", ParseLogAddress("nats://h/t.20260301"));
  }
};

TEST_F(LogAccessFileTest, ReadsKeysBesideTheFile) {
  const LogAccess access =
      Read("# of the desk\r\n\r\n user =desk one\t\r\npassword_file = p w\nauthorities=/etc/ca.pem");
  EXPECT_EQ(access, (LogAccess{"nats://h:4222", "desk one", Folder / "p w", {}, "/etc/ca.pem"}));
  EXPECT_EQ(Read("credentials_file = a.creds\n").CredentialsFile, Folder / "a.creds");
  EXPECT_EQ(Read(""), (LogAccess{"nats://h:4222", {}, {}, {}, {}}));
}

TEST_F(LogAccessFileTest, TellsMistakesWithTheirLine) {
  constexpr const char* kCases[][2] = {
      {"user desk", "access:1: this is no line"},
      {"\nuser =", "access:2: 'user' has no value"},
      {"User = desk", "access:1: 'User' is no key"},
      {"password = hidden", "access:1: a password stands in a file of its own"},
      {"user = desk", "user and password_file of a log go together"},
      {"password_file = p", "user and password_file of a log go together"},
      {"credentials_file = c\nuser = desk\npassword_file = p", "stands instead of user and password_file"},
  };
  for (const auto& [text, mistake] : kCases) {
    SCOPED_TRACE(text);
    const std::string told = MistakeOf([this, content = text] { Read(content); });
    EXPECT_NE(told.find(mistake), std::string::npos) << told;
    EXPECT_EQ(told.find("hidden"), std::string::npos) << told;
  }
  EXPECT_NE(MistakeOf([this] { ReadLogAccess(Folder / "none", {}); }).find("none cannot be read"), std::string::npos);
}

}  // namespace
