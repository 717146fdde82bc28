// Writer and reader of day logs against a server of each test's own.

#include <gtest/gtest.h>
#include <nats/nats.h>

#include "tests/feeds/day_log/day_log_players.h"
#include "tests/support/own_folder.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Step = LogReader::Step;

// The server's stream by the client of NATS alone, for what neither writer nor reader does.
class RawLog {
 public:
  explicit RawLog(const LogServer& server) {
    EXPECT_EQ(natsConnection_ConnectTo(&Connection, server.Access().Servers.c_str()), NATS_OK);
    EXPECT_EQ(natsConnection_JetStream(&Context, Connection, nullptr), NATS_OK);
  }
  ~RawLog() {
    jsCtx_Destroy(Context);
    natsConnection_Destroy(Connection);
  }
  void Publish(const char* id, const std::vector<std::uint8_t>& bytes) {
    natsMsg* message = nullptr;
    EXPECT_EQ(natsMsg_Create(&message, kDay.Subject().c_str(), nullptr, reinterpret_cast<const char*>(bytes.data()),
                             static_cast<int>(bytes.size())),
              NATS_OK);
    if (id != nullptr) natsMsgHeader_Set(message, "Trade-Count", id);
    EXPECT_EQ(js_PublishMsg(nullptr, Context, message, nullptr, nullptr), NATS_OK);
    natsMsg_Destroy(message);
  }
  void DeleteBatch(std::uint64_t number) {
    EXPECT_EQ(js_DeleteMsg(Context, kDay.Stream().c_str(), number, nullptr, nullptr), NATS_OK);
  }
  void DeleteStream() { EXPECT_EQ(js_DeleteStream(Context, kDay.Stream().c_str(), nullptr, nullptr), NATS_OK); }

 private:
  natsConnection* Connection = nullptr;
  jsCtx* Context = nullptr;
};

class DayLogTest : public OwnFolder {
 protected:
  LogServer Server{Folder / "log"};
  LogWriter Writer{Server.Access(), kDay, 1};
  LogReader Reader{Server.Access(), kDay};
  std::vector<std::uint8_t> Messages;
};

TEST_F(DayLogTest, GivesEveryMessageOnceWhileTheServerIsKilled) {
  constexpr std::uint32_t kLast = 20000;
  std::atomic<std::uint32_t> written = 0;
  std::vector<std::uint32_t> read;
  std::thread writing([&] { WriteDay(Writer, kLast, 10, written); });
  std::thread reading([&] { read = ReadDay(Reader, kLast); });
  const auto bound = Bound();
  for (const std::uint32_t at : {5000u, 12000u}) {
    while (written < at && !IsOver(bound)) std::this_thread::yield();
    Server.Kill();
    Server.Start();
  }
  writing.join();
  reading.join();
  EXPECT_EQ(read, IdsUpTo(kLast));
  EXPECT_TRUE(Reader.IsCaughtUp());
  EXPECT_EQ(Reader.Behind(), 0u);
}

TEST_F(DayLogTest, TakesEachMessageOfTwoWritersOnce) {
  constexpr std::uint32_t kLast = 3000;
  LogWriter other(Server.Access(), kDay, 1);
  std::atomic<std::uint32_t> written = 0, writtenByOther = 0;
  std::thread writing([&] { WriteDay(Writer, kLast, 7, written); });
  std::thread otherWriting([&] { WriteDay(other, kLast, 11, writtenByOther); });
  writing.join();
  otherWriting.join();
  EXPECT_EQ(ReadDay(Reader, kLast), IdsUpTo(kLast));
  EXPECT_EQ(Reader.Take(Messages, milliseconds(50)), Step::Nothing);
}

TEST_F(DayLogTest, TellsWhatIsThereBeforeTheFirstMessage) {
  EXPECT_EQ(Reader.Take(Messages, milliseconds(1)), Step::Missing);
  EXPECT_EQ(Reader.Reason(), "there is no log trades.20260301 yet");
  EXPECT_FALSE(Reader.IsCaughtUp());
  EXPECT_EQ(Writer.Connect(seconds(30)), 0u);
  EXPECT_EQ(Reader.Take(Messages, milliseconds(1)), Step::Nothing);
  EXPECT_TRUE(Reader.IsCaughtUp()) << "an empty log is read to its end";
  Writer.Publish(0, 2, TradeMessages(1, 2));
  EXPECT_EQ(ReadDay(Reader, 2), IdsUpTo(2));
}

TEST_F(DayLogTest, RefusesBatchesThatDoNotFit) {
  EXPECT_THROW(Writer.Publish(0, 1, TradeMessages(1, 1)), FeedError) << "not connected";
  const struct {
    std::uint64_t Before;
    std::uint32_t Count;
    std::vector<std::uint8_t> Bytes;
  } kCases[] = {
      {1, 1, TradeMessages(2, 1)},
      {0, 2, TradeMessages(1, 1)},
      {0, 0, {}},
      {0, 5, TradeMessages(1, 5, LogWriter::kMostBytes / 5 + 1)},
  };
  EXPECT_EQ(Writer.Connect(seconds(30)), 0u);
  for (const auto& c : kCases) EXPECT_THROW(Writer.Publish(c.Before, c.Count, c.Bytes), FeedError);
  Writer.Publish(0, 5, TradeMessages(1, 5, LogWriter::kMostBytes / 5));
  EXPECT_TRUE(ReadUntil(Reader, Step::Messages, Messages));
  EXPECT_EQ(TradeIds(Messages), IdsUpTo(5));
}

TEST_F(DayLogTest, LeavesOutWhatIsNoBatchAndGoesOn) {
  Writer.Connect(seconds(30));
  Writer.Publish(0, 2, TradeMessages(1, 2));
  RawLog raw(Server);
  std::vector<std::uint8_t> cut = TradeMessages(3, 2);
  cut.pop_back();
  raw.Publish(nullptr, TradeMessages(3, 1));
  raw.Publish("4", cut);
  raw.Publish("5x", TradeMessages(3, 1));
  raw.Publish("6", {});
  raw.Publish("7", std::vector<std::uint8_t>(1000 * 1000, 0x23));
  raw.Publish("18446744073709551615", std::vector<std::uint8_t>(5, 0));
  for (int i = 0; i < 6; ++i) {
    EXPECT_TRUE(ReadUntil(Reader, Step::Damaged, Messages)) << i;
    EXPECT_NE(Reader.Reason().find("batch " + std::to_string(2 + i) + " of the log trades.20260301"), std::string::npos)
        << Reader.Reason();
  }
  EXPECT_TRUE(Reader.IsCaughtUp());
  EXPECT_EQ(TradeIds(Messages), IdsUpTo(2));
  raw.Publish("3", TradeMessages(3, 1));
  EXPECT_EQ(Writer.Connect(seconds(30)), 3u);
  Writer.Publish(3, 1, TradeMessages(4, 1));
  EXPECT_EQ(ReadOn(Reader, 4, Messages), IdsUpTo(4));
}

TEST_F(DayLogTest, TellsOfMessagesThatAreMissing) {
  Writer.Connect(seconds(30));
  for (std::uint32_t i = 0; i < 6; ++i) Writer.Publish(i, 1, TradeMessages(i + 1, 1));
  RawLog raw(Server);
  for (const std::uint64_t number : {1u, 4u}) raw.DeleteBatch(number);
  for (const char* text : {"messages 1 to 1 of the day are missing", "messages 4 to 4 of the day are missing"}) {
    ASSERT_TRUE(ReadUntil(Reader, Step::Damaged, Messages));
    EXPECT_NE(Reader.Reason().find(text), std::string::npos) << Reader.Reason();
  }
  EXPECT_EQ(ReadOn(Reader, 4, Messages), (std::vector<std::uint32_t>{2, 3, 5, 6}));
}

TEST_F(DayLogTest, GoesOnWithALogMadeAnewIfItHoldsTheSameTrades) {
  Writer.Connect(seconds(30));
  Writer.Publish(0, 4, TradeMessages(1, 4));
  EXPECT_TRUE(ReadUntil(Reader, Step::Messages, Messages));
  const auto refill = [this](std::uint32_t firstId, std::uint32_t batch, std::uint32_t last) {
    RawLog(Server).DeleteStream();
    EXPECT_EQ(Writer.Connect(seconds(30)), 0u);
    for (std::uint32_t i = 0; i < last; i += batch) Writer.Publish(i, batch, TradeMessages(firstId + i, batch));
  };
  refill(1, 3, 6);
  EXPECT_EQ(ReadOn(Reader, 6, Messages), IdsUpTo(6));
  refill(2, 4, 8);
  const auto bound = Bound();
  while (Reader.Reason().find("now holds other trades") == std::string::npos && !IsOver(bound))
    Reader.Take(Messages, milliseconds(50));
  EXPECT_FALSE(IsOver(bound)) << Reader.Reason();
  refill(1, 8, 8);
  EXPECT_EQ(ReadOn(Reader, 8, Messages), IdsUpTo(8));
}

}  // namespace
