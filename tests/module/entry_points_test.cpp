// The three exports out of memory: each message is sent until it is served, and each time a later one of its
// allocations fails. No exception leaves an export, and each message has its effect once: the daily file shows it.
#include "host_link/messages/message_table.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "host_link/messages/packet_reader.h"
#include "platform/modules.h"
#include "tests/host_link/link_fixtures.h"
#include "tests/support/failing_memory.h"
#include "tests/support/files.h"
#include "tests/support/wire_bytes.h"

TRADEBOOK_EXPORT void GetDllInfo(HostReplyBuffer* reply, const std::uint8_t* infoOnly) noexcept;
TRADEBOOK_EXPORT void OnMessage(CQORPacketReader* message) noexcept;
TRADEBOOK_EXPORT void OnPluginMessage(CQORPacketReader* message) noexcept;

namespace {

namespace fs = std::filesystem;

int failures = 0;

template <typename Call>
void CallUntilServed(Call call) {
  for (int count = 1;; ++count, ++failures) {
    FailAllocation(count);
    call();
    if (!StopFailing()) return;
  }
}

void Send(unsigned number, const std::string& fields = {}) {
  const std::string bytes = WireMessage(number, fields);
  CallUntilServed([&] {
    CQORPacketReader reader(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                            static_cast<std::uint16_t>(bytes.size()));
    std::uint16_t needed = 0, consumed = 0;
    if (number >= 30000 && number != 30026) return OnPluginMessage(&reader);
    if (reader.ParseHeader(needed, consumed)) OnMessage(&reader);
  });
}

void Trade(unsigned number, unsigned id) {
  Send(number, WireU32(20008, id) + WireText(55101, std::to_string(id)) + WireTerminator() +
                   WireText(55103, "A SYMBOL OF SOME LENGTH") + WireU32(20014, id));
}

void Answer(CQORPacketReader*) {}

TEST(EntryPointsTest, ServesAMessageAgainThatRanOutOfMemory) {
  const fs::path folder = fs::current_path();                            // as the module did when it was loaded
  while (!DailyFileIn(folder).empty()) fs::remove(DailyFileIn(folder));  // of an earlier run
  WriteFile(folder / "TradeHeaderFile.txt", "VELDTradeID\r\nExchangeTradeTime\r\nQuantity\r\n");
  const std::uint8_t infoOnly = 0;
  ReplyForTest reply(16, true);
  CallUntilServed([&] { GetDllInfo(&reply.Buffer, &infoOnly); });
  for (const unsigned number : {30025U, 30026U, 30022U, 30020U, 30021U}) Send(number);
  Send(32022, WireHead(30001) + BytesOfValue(std::uint64_t{1}) + WireHead(30002) +
                  BytesOfValue(reinterpret_cast<std::uint64_t>(&Answer)));
  Send(32023, WireText(55010, "NSE") + WireText(55104, "1"));
  for (const unsigned id : {3U, 1U, 2U}) Trade(8111, id);
  Send(8112);
  Trade(9101, 4);
  Send(9112, WireU32(20008, 2) + WireU32(20084, 1) + WireU32(20103, 20));
  Trade(9101, 4);
  fs::remove(folder / "TradeHeaderFile.txt");
  EXPECT_EQ(ReadFile(DailyFileIn(folder)),
            "VELDTradeID,ExchangeTradeTime,Quantity,\r\n1,,1,\r\n2,,2,\r\n3,,3,\r\n4,,4,\r\n2,,20,");
  EXPECT_GT(failures, 40);
}

}  // namespace
