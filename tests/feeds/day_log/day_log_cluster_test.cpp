// A day log on three servers whose leader is killed. Takes a quarter of a minute, so it is no part of the ordinary
// tests.

#include <gtest/gtest.h>
#include <nats/nats.h>

#include "tests/feeds/day_log/day_log_players.h"
#include "tests/support/own_folder.h"

namespace {

class DayLogClusterTest : public OwnFolder {
 protected:
  static constexpr int kServers = 3;

  DayLogClusterTest() {
    std::string routes;
    int ports[kServers];
    for (int& port : ports)
      routes += (routes.empty() ? "nats://127.0.0.1:" : ", nats://127.0.0.1:") + std::to_string(port = FreePort());
    for (int i = 0; i < kServers; ++i) {
      const std::string name = std::to_string(i);
      const std::string settings = "server_name: \"" + name +
                                   "\"\ncluster { name: log, listen: \"127.0.0.1:" + std::to_string(ports[i]) +
                                   "\", routes: [" + routes + "] }\n";
      Servers.push_back(std::make_unique<LogServer>(Folder / name, settings));
      Access.Servers += (i == 0 ? "" : ",") + Servers.back()->Access().Servers;
    }
  }

  // The place of the leader of the day's stream; kServers if there is none.
  std::size_t Leader() {
    natsConnection* connection = nullptr;
    jsCtx* context = nullptr;
    jsStreamInfo* info = nullptr;
    std::size_t leader = kServers;
    if (natsConnection_ConnectTo(&connection, Access.Servers.c_str()) == NATS_OK &&
        natsConnection_JetStream(&context, connection, nullptr) == NATS_OK &&
        js_GetStreamInfo(&info, context, kDay.Stream().c_str(), nullptr, nullptr) == NATS_OK &&
        info->Cluster != nullptr && info->Cluster->Leader != nullptr)
      leader = std::stoul(info->Cluster->Leader);
    jsStreamInfo_Destroy(info);
    jsCtx_Destroy(context);
    natsConnection_Destroy(connection);
    return leader;
  }

  std::vector<std::unique_ptr<LogServer>> Servers;
  LogAccess Access;
};

TEST_F(DayLogClusterTest, GivesEveryMessageOnceWhileLeadersAreKilled) {
  constexpr std::uint32_t kLast = 40000;
  LogWriter writer(Access, kDay, kServers), other(Access, kDay, kServers);
  LogReader reader(Access, kDay);
  std::atomic<std::uint32_t> written = 0, writtenByOther = 0;
  std::vector<std::uint32_t> read;
  std::thread writing([&] { WriteDay(writer, kLast, 20, written); });
  std::thread otherWriting([&] { WriteDay(other, kLast, 30, writtenByOther); });
  std::thread reading([&] { read = ReadDay(reader, kLast, Bound(120)); });
  const auto bound = Bound(120);
  int killed = 0;
  for (const std::uint32_t at : {5000u, 20000u}) {
    while (std::max(written, writtenByOther) < at && !IsOver(bound)) std::this_thread::yield();
    std::size_t leader = Leader();
    while (leader == kServers && !IsOver(bound)) leader = Leader();
    if (leader == kServers) continue;
    Servers[leader]->Kill();
    ++killed;
    while (Leader() == kServers && !IsOver(bound)) continue;
    Servers[leader]->Start();
  }
  writing.join();
  otherWriting.join();
  reading.join();
  EXPECT_EQ(killed, 2);
  EXPECT_EQ(read.size(), kLast);
  EXPECT_TRUE(read == IdsUpTo(kLast));
}

}  // namespace
