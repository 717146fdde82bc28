#include "host_link/messages/reply_buffer.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <thread>

#include "tests/host_link/link_fixtures.h"
#include "tests/support/failing_memory.h"

namespace {

TEST(ReplyBufferTest, GrowsToExactlyWhatIsNeeded) {
  ReplyForTest reply(4, true);
  reply.Buffer.ReadPosition = 3;
  const std::pair<const char*, std::uint32_t> kRows[] = {{"abc", 4}, {"d", 4}, {"efg", 7}, {"h", 8}};
  for (const auto& [text, capacity] : kRows) {
    EXPECT_TRUE(reply.Buffer.AppendBytes(text, static_cast<std::uint32_t>(std::strlen(text)), capacity == 7));
    EXPECT_EQ(reply.Buffer.Capacity, capacity);
  }
  EXPECT_EQ(reply.Content(), Hex("'abcdefgh'"));
  EXPECT_EQ(reply.Buffer.ReadPosition, 3U);
}

TEST(ReplyBufferTest, FixedBuffersTakeWhatFits) {
  ReplyForTest reply(4, false);
  EXPECT_TRUE(reply.Buffer.AppendBytes("abc", 3, true));
  EXPECT_FALSE(reply.Buffer.AppendBytes("de", 2, true));
  EXPECT_TRUE(reply.Buffer.AppendBytes("d", 1, true));
  EXPECT_FALSE(reply.Buffer.AppendBytes("e", 1, false));
  EXPECT_EQ(reply.Content(), Hex("'abcd'"));
  EXPECT_EQ(reply.Buffer.Capacity, 4U);
}

TEST(ReplyBufferTest, RefusesEmptyAndOversizedData) {
  ReplyForTest reply(4, true);
  HostReplyBuffer& buffer = reply.Buffer;
  EXPECT_FALSE(buffer.AppendBytes(nullptr, 1, true));
  EXPECT_FALSE(buffer.AppendBytes("a", 0, true));
  FailAllocation(1);
  EXPECT_FALSE(buffer.AppendBytes("abcde", 5, true));
  EXPECT_EQ(buffer.Used, 0U);
  EXPECT_EQ(buffer.Capacity, 4U);
  // Past what 32 bits count nothing may be touched: there is no block of that size behind Data.
  buffer.Used = buffer.Capacity = 0xFFFFFFFE;
  EXPECT_FALSE(buffer.AppendBytes("abc", 3, true));
  EXPECT_EQ(buffer.Used, 0xFFFFFFFE);
  EXPECT_EQ(buffer.Capacity, 0xFFFFFFFE);
  buffer.Used = 0;
}

TEST(ReplyBufferTest, LocksOnlyIfAsked) {
  ReplyForTest reply(2000, false);
  EnterLock(reply.Buffer.Lock);
  std::thread([&] { EXPECT_TRUE(reply.Buffer.AppendBytes("a", 1, false)); }).join();
  std::atomic<bool> started = false;
  std::thread waiting([&] {
    started = true;
    EXPECT_TRUE(reply.Buffer.AppendBytes("c", 1, true));
  });
  // A thread that does not wait gets many turns to append between these; one that waits always appends last.
  while (!started) std::this_thread::yield();
  for (int i = 0; i < 200; ++i, std::this_thread::yield()) EXPECT_TRUE(reply.Buffer.AppendBytes("b", 1, true));
  LeaveLock(reply.Buffer.Lock);
  waiting.join();
  EXPECT_EQ(reply.Content(), Hex("'a'") + Bytes(200, 'b') + Hex("'c'"));
  std::thread([&] { EXPECT_TRUE(reply.Buffer.AppendBytes("d", 1, true)); }).join();
}

}  // namespace
