// Who is let into a day log, and what those are told who are not.

#include <gtest/gtest.h>

#include "feeds/day_log/secret_file.h"
#include "tests/feeds/day_log/day_log_players.h"
#include "tests/support/own_folder.h"
#include "tests/support/programs.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Step = LogReader::Step;

constexpr char kUsers[] = R"(
authorization { users: [
  {user: gateway, password: "the writer's"}
  {user: desk, password: "the reader's", permissions: {
    publish: ["$JS.API.STREAM.INFO.*", "$JS.API.CONSUMER.CREATE.*", "$JS.API.CONSUMER.MSG.NEXT.*.*"]
    subscribe: ["_INBOX.>"]}}
]})";

// What Connect and the first Publish throw; empty if the log takes the messages.
std::string RefusalOf(const LogAccess& access) {
  try {
    LogWriter writer(access, kDay, 1);
    const std::uint64_t count = writer.Connect(seconds(1));
    writer.Publish(count, 1, TradeMessages(static_cast<std::uint32_t>(count) + 1, 1));
  } catch (const FeedError& error) {
    return error.what();
  }
  return {};
}

class LogAccessTest : public OwnFolder {
 protected:
  std::filesystem::path Secret(const std::string& name, const std::string& text) {
    WriteFile(Folder / name, text);
    std::filesystem::permissions(Folder / name,
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    return Folder / name;
  }
  LogAccess UserAccess(const LogServer& server, const std::string& user, const std::string& password) {
    LogAccess access = server.Access();
    access.User = user;
    access.PasswordFile = Secret(user, password);
    return access;
  }
};

TEST_F(LogAccessTest, LetsReadersReadAndNotWrite) {
  const LogServer server(Folder / "log", kUsers);
  EXPECT_EQ(RefusalOf(UserAccess(server, "gateway", "the writer's\n")), "");
  LogReader reader(UserAccess(server, "desk", "the reader's"), kDay);
  EXPECT_EQ(ReadDay(reader, 1), IdsUpTo(1)) << reader.Reason();
  const std::string refusal = RefusalOf(UserAccess(server, "desk", "the reader's"));
  EXPECT_NE(refusal.find("the user desk may not do that"), std::string::npos) << refusal;
}

TEST_F(LogAccessTest, TellsWhyItIsRefusedWithoutTheSecret) {
  const LogServer server(Folder / "log", kUsers);
  struct Case {
    const char* User;
    const char* Password;
    const char* Refusal;
  };
  constexpr Case kCases[] = {
      {"gateway", "guessed", "the server refuses the user gateway or the password"},
      {"nobody", "guessed", "the server refuses the user nobody or the password"},
      {"gateway", "gues\"sed", "has a quote, a backslash or a control character"},
      {"gateway", "", "holds no secret"},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(std::string(c.User) + " " + c.Password);
    const LogAccess access = UserAccess(server, c.User, c.Password);
    const std::string refusal = RefusalOf(access);
    EXPECT_NE(refusal.find(c.Refusal), std::string::npos) << refusal;
    EXPECT_EQ(refusal.find("gues"), std::string::npos) << refusal;
    LogReader reader(access, kDay);
    std::vector<std::uint8_t> messages;
    EXPECT_EQ(reader.Take(messages, milliseconds(1)), Step::Lost);
    EXPECT_EQ(reader.Reason(), refusal);
  }
  EXPECT_NE(RefusalOf(server.Access()).find("the server refuses this access"), std::string::npos);
}

TEST_F(LogAccessTest, ReadsNoSecretThatOthersMayRead) {
  LogAccess access;
  access.Servers = "nats://127.0.0.1:" + std::to_string(FreePort());
  EXPECT_NE(RefusalOf(access).find("the server cannot be reached"), std::string::npos) << RefusalOf(access);
  for (std::filesystem::path LogAccess::*file : {&LogAccess::PasswordFile, &LogAccess::CredentialsFile}) {
    LogAccess open = access;
    open.*file = Secret("open", "secret");
    if (file == &LogAccess::PasswordFile) open.User = "desk";
    for (const auto right : {std::filesystem::perms::group_read, std::filesystem::perms::others_read}) {
      std::filesystem::permissions(open.*file, right | std::filesystem::perms::owner_read);
      EXPECT_NE(RefusalOf(open).find("may be read by others than its owner"), std::string::npos) << RefusalOf(open);
    }
  }
  EXPECT_THROW(ReadSecretLine(Folder / "missing"), FeedError);
  EXPECT_EQ(ReadSecretLine(Secret("lines", "first \r\nsecond")), "first ");
  EXPECT_EQ(ReadSecretLine(Secret("long", std::string(4096, 's'))).size(), 4096u);
  EXPECT_THROW(ReadSecretLine(Secret("longer", std::string(4097, 's'))), FeedError);
}

class LogTlsTest : public LogAccessTest {
 protected:
  // The certificate of that name, which is its own authority, for that host.
  std::string Certificate(const std::string& name, const std::string& host) {
    const std::string base = (Folder / name).string();
    const std::string made =
        "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj /CN=" + name +
        " -addext subjectAltName=" + host + " -keyout '" + base + ".key' -out '" + base + ".pem' 2>'" + base + ".log'";
    EXPECT_EQ(RunCommand(made), 0) << ReadFile(base + ".log");
    return "tls { cert_file: \"" + base + ".pem\", key_file: \"" + base + ".key\" }\n";
  }
};

TEST_F(LogTlsTest, TrustsOnlyTheAuthorityAndTheHost) {
  const LogServer server(Folder / "log", Certificate("right", "DNS:localhost,IP:127.0.0.1"));
  const LogServer foreign(Folder / "foreign", Certificate("foreign", "DNS:elsewhere.example"));
  const LogServer plain(Folder / "plain");
  const auto access = [this](const LogServer& to, const std::string& host, const std::string& authority) {
    LogAccess made;
    made.Servers = host + ":" + std::to_string(to.Port());
    if (!authority.empty()) made.Authorities = Folder / (authority + ".pem");
    return made;
  };
  EXPECT_EQ(RefusalOf(access(server, "tls://localhost", "right")), "");
  EXPECT_EQ(RefusalOf(access(server, "tls://127.0.0.1", "right")), "");
  const struct {
    LogAccess Access;
    const char* Refusal;
  } kCases[] = {
      {access(server, "tls://localhost", "foreign"), "self-signed certificate"},
      {access(server, "tls://localhost", ""), "self-signed certificate"},
      {access(foreign, "tls://localhost", "foreign"), "hostname mismatch"},
      {access(server, "nats://localhost", ""), "self-signed certificate"},
      {access(server, "tls://localhost", "missing"), "authorities"},
      {access(plain, "tls://localhost", "right"), "no connection"},
  };
  for (const auto& c : kCases) {
    const std::string refusal = RefusalOf(c.Access);
    EXPECT_NE(refusal.find(c.Refusal), std::string::npos) << c.Access.Servers << ": '" << refusal << "'";
  }
}

}  // namespace
