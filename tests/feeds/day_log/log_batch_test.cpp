#include "feeds/day_log/log_batch.h"

#include <gtest/gtest.h>

#include "feeds/day_log/log_consumer.h"
#include "tests/feeds/day_log/log_server.h"

namespace {

using Verdict = LogOrder::Verdict;

TEST(LogBatchTest, CountsWholeTradeMessagesAlone) {
  const std::vector<std::uint8_t> two = TradeMessages(1, 2);
  EXPECT_EQ(CountTradeMessages(two), 2u);
  for (std::size_t size = 0; size < two.size(); ++size) {
    const std::vector<std::uint8_t> cut(two.begin(), two.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_EQ(CountTradeMessages(cut), size == two.size() / 2 ? std::optional<std::uint64_t>(1) : std::nullopt) << size;
  }
  // Of the header, the length's high byte and the number field, every byte counts.
  for (const std::size_t place : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 9u, 10u, 11u, 12u, 13u, 14u}) {
    std::vector<std::uint8_t> other = two;
    other[place] ^= 0x40;
    EXPECT_EQ(CountTradeMessages(other), std::nullopt) << place;
  }
  std::vector<std::uint8_t> tooShort = TradeMessages(1, 1, 22);
  tooShort.resize(14);
  tooShort[8] = 4;
  EXPECT_EQ(CountTradeMessages(tooShort), std::nullopt);
}

TEST(LogBatchTest, ReadsIdsOfDigitsAlone) {
  EXPECT_EQ(ParseBatchId("513"), 513u);
  EXPECT_EQ(ParseBatchId("18446744073709551615"), 18446744073709551615u);
  for (const char* id : {"", "0", "-1", "+1", " 1", "1 ", "1x", "18446744073709551616"})
    EXPECT_EQ(ParseBatchId(id), std::nullopt) << id;
}

TEST(LogBatchTest, FindsThePlaceInTheSubjectOfTheAcknowledgement) {
  constexpr const char* kPlaces[] = {
      "$JS.ACK.TRADES_20260301.c1.1.513.7.1772323200000000000.12",
      "$JS.ACK.domain.hash.TRADES_20260301.c1.1.513.7.1772323200000000000.12",
      "$JS.ACK._.hash.TRADES_20260301.c1.1.513.7.1772323200000000000.12.token",
  };
  for (const char* subject : kPlaces) {
    const std::optional<BatchPlace> place = ParseBatchPlace(subject);
    ASSERT_TRUE(place) << subject;
    EXPECT_EQ(place->Number, 513u);
    EXPECT_EQ(place->Pending, 12u);
  }
  for (const char* subject :
       {"", "$JS.ACK", "$JS.ACK.s.c.1.513.7.1", "$JS.ACK.s.c.1.x.7.1.12", "$JS.ACK.s.c.1.513.7.1.",
        "$JS.API.s.c.1.513.7.1.12", "_INBOX.s.c.1.513.7.1.12.1", "$JS.ACK.s.c.1.513.7.1.12.9"})
    EXPECT_FALSE(ParseBatchPlace(subject)) << subject;
}

// What comes, what is said of it and which trades are given.
struct Event {
  const char* Id;
  std::vector<std::uint8_t> Payload;
  Verdict Says;
  std::vector<std::uint32_t> Given;
};

void Play(LogOrder& order, const std::vector<Event>& events) {
  for (std::size_t i = 0; i < events.size(); ++i) {
    SCOPED_TRACE("event " + std::to_string(i));
    if (events[i].Id == nullptr) {
      order.BeginAgain();
      continue;
    }
    std::vector<std::uint8_t> messages;
    EXPECT_EQ(order.Admit(events[i].Id, events[i].Payload, messages), events[i].Says) << order.Reason();
    EXPECT_EQ(TradeIds(messages), events[i].Given);
  }
}

TEST(LogOrderTest, GivesEveryMessageOnce) {
  const Event kAgain{nullptr, {}, Verdict::Again, {}};
  const std::vector<std::vector<Event>> kDays = {
      // Other batches of the same day.
      {{"2", TradeMessages(1, 2), Verdict::Taken, {1, 2}},
       {"3", TradeMessages(3, 1), Verdict::Taken, {3}},
       kAgain,
       {"1", TradeMessages(1, 1), Verdict::Taken, {}},
       {"5", TradeMessages(2, 4), Verdict::Taken, {4, 5}}},
      // Another day.
      {{"2", TradeMessages(1, 2), Verdict::Taken, {1, 2}},
       kAgain,
       {"1", TradeMessages(1, 1), Verdict::Taken, {}},
       {"3", TradeMessages(8, 2), Verdict::Other, {}}},
      // A gap is asked for again, then told once; what is behind it is given.
      {{"3", TradeMessages(3, 1), Verdict::Again, {}},
       kAgain,
       {"3", TradeMessages(3, 1), Verdict::Missing, {}},
       {"3", TradeMessages(3, 1), Verdict::Taken, {3}},
       kAgain,
       {"3", TradeMessages(3, 1), Verdict::Taken, {}},
       {"4", TradeMessages(4, 1), Verdict::Taken, {4}}},
      // A gap over the begin of what is new, behind other trades.
      {{"1", TradeMessages(1, 1), Verdict::Taken, {1}},
       {"2", TradeMessages(2, 1), Verdict::Taken, {2}},
       kAgain,
       {"1", TradeMessages(1, 1), Verdict::Taken, {}},
       {"4", TradeMessages(4, 1), Verdict::Other, {}}},
      // Messages that come twice.
      {{"2", TradeMessages(1, 2), Verdict::Taken, {1, 2}},
       {"2", TradeMessages(1, 2), Verdict::Again, {}},
       kAgain,
       {"2", TradeMessages(1, 2), Verdict::Taken, {}},
       {"2", TradeMessages(1, 2), Verdict::Damaged, {}},
       {"3", TradeMessages(3, 1), Verdict::Taken, {3}}},
      // A damaged batch, the messages that it may have had, and what is said of it in the next reading: nothing.
      {{"1", {0x23}, Verdict::Damaged, {}},
       {"2", TradeMessages(2, 1), Verdict::Missing, {}},
       {"2", TradeMessages(2, 1), Verdict::Taken, {2}},
       kAgain,
       {"1", {0x23}, Verdict::Taken, {}},
       {"2", TradeMessages(2, 1), Verdict::Taken, {}},
       {"1", TradeMessages(2, 2), Verdict::Damaged, {}},
       {"3", std::vector<std::uint8_t>(LogOrder::kMostPayload + 1), Verdict::Damaged, {}}},
  };
  for (std::size_t i = 0; i < kDays.size(); ++i) {
    SCOPED_TRACE("day " + std::to_string(i));
    LogOrder order;
    Play(order, kDays[i]);
  }
}

TEST(LogOrderTest, StopsReadingAgainForGapsWithoutEnd) {
  LogOrder order;
  std::vector<std::uint8_t> messages;
  // Every second message of the day is missing.
  const auto admit = [&](std::uint32_t batch) {
    return order.Admit(std::to_string(2 * batch + 2), TradeMessages(2 * batch + 2, 1), messages);
  };
  int again = 0;
  for (std::uint32_t last = 0; last < 20; ++last) {
    if (admit(last) == Verdict::Again) {
      ++again;
      order.BeginAgain();
      for (std::uint32_t i = 0; i < last; ++i) EXPECT_EQ(admit(i), Verdict::Taken);
      EXPECT_EQ(admit(last), Verdict::Missing);
    }
    EXPECT_EQ(admit(last), Verdict::Taken);
  }
  EXPECT_EQ(again, LogOrder::kMostReadings);
  EXPECT_EQ(TradeIds(messages).size(), 20u);
}

}  // namespace
