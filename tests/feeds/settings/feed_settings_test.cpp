#include "feeds/settings/feed_settings.h"

#include <algorithm>

#include "feeds/common/feed_report.h"
#include "tests/support/own_folder.h"

namespace {

namespace fs = std::filesystem;

// One mistake a line, as "line: text".
using Mistakes = std::vector<std::string>;

class FeedSettingsTest : public OwnFolder {
 protected:
  FeedSettingsTest() {
    Secret("secret", "s3cret\r\nrest\n");
    WriteFile(Folder / "pem", "x");
  }

  void Secret(const char* name, std::string_view content) {
    WriteFile(Folder / name, content);
    fs::permissions(Folder / name, fs::perms::owner_read | fs::perms::owner_write);
  }
  FeedSettings Read(std::string_view text) {
    WriteFile(Folder / "config", text);
    std::vector<SettingsMistake> mistakes;
    FeedSettings settings = ReadFeedSettings(Folder / "config", mistakes);
    Told.clear();
    for (const auto& mistake : mistakes) Told.push_back(std::to_string(mistake.Line) + ": " + mistake.Text);
    return settings;
  }

  Mistakes Told;
};

constexpr std::string_view kLeast = "[session]\nsender_comp_id=ME\ntarget_comp_id=YOU\nhost=fix\nport=9876\n";

TEST_F(FeedSettingsTest, SampleLacksOnlyWhatTheUserMustFillIn) {
  std::string sample = SampleFeedSettings();
  Read(sample);
  ASSERT_EQ(Told.size(), 4u);
  for (const std::string key : {"sender_comp_id", "target_comp_id", "host", "port"}) {
    EXPECT_TRUE(
        std::ranges::any_of(Told, [&](const auto& text) { return text.ends_with(": " + key + " is missing"); }));
    sample.replace(sample.find("\n" + key + " ="), key.size() + 3, "\n" + key + " = 7");
  }
  const FeedSettings settings = Read(sample);
  EXPECT_EQ(Told, Mistakes());
  EXPECT_EQ(settings.Session.Port, 7);
  EXPECT_EQ(settings.Session.BeginString, "FIX.4.4");
  EXPECT_EQ(settings.LogName, "trades");
}

TEST_F(FeedSettingsTest, ReadsEveryKey) {
  const FeedSettings read = Read(
      "\xEF\xBB\xBF; all of it\r\n [session] \r\nversion = FIXT.1.1\nsender_comp_id = ME = I\ntarget_comp_id=YOU\n"
      "host=fix.example\nport=65535\nusername=me\npassword_file=secret\nstart_time=08:30:00\nend_time=23:59:59\n"
      "start_day=sunday\nend_day=friday\nheartbeat_seconds=20\nreconnect_seconds=1\nreset_on_logon=yes\ndictionary="
      "pem\n"
      "[tls]\nuse=yes\nhost=other\nauthorities=pem\ncertificate=pem\nkey=secret\n[journal]\nfolder=../days\n"
      "[log]\nservers=nats://a:1,tls://b\nname=desk-2\nreplicas=3\nuser=gate\npassword_file=secret\nauthorities=pem\n"
      "[mapping]\nexchange=NSE\nclient_tag=5001\nuser_tag=5002\nctcl_tag=5003\nmember_role=4\n"
      "user_role=5\nctcl_role=6\nuser_id=U\nmultiplier=0.5\n");
  EXPECT_EQ(Told, Mistakes());
  const FixEngineSettings& session = read.Session;
  const std::string pem = (Folder / "pem").string();
  EXPECT_EQ(session.BeginString + session.SenderCompID + session.TargetCompID, "FIXT.1.1ME = IYOU");
  EXPECT_EQ(session.Host + session.Username + session.Password, "fix.examplemes3cret");
  EXPECT_EQ(session.StartTime + session.EndTime, "08:30:0023:59:59");
  EXPECT_EQ(session.StartDay + session.EndDay, "sundayfriday");
  EXPECT_EQ(session.Port + session.HeartbeatSeconds + session.ReconnectSeconds, 65535 + 20 + 1);
  EXPECT_TRUE(session.ResetOnLogon && session.Tls);
  EXPECT_EQ(session.Dictionary + session.TlsAuthorities + session.TlsCertificate, pem + pem + pem);
  EXPECT_EQ(session.TlsHost + session.TlsKey, "other" + (Folder / "secret").string());
  EXPECT_EQ(read.JournalFolder, Folder.parent_path() / "days");
  EXPECT_EQ(read.Log, (LogAccess{"nats://a:1,tls://b", "gate", Folder / "secret", {}, Folder / "pem"}));
  EXPECT_EQ(read.LogName + std::to_string(read.LogReplicas), "desk-23");
  const MappingChoices& mapping = read.Mapping;
  EXPECT_EQ(mapping.ClientTag + mapping.UserTag * 2 + mapping.CtclTag * 3, 5001 + 5002 * 2 + 5003 * 3);
  EXPECT_EQ(mapping.MemberRole * 100 + mapping.UserRole * 10 + mapping.CtclRole, 456);
  EXPECT_EQ(mapping.Exchange + mapping.UserID, "NSEU");
  EXPECT_EQ(mapping.Multiplier, 0.5);
}

TEST_F(FeedSettingsTest, TellsEachMistakeWithItsLine) {
  const std::string folder = Folder.string() + "/";
  const struct {
    std::string Lines;  // behind the least, from line 6
    std::string Mistake;
  } cases[] = {
      {"sesssion", "6: expected \"key = value\", [section] or # comment"},
      {"[sesion]\nhost=x", "6: unknown section [sesion]"},
      {"[log", "6: unknown section [log"},
      {"hots=x", "6: unknown key hots in [session]"},
      {"Host=x", "6: unknown key Host in [session]"},
      {"\n# x\nhost=y", "8: host stands in line 4 already"},
      {"username=a\x01", "6: control characters are not allowed"},
      {"version=FIX.4.3", "6: version: must be FIX.4.2, FIX.4.4 or FIXT.1.1"},
      {"heartbeat_seconds=0", "6: heartbeat_seconds: must be a number from 1 to 3600"},
      {"heartbeat_seconds=3601", "6: heartbeat_seconds: must be a number from 1 to 3600"},
      {"heartbeat_seconds=30 s", "6: heartbeat_seconds: must be a number from 1 to 3600"},
      {"start_time=24:00:00", "6: start_time: must be a time in UTC, like 08:30:00"},
      {"end_time=08:60:00", "6: end_time: must be a time in UTC, like 08:30:00"},
      {"end_time=8:30:00", "6: end_time: must be a time in UTC, like 08:30:00"},
      {"end_time=08:30:0", "6: end_time: must be a time in UTC, like 08:30:00"},
      {"end_time=08:30:-1", "6: end_time: must be a time in UTC, like 08:30:00"},
      {"start_day=Monday\nend_day=friday", "6: start_day: must be a day of the week, like monday"},
      {"end_day=friday", "6: end_day needs start_day"},
      {"reset_on_logon=Y", "6: reset_on_logon: must be yes or no"},
      {"dictionary=none", "6: dictionary: " + folder + "none does not exist"},
      {"dictionary=.", "6: dictionary: " + folder + " cannot be read"},
      {"password_file=pem",
       "6: password_file: " + folder + "pem holds a secret that others may read or change: chmod 600 it"},
      {"password_file=blank", "6: password_file: " + folder + "blank has no password in its first line"},
      {"password_file=soh", "6: password_file: " + folder + "soh has control characters in its first line"},
      {"[tls]\nauthorities=pem", "7: authorities needs use = yes"},
      {"[tls]\nuse=yes\ncertificate=pem", "8: certificate needs key"},
      {"[journal]\nfolder=pem", "7: folder: " + folder + "pem is not a folder"},
      {"[log]\nservers=one:4222",
       "7: servers: must be addresses like nats://HOST:4222 or tls://HOST:4222, separated by commas"},
      {"[log]\nservers=nats://me:pw@one", "7: servers: must not hold a user or password: use user and password_file"},
      {"[log]\nname=Trades", "7: name: may have lower case letters, digits and hyphens"},
      {"[log]\nreplicas=6", "7: replicas: must be a number from 1 to 5"},
      {"[log]\nauthorities=pem", "7: authorities needs servers"},
      {"[log]\nservers=nats://one\nuser=me", "8: user needs password_file"},
      {"[mapping]\nclient_tag=65536", "7: client_tag: must be a number from 1 to 65535"},
      {"[mapping]\nctcl_role=0", "7: ctcl_role: must be a number from 1 to 65535"},
      {"[mapping]\nmultiplier=0", "7: multiplier: must be a number above 0, like 1 or 0.5"},
      {"[mapping]\nmultiplier=inf", "7: multiplier: must be a number above 0, like 1 or 0.5"},
  };
  Secret("blank", "\nx\n");
  Secret("soh",
         "a\x01"
         "58=x\n");
  for (const auto& given : cases) {
    SCOPED_TRACE(given.Lines);
    Read(std::string(kLeast) + given.Lines + "\n");
    EXPECT_EQ(Told, Mistakes{given.Mistake});
  }
}

TEST_F(FeedSettingsTest, ListsMistakesInTheOrderOfLines) {
  Read("host=x\n[log]\nreplicas=9\n[session]\nport=0\nhost=\nsender_comp_id=ME\n");
  EXPECT_EQ(Told, (Mistakes{"1: a key before the first [section]", "3: replicas: must be a number from 1 to 5",
                            "4: target_comp_id is missing", "5: port: must be a number from 1 to 65535",
                            "6: host is missing"}));
  Read("[log]\nservers=nats://a\ncredentials_file=secret\nuser=a\npassword_file=secret\n");
  EXPECT_EQ(Told, (Mistakes{"0: sender_comp_id is missing", "0: target_comp_id is missing", "0: host is missing",
                            "0: port is missing", "3: either credentials_file or user"}));
}

TEST_F(FeedSettingsTest, RefusesSecretsThatOthersMayRead) {
  for (const fs::perms open : {fs::perms::group_read, fs::perms::others_read, fs::perms::others_write}) {
    Secret("secret", "x");
    fs::permissions(Folder / "secret", open, fs::perm_options::add);
    Read(std::string(kLeast) + "password_file=secret\n[tls]\nuse=yes\ncertificate=pem\nkey=secret\n");
    EXPECT_EQ(Told.size(), 2u);
  }
}

TEST_F(FeedSettingsTest, ThrowsWithoutAFile) {
  std::vector<SettingsMistake> mistakes;
  EXPECT_THROW(ReadFeedSettings(Folder / "none", mistakes), FeedError);
  EXPECT_THROW(ReadFeedSettings(Folder, mistakes), FeedError);
}

}  // namespace
