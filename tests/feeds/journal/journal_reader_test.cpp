#include "feeds/journal/journal_reader.h"

#include "feeds/common/feed_report.h"
#include "feeds/journal/file_failure.h"
#include "tests/feeds/journal/small_journal.h"
#include "tests/support/own_folder.h"

namespace {

class JournalReaderTest : public OwnFolder {
 protected:
  void Append(std::string_view bytes) { std::ofstream(File, std::ios::binary | std::ios::app) << bytes; }
  const std::filesystem::path File = Folder / "x.journal";
};

TEST_F(JournalReaderTest, ReadsLiteralBytes) {
  WriteFile(File, SmallJournal());
  JournalReader reader(File);
  EXPECT_EQ(reader.Identity().Session + reader.Identity().Date, kSmallSession + kSmallDate);
  EXPECT_EQ(reader.Identity().Created, 1772438400);
  EXPECT_EQ(reader.BytesBehind(), 114u);
  EXPECT_EQ(Rest(reader), kSmallRecords);
  EXPECT_EQ(reader.Identity().Created, 1772445600) << "of the reset";
  EXPECT_EQ(reader.BytesBehind(), 0u);
  EXPECT_EQ(reader.TextAt(55), std::get<4>(kSmallRecords[0]));
  for (const std::uint64_t place : {0, 54, 56, 103, 169, 5000}) EXPECT_EQ(reader.TextAt(place), "") << place;
}

TEST_F(JournalReaderTest, LosesOnlyTheDamagedRecord) {
  const std::string whole = SmallJournal();
  for (std::size_t at = 0; at < whole.size(); ++at) {
    SCOPED_TRACE(at);
    std::string bytes = whole;
    bytes[at] = static_cast<char>(bytes[at] ^ (1 << at % 8));
    WriteFile(File, bytes);
    if (at < kSmallPlaces[0]) {
      EXPECT_THROW(JournalReader{File}, FeedError);
      continue;
    }
    const std::size_t damaged = at < kSmallPlaces[1] ? 0 : at < kSmallPlaces[2] ? 1 : 2;
    std::vector<Given> left = kSmallRecords;
    left.erase(left.begin() + static_cast<std::ptrdiff_t>(damaged));
    JournalReader reader(File);
    EXPECT_EQ(Rest(reader), left);
    const std::size_t size = kSmallPlaces[damaged + 1] - kSmallPlaces[damaged];
    EXPECT_EQ(reader.DamagedBytes(), damaged == 2 ? 0 : size);
    EXPECT_EQ(reader.BytesBehind(), damaged == 2 ? size : 0);
  }
}

TEST_F(JournalReaderTest, FindsTheNextRecordBehindAnyDamage) {
  const std::string whole = SmallJournal();
  const std::string first = whole.substr(0, kSmallPlaces[1]), third = whole.substr(kSmallPlaces[2]);
  const std::string second = whole.substr(kSmallPlaces[1], kSmallPlaces[2] - kSmallPlaces[1]);
  std::string marks, tooLarge;
  while (marks.size() < 3 << 20) marks += kRecordMark;
  // With sums that are right.
  EncodeJournalRecord({JournalKind::Message, 1, 1, 0, std::string(kLargestJournalText + 1, 'x')}, 0xEF902A2F, tooLarge);
  std::vector<std::string> damages = {tooLarge, marks, first.substr(60)};
  for (const std::size_t size : {1, 3, 4, 67, 262'110, 262'111, 262'142, 262'143, 262'144}) {
    damages.push_back(marks.substr(0, size));
    damages.push_back(std::string(size, 'x'));
  }
  for (const std::string& damage : damages) {
    SCOPED_TRACE(damage.size());
    WriteFile(File, first + damage);
    JournalReader reader(File), other(File);
    EXPECT_EQ(Rest(reader).size() + Rest(other).size(), 2u);
    EXPECT_EQ(Rest(other).size(), 0u);
    Append(second.substr(0, 20));
    EXPECT_EQ(Rest(reader).size(), 0u);
    EXPECT_EQ(reader.DamagedBytes(), 0u) << "no record follows yet";
    Append(second.substr(20) + third);
    EXPECT_EQ(Rest(reader).size(), 2u);
    EXPECT_EQ(reader.DamagedBytes(), damage.size());
    // Its writer cut it and went on, to the same size where that was 67 more, and that was damaged.
    WriteFile(File, first + second + '?' + third);
    EXPECT_EQ(Rest(other).size(), 2u);
    EXPECT_EQ(other.DamagedBytes(), 1u);
  }
}

TEST_F(JournalReaderTest, WaitsForTheRestOfARecord) {
  const std::string whole = SmallJournal();
  const std::string first = whole.substr(kSmallPlaces[0], kSmallPlaces[1] - kSmallPlaces[0]);
  for (std::size_t size = 1; size < first.size(); ++size) {
    SCOPED_TRACE(size);
    WriteFile(File, whole + first.substr(0, size));
    JournalReader reader(File), other(File);
    EXPECT_EQ(Rest(reader).size(), 3u);
    EXPECT_EQ(Rest(other).size(), 3u);
    EXPECT_EQ(reader.BytesBehind(), size);
    Append(first.substr(size));
    EXPECT_EQ(Rest(reader).size(), 1u);
    // Its writer cut it and wrote another one, and one more.
    WriteFile(File, whole + whole.substr(kSmallPlaces[1]));
    EXPECT_EQ(Rest(other).size(), 2u);
    EXPECT_EQ(reader.DamagedBytes() + other.DamagedBytes(), 0u);
  }
}

TEST_F(JournalReaderTest, RefusesOtherFiles) {
  const std::string header = SmallJournal().substr(0, kSmallPlaces[0]);
  std::string later = header, longer = header + std::string(5000, 'x');
  later[8] = 2;
  longer[11] = 5;
  const std::pair<std::string, std::string> refusals[] = {{"8=FIX.4.4", "is no journal"},
                                                          {later, "is a journal of another version"},
                                                          {longer, "has a damaged header"},
                                                          {header.substr(0, 35), "ends within the header of a journal"},
                                                          {header.substr(0, 54), "has a damaged header"}};
  for (const auto& [bytes, refusal] : refusals) {
    WriteFile(File, bytes);
    EXPECT_EQ(IsJournalFile(File), bytes[0] == header[0]);
    try {
      const JournalReader reader(File);
      ADD_FAILURE() << refusal;
    } catch (const FeedError& error) {
      EXPECT_EQ(error.what(), PathInSentence(File) + ' ' + refusal);
    }
  }
  EXPECT_THROW(JournalReader{Folder / "none"}, FeedError);
  EXPECT_THROW(JournalReader{Folder}, FeedError);
}

}  // namespace
