#include "feeds/journal/journal_day.h"

#include "feeds/journal/journal.h"
#include "tests/feeds/journal/small_journal.h"
#include "tests/support/own_folder.h"

namespace {

// With | for SOH, and with the length and checksum of the standard header and trailer.
std::string Fix(std::string body) {
  std::string text = "8=FIX.4.4|9=" + std::to_string(body.size()) + '|' + body;
  std::replace(text.begin(), text.end(), '|', '\x01');
  unsigned sum = 0;
  for (const char letter : text) sum += static_cast<unsigned char>(letter);
  const std::string digits = std::to_string(1000 + sum % 256);
  return text + "10=" + digits.substr(1) + '\x01';
}

std::string Trade(int number, const std::string& execution, const std::string& price = "101.5",
                  const std::string& more = "") {
  return Fix("35=8|34=" + std::to_string(number) + "|49=VENUE|56=DESK|52=20260302-09:00:00|37=O1|17=" + execution +
             "|150=F|39=2|55=ACME|54=1|32=100|31=" + price + "|151=0|14=100|6=1|60=20260302-09:00:00|" + more);
}

struct HeardAlarms : AlarmSink {
  void OnAlarm(const Alarm& alarm) override { Heard.push_back(alarm); }
  std::vector<Alarm> Heard;
};

class JournalDayTest : public OwnFolder {
 protected:
  void Keep(const std::string& text, JournalKind kind = JournalKind::Message) {
    ASSERT_TRUE(Written.Append(kind, 1, Written.NextTarget() + 1, text));
  }
  // All that is there now, in batches of that size.
  std::vector<Bytes> Batches(JournalDay& day, std::size_t mostBytes = 1 << 20) {
    std::vector<Bytes> batches(1);
    while (day.Take(batches.back(), mostBytes)) batches.emplace_back();
    return batches;
  }

  Journal Written{Folder, kSmallSession, kSmallDate};
  HeardAlarms Alarms;
};

TEST_F(JournalDayTest, CountsAndTellsEachOutcome) {
  using enum AlarmKind;
  Keep(Trade(2, "E1"));
  Keep(Trade(3, "E2"), JournalKind::Refused);
  Keep(
      "8=FIX.4.4\x01"
      "35=8\x01"
      "34=4\x01\n",
      JournalKind::Refused);
  Keep(Trade(5, "E1"));
  Keep(Trade(6, "E3", "much"));
  Keep(
      Fix("35=8|34=7|49=VENUE|56=DESK|52=20260302-09:00:00|37=O1|17=E4|19=E9|150=H|39=2|55=ACME|54=1|32=100|31=1|60="
          "20260302-09:00:00|"));
  Keep(Fix("35=0|34=8|49=VENUE|56=DESK|52=20260302-09:00:00|"));
  Keep("", JournalKind::Numbers);
  Keep(Trade(9, "E5", "1", "58=" + std::string(400, 'x') + '|'));
  const std::string bytes = ReadFile(Written.File());
  const std::filesystem::path damaged = Folder / "damaged.journal";
  WriteFile(damaged, bytes + "damage" + bytes.substr(55));

  JournalDay day(damaged, {}, Alarms);
  const std::vector<Bytes> batches = Batches(day);
  ASSERT_EQ(batches.size(), 2u);
  EXPECT_EQ(batches[1].size(), 0u);
  const JournalCounts& counts = day.Counts();
  EXPECT_EQ(counts.Records, 18u);
  EXPECT_EQ(counts.Messages, 3u);
  EXPECT_EQ(counts.Trades, 3u);
  EXPECT_EQ(counts.Repeats, 6u);
  EXPECT_EQ(counts.Unknown, 1u);
  EXPECT_EQ(counts.Refused, 6u) << "by the engine two, by the mapping one, in each half";
  const std::vector<AlarmKind> expected = {RefusedMessage, RefusedMessage, RefusedTrade,   UnknownTrade, CutField,
                                           Damage,         RefusedMessage, RefusedMessage, RefusedTrade};
  std::vector<AlarmKind> heard;
  for (const Alarm& alarm : Alarms.Heard) heard.push_back(alarm.Kind);
  ASSERT_EQ(heard, expected);
  const std::string place = std::to_string(55 + 33 + Trade(2, "E1").size());
  EXPECT_EQ(Alarms.Heard[0].Text, "message 3 of type 8 at byte " + place + " of the journal: the engine refused it");
  EXPECT_EQ(Alarms.Heard[5].Text,
            "6 bytes before byte " + std::to_string(bytes.size() + 6) + " of the journal cannot be read");
}

TEST_F(JournalDayTest, BatchesHoldWholeMessages) {
  for (int i = 0; i < 50; ++i) Keep(i % 5 == 0 ? Fix("35=0|34=1|") : Trade(i, "E" + std::to_string(i)));
  JournalDay whole(Written.File(), {}, Alarms);
  const Bytes all = Batches(whole)[0];
  const std::size_t size = all.size() / 40;
  for (const std::size_t mostBytes : {std::size_t{1}, size, 3 * size + 1, 7 * size, 40 * size, 41 * size}) {
    SCOPED_TRACE(mostBytes);
    JournalDay day(Written.File(), {}, Alarms);
    Bytes joined;
    std::uint64_t given = 0;  // by the length in the header of each message
    for (Bytes batch(3); day.Take(batch, mostBytes); batch.resize(3)) {
      EXPECT_LE(batch.size() - 3, std::max(mostBytes, size + 2));
      for (std::size_t at = 3; at < batch.size(); at += 10u + LoadValue<std::uint16_t>(&batch[at + 8])) ++given;
      EXPECT_EQ(day.Counts().Messages, given);
      joined.insert(joined.end(), batch.begin() + 3, batch.end());
    }
    EXPECT_EQ(joined, all);
  }
}

TEST_F(JournalDayTest, FollowsTheFile) {
  JournalDay day(Written.File(), {}, Alarms);
  Bytes messages;
  for (std::uint64_t i = 0; i < 3; ++i) {
    EXPECT_FALSE(day.Take(messages, 1000));
    Keep(Trade(2, "E" + std::to_string(i)));
    EXPECT_GT(day.BytesBehind(), 0u);
    EXPECT_TRUE(day.Take(messages, 1000));
    EXPECT_EQ(day.Counts().Messages, i + 1);
    EXPECT_EQ(day.BytesBehind(), 0u);
  }
  // Of records without a trade, so many in one call.
  for (int i = 0; i <= JournalDay::kMostRecords; ++i) Keep("", JournalKind::Numbers);
  messages.clear();
  EXPECT_TRUE(day.Take(messages, 1000));
  EXPECT_GT(day.BytesBehind(), 0u);
  EXPECT_TRUE(day.Take(messages, 1000));
  EXPECT_FALSE(day.Take(messages, 1000));
  EXPECT_TRUE(messages.empty());
}

}  // namespace
