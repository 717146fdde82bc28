#include "feeds/drop_copy/drop_copy.h"

#include <condition_variable>
#include <mutex>

#include "feeds/journal/journal_reader.h"
#include "tests/feeds/engine/fix_peer.h"
#include "tests/support/own_folder.h"

namespace {

class Counter : public DropCopyEvents {
 public:
  void OnState(bool, const std::string&) override {}
  void OnKept() override { Count(); }
  void OnNewDay(const std::filesystem::path&) override {}
  void OnAlarm(const Alarm&) override {}
  bool WaitFor(int kept) {
    std::unique_lock lock(Mutex);
    return Changed.wait_for(lock, std::chrono::seconds(30), [&] { return Kept >= kept; });
  }

 private:
  void Count() {
    const std::lock_guard guard(Mutex);
    ++Kept;
    Changed.notify_all();
  }
  std::mutex Mutex;
  std::condition_variable Changed;
  int Kept = 0;
};

class DropCopyTest : public OwnFolder {
 protected:
  DropCopyTest() {
    Settings.Session.BeginString = "FIX.4.4";
    Settings.Session.SenderCompID = "DESK";
    Settings.Session.TargetCompID = "VENUE";
    Settings.Session.Host = "127.0.0.1";
    Settings.Session.Port = Peer.Port();
    Settings.Session.ReconnectSeconds = 1;
    Settings.Session.Username = "me";
    Settings.Session.Password = "s3cret";
    Settings.JournalFolder = Folder / "journal";
  }

  FixPeer Peer;
  FeedSettings Settings;
};

TEST_F(DropCopyTest, GoesOnWhereItsJournalEnds) {
  std::filesystem::path file;
  std::string sent;
  for (unsigned run = 0; run < 2; ++run) {
    Counter counter;
    DropCopy copy(Settings, counter);
    copy.Start();
    const std::string logon = Peer.LogOn(2 * run + 1);
    EXPECT_EQ(logon.find("\00134=1\001") != logon.npos, run == 0);
    sent += Peer.Send("8", 2 * run + 2, "17=" + std::to_string(run) + "|");
    EXPECT_TRUE(counter.WaitFor(3));  // both logons and the report
    file = copy.JournalFile();
    Peer.Close();
  }
  JournalReader reader(file);
  JournalRecord record;
  std::string kept;
  while (reader.Next(record)) kept += record.Text;
  EXPECT_EQ(kept, sent);
  EXPECT_EQ(reader.Identity().Session, "FIX.4.4:DESK->VENUE");
  EXPECT_EQ(ReadFile(file).find("s3cret"), std::string::npos);
}

TEST_F(DropCopyTest, RefusesSettings) {
  Counter counter;
  Settings.Session.Dictionary = "/none";
  EXPECT_THROW(DropCopy(Settings, counter), FeedError);
}

}  // namespace
