#include "feeds/journal/journal.h"

#include <thread>

#include "feeds/common/feed_report.h"
#include "feeds/journal/file_failure.h"
#include "tests/feeds/journal/small_journal.h"
#include "tests/support/own_folder.h"

namespace {

class JournalTest : public OwnFolder {
 protected:
  // What opening it says; empty if it opens.
  std::string Refusal(const std::string& session, const std::string& date) {
    try {
      const Journal journal(Folder, session, date);
    } catch (const FeedError& error) {
      return error.what();
    }
    return {};
  }

  const std::filesystem::path File = JournalPath(Folder, kSmallSession, kSmallDate);
};

TEST_F(JournalTest, WritesTheFormat) {
  {
    Journal journal(Folder / "new", kSmallSession, kSmallDate);
    EXPECT_EQ(journal.File(), Folder / "new" / "FIX.4.4_DESK-_VENUE-20260302.journal");
    EXPECT_EQ(journal.NextSender() + journal.NextTarget(), 2u);
    ASSERT_TRUE(journal.Append(JournalKind::Message, 2, 3, std::get<4>(kSmallRecords[0])));
    ASSERT_TRUE(journal.Append(JournalKind::Numbers, 3, 3, ""));
    ASSERT_TRUE(journal.Append(JournalKind::Reset, 7, 8, {}));
    EXPECT_EQ(journal.NextSender() + journal.NextTarget(), 2u);
  }
  // All but salt, times and sums.
  std::string bytes = ReadFile(Folder / "new" / File.filename()), small = SmallJournal();
  ASSERT_EQ(bytes.size(), small.size());
  for (std::string* journal : {&bytes, &small}) {
    journal->replace(12, 12, 12, '.').replace(51, 4, 4, '.');
    for (const std::size_t place : {55, 103, 136}) journal->replace(place + 17, 16, 16, '.');
  }
  EXPECT_EQ(bytes, small);
}

TEST_F(JournalTest, CutsATornTail) {
  const std::string whole = SmallJournal();
  const std::string first = whole.substr(kSmallPlaces[0], kSmallPlaces[1] - kSmallPlaces[0]);
  std::string torn;
  for (std::size_t size = 0; size < first.size(); ++size) {
    SCOPED_TRACE(size);
    WriteFile(File, whole.substr(0, kSmallPlaces[2]) + first.substr(0, size));
    torn += first.substr(0, size);
    {
      Journal journal(Folder, kSmallSession, kSmallDate);
      EXPECT_EQ(journal.CutBytes(), size);
      EXPECT_EQ(journal.NextSender(), 3u) << "not that of the torn record";
      EXPECT_EQ(journal.Identity().Created, 1772438400);
      EXPECT_EQ(ReadFile(std::filesystem::path(File) += ".torn"), torn);
      ASSERT_TRUE(journal.Append(JournalKind::Refused, 3, 4, "text"));
    }
    EXPECT_EQ(std::filesystem::file_size(File), kSmallPlaces[2] + 37);
    EXPECT_EQ(TextsOf(File), (std::vector<std::string>{std::get<4>(kSmallRecords[0]), "", "text"}));
  }
  std::string large = "begin of three megabytes";
  large.resize(3 << 20, 'x');
  WriteFile(File, whole + large);
  EXPECT_EQ(Journal(Folder, kSmallSession, kSmallDate).CutBytes(), large.size());
  EXPECT_TRUE(ReadFile(std::filesystem::path(File) += ".torn") == torn + large);
  for (std::size_t size = 0; size < kSmallPlaces[0]; ++size) {
    WriteFile(File, whole.substr(0, size));
    EXPECT_EQ(Journal(Folder, kSmallSession, kSmallDate).CutBytes(), size) << "of the header";
    EXPECT_EQ(TextsOf(File).size(), 0u);
  }
}

TEST_F(JournalTest, KeepsWhatStandsBehindDamage) {
  std::string bytes = SmallJournal();
  bytes[60] = '?';
  WriteFile(File, bytes);
  Journal journal(Folder, kSmallSession, kSmallDate);
  EXPECT_EQ(journal.CutBytes(), 0u);
  EXPECT_EQ(journal.DamagedBytes(), 48u);
  EXPECT_EQ(journal.Identity().Created, 1772445600) << "of the reset";
  EXPECT_EQ(ReadFile(File), bytes);
  ASSERT_TRUE(journal.Append(JournalKind::Reset, 1, 1, ""));
  EXPECT_NE(journal.Identity().Created, 1772445600) << "of the last one";
}

TEST_F(JournalTest, RefusesOtherJournals) {
  const std::string path = PathInSentence(File);
  WriteFile(File, SmallJournal());
  {
    const Journal journal(Folder, kSmallSession, kSmallDate);
    EXPECT_EQ(Refusal(kSmallSession, kSmallDate), path + " is in use by another process");
  }
  EXPECT_EQ(Refusal("FIX.4.4:DESK-?VENUE", kSmallDate),
            path + " is the journal of FIX.4.4:DESK->VENUE of 20260302, not of FIX.4.4:DESK-?VENUE of 20260302");
  std::filesystem::rename(File, JournalPath(Folder, kSmallSession, "20260303"));
  EXPECT_NE(Refusal(kSmallSession, "20260303"), "");
  std::string damaged = SmallJournal();
  damaged[20] = '?';
  for (const std::string& bytes : {damaged, std::string("a"), std::string(200, 'a')}) {
    WriteFile(File, bytes);
    EXPECT_NE(Refusal(kSmallSession, kSmallDate), "");
    EXPECT_EQ(ReadFile(File), bytes) << "stays";
  }
  for (const char* date : {"2026030", "202603021", "2026030a"}) EXPECT_NE(Refusal(kSmallSession, date), "") << date;
  EXPECT_NE(Refusal("", kSmallDate), "");
  EXPECT_NE(Refusal(std::string(kLongestSession + 1, 'S'), kSmallDate), "");
}

TEST_F(JournalTest, TakesTextsUpToTheLargest) {
  Journal journal(Folder, kSmallSession, kSmallDate);
  const std::string largest(kLargestJournalText, 'x');
  EXPECT_FALSE(journal.Append(JournalKind::Message, 1, 2, largest + 'x'));
  EXPECT_EQ(journal.Failure(), "a message of 1048577 bytes is larger than a journal takes");
  EXPECT_EQ(journal.NextTarget(), 1u);
  ASSERT_TRUE(journal.Append(JournalKind::Message, 1, 2, "first"));
  ASSERT_TRUE(journal.Append(JournalKind::Message, 1, 3, largest));
  EXPECT_EQ(TextsOf(File), (std::vector<std::string>{"first", largest}));
}

TEST_F(JournalTest, ReaderBesideAWriterGetsEachRecordOnce) {
  constexpr std::uint32_t kRecords = 20'000;
  Journal journal(Folder, kSmallSession, kSmallDate);
  std::thread writer([&] {
    for (std::uint32_t i = 1; i <= kRecords; ++i)
      journal.Append(JournalKind::Message, 1, i,
                     std::string(i % 9 == 0 ? i : i % 700, static_cast<char>('a' + i % 26)));
  });
  JournalReader reader(File);
  std::uint32_t next = 1;
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (next <= kRecords && std::chrono::steady_clock::now() < end)
    for (JournalRecord record; reader.Next(record); ++next) {
      ASSERT_EQ(record.NextTarget, next);
      ASSERT_EQ(record.Text, std::string(next % 9 == 0 ? next : next % 700, static_cast<char>('a' + next % 26)));
    }
  writer.join();
  EXPECT_EQ(next, kRecords + 1);
  EXPECT_EQ(reader.DamagedBytes(), 0u);
}

}  // namespace
