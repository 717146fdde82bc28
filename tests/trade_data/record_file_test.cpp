// Record files: their names, what is loaded of them, and the writer thread.
#include <gtest/gtest.h>

#include "platform/locale.h"
#include "tests/support/own_folder.h"
#include "tests/support/wire_bytes.h"
#include "trade_data/record_files/ada_write_async.h"
#include "trade_data/records/trade_impl.h"

namespace {

namespace fs = std::filesystem;
using QOR::Base::CQORADAWriteAsync;

using RecordFileTest = OwnFolder;

fs::path WriteDay(const fs::path& folder, const std::string& bytes) {
  WriteFile(folder / "day.ada", bytes);
  return folder / "day.ada";
}

// Remembers the ids of its messages; refuses id 13, and writes once the count of writes allowed is used up.
class TestFile : public QOR::Base::CQORFileImpl {
 public:
  explicit TestFile(const fs::path& folder) { SetName(folder, "day"); }
  void LoadRecord(CQORPacketReader& reader) override {
    std::uint32_t id = 0;
    while (reader.NextTag())
      if (reader.Tag == 20008) reader.ReadU32(id);
    if (id == 13) throw std::bad_alloc();
    Ids += std::to_string(id) + " ";
  }
  bool WriteBytes(std::span<const std::uint8_t> bytes) override {
    return WritesAllowed-- > 0 && CQORFileImpl::WriteBytes(bytes);
  }
  std::string Ids;
  int WritesAllowed = 1000000;
};

std::string Message(std::uint32_t id, unsigned mode = 0) {
  return WireMessage(8111, WireU32(20008, id), mode);  // 22 bytes
}

std::string CompressedMessage(std::uint32_t id) {
  CQORPacketWriter writer(1);
  writer.AddU16(10002, 8111);
  writer.AddU32(20008, id);
  writer.Finish();
  return {writer.GetData(), writer.GetData() + writer.GetSize()};
}

std::span<const std::uint8_t> AsBytes(const std::string& text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::tm Moment() {
  std::tm moment{};
  UtcFields(1772355900, moment);  // 2026-03-01 09:05
  return moment;
}

TEST_F(RecordFileTest, NamesFilesAndBackups) {
  CQORTradeImpl file;
  file.SetName("f", "Trade");
  EXPECT_EQ(file.FullPath(), fs::path("f") / "Trade.ada");
  file.SetDate(Moment());
  EXPECT_EQ(file.FullPath(), fs::path("f") / "Trade_20260301.ada");
  file.SetName("f", "a.b", ".x");
  EXPECT_EQ(file.FullPath(), fs::path("f") / "a.b_20260301.x");
  EXPECT_EQ(file.BackupPath("old", Moment()), fs::path("old") / "a.b_20260301_0905.x");
}

TEST_F(RecordFileTest, LoadsUpToTheLastWholeMessage) {
  const struct {
    const char* Name;
    std::string Bytes;
    std::string Ids;
    std::uint64_t Loaded;
  } cases[] = {
      {"empty", "", "", 0},
      {"plain and compressed", CompressedMessage(1) + Message(2), "1 2 ", CompressedMessage(1).size() + 22},
      {"a refused one costs itself", Message(1) + Message(13) + Message(2), "1 2 ", 66},
      {"garbage between", Message(1) + "#xy" + Message(2) + "z", "1 2 ", 47},
      {"enciphered without a key", Message(1) + Message(2, 2) + Message(3), "1 ", 22},
      {"unknown mode", Message(1) + Message(2, 7) + Message(3), "1 ", 22},
      {"no number first", Message(1) + WireU16(1, 0) + WireU16(10001, 4) + WireU8(101, 1) + Message(3), "1 ", 22},
      {"a bare header", WireU16(1, 0) + WireU16(10001, 0), "", 0},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.Name);
    WriteDay(Folder, row.Bytes);
    TestFile file(Folder);
    EXPECT_EQ(file.Load(), 0u);
    ASSERT_FALSE(file.Open());
    EXPECT_EQ(file.Load(), row.Loaded);
    EXPECT_EQ(file.Ids, row.Ids);
  }
}

TEST_F(RecordFileTest, LoadsWholeMessagesOfACutFileAndWritesAfterThem) {
  const std::string whole = Message(1) + Message(2) + Message(3);
  const char* ids[] = {"", "1 ", "1 2 ", "1 2 3 "};
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    SCOPED_TRACE(size);
    const fs::path path = WriteDay(Folder, whole.substr(0, size));
    TestFile file(Folder);
    ASSERT_FALSE(file.Open());
    EXPECT_EQ(file.Load(), size / 22 * 22);
    EXPECT_EQ(file.Ids, ids[size / 22]);
    testing::internal::CaptureStderr();
    EXPECT_TRUE(file.WriteBytes(AsBytes(Message(9))));
    EXPECT_EQ(testing::internal::GetCapturedStderr().empty(), size % 22 == 0);
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(ReadFile(path), whole.substr(0, size / 22 * 22) + Message(9));
  }
}

// Whole messages after the damage go too: they would come back after the new one.
TEST_F(RecordFileTest, CutsOffAndReportsTheRestBeforeItWritesAfterDamage) {
  const std::string bytes = Message(1) + Message(2, 7) + Message(3) + Message(4);
  const fs::path path = WriteDay(Folder, bytes);
  TestFile file(Folder);
  ASSERT_FALSE(file.Open());
  EXPECT_EQ(file.Load(), 22u);
  EXPECT_TRUE(file.Flush());
  EXPECT_EQ(ReadFile(path), bytes) << "reading alone changes nothing";
  testing::internal::CaptureStderr();
  for (const std::uint32_t id : {8u, 9u}) EXPECT_TRUE(file.WriteBytes(AsBytes(Message(id))));
  const std::string report = testing::internal::GetCapturedStderr();
  EXPECT_NE(report.find("\tBytes behind the last whole message, cut off: 66\n"), std::string::npos) << report;
  EXPECT_EQ(report.find('\n'), report.size() - 1) << "told once";
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadFile(path), Message(1) + Message(8) + Message(9));
}

TEST_F(RecordFileTest, WritesInOrderAndLoadsTheTradesAgain) {
  std::string expected;
  {
    CQORTradeImpl trades;
    trades.SetName(Folder, "day");
    ASSERT_FALSE(trades.Open());
    CQORADAWriteAsync writer(trades, trades.BufferStore());
    TradeRecord record{};
    EXPECT_FALSE(trades.SaveRecord(record, 8111, 0));
    trades.SetWriterHandle(&writer);
    for (std::uint32_t id = 1; id <= 5000; ++id) {
      record.VELDTradeID = id;
      // Lengths on both sides of a buffer's step, so that buffers of all sizes come back from the pool.
      std::memset(record.ReferenceText, 'r', sizeof record.ReferenceText - 1);
      record.ReferenceText[id % 65] = '\0';
      const std::uint16_t mode = id % 3 == 0 ? 1 : 0;
      ASSERT_TRUE(trades.SaveRecord(record, 9101, mode));
      CQORPacketWriter message(mode);
      trades.EncodeRecord(message, record, false, 9101, false);
      message.Finish();
      expected.append(reinterpret_cast<const char*>(message.GetData()), message.GetSize());
    }
    EXPECT_TRUE(writer.Close());
    EXPECT_FALSE(writer.Write(AsBytes("late")));
    EXPECT_TRUE(ReadFile(trades.FullPath()) == expected);
  }
  CQORTradeImpl loaded;
  loaded.SetName(Folder, "day");
  ASSERT_FALSE(loaded.Open());
  EXPECT_EQ(loaded.Load(), expected.size());
  TradeRecord record{};
  for (const int id : {1, 2499, 5000}) EXPECT_TRUE(loaded.FetchRecord(id, record)) << id;
  EXPECT_EQ(std::strlen(record.ReferenceText), 5000u % 65);
  EXPECT_EQ(loaded.NextTradeID(), 5001);
}

TEST_F(RecordFileTest, ReportsAFailedWriteOnceAndStopsWriting) {
  TestFile file(Folder);
  ASSERT_FALSE(file.Open());
  file.WritesAllowed = 2;
  testing::internal::CaptureStderr();
  QOR::Base::CQORADAStore store;
  CQORADAWriteAsync writer(file, store);
  for (std::uint32_t id = 1; id <= 1000; ++id) writer.Write(AsBytes(Message(id)));
  EXPECT_FALSE(writer.Close());
  EXPECT_FALSE(writer.Close());
  const std::string report = testing::internal::GetCapturedStderr();
  EXPECT_TRUE(report.starts_with("QOR::Base::CQORADAWriteAsync::WriteOut\t")) << report;
  EXPECT_NE(report.find("\tWrite failed: "), std::string::npos) << report;
  EXPECT_EQ(report.find('\n'), report.size() - 1) << report;
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadFile(Folder / "day.ada"), Message(1) + Message(2));
}

TEST_F(RecordFileTest, ReportsAFullDisk) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "there is no full disk here";
  fs::create_symlink("/dev/full", Folder / "day.ada");
  TestFile file(Folder);
  ASSERT_FALSE(file.Open());
  testing::internal::CaptureStderr();
  QOR::Base::CQORADAStore store;
  CQORADAWriteAsync writer(file, store);
  const std::string message = Message(1);
  for (int i = 0; i < 10000 && writer.Write(AsBytes(message)); ++i) {
  }
  EXPECT_FALSE(writer.Close());
  EXPECT_EQ(writer.Error(), 28u);
  const std::string report = testing::internal::GetCapturedStderr();
  EXPECT_NE(report.find("Write failed: ErrorNo: 28, "), std::string::npos) << report;
}

TEST_F(RecordFileTest, ReportsWhyItCannotOpen) {
  WriteFile(Folder / "file", "x");
  for (const fs::path& folder : {Folder / "missing", Folder / "file"}) {
    TestFile file(folder);
    EXPECT_TRUE(file.Open());
    EXPECT_FALSE(file.WriteBytes(AsBytes(Message(1))));
  }
}

TEST_F(RecordFileTest, MovesTheFileToABackupAndStartsAFreshOne) {
  TestFile file(Folder);
  ASSERT_FALSE(file.Open());
  file.WriteBytes(AsBytes(Message(1)));
  EXPECT_TRUE(file.Backup(Folder / "old", Moment()));
  file.WriteBytes(AsBytes(Message(2)));
  // A backup of the same minute, and a folder that cannot be created: the file stays in use.
  WriteFile(Folder / "taken", "x");
  for (const char* folder : {"old", "taken"}) {
    testing::internal::CaptureStderr();
    EXPECT_FALSE(file.Backup(Folder / folder, Moment()));
    const std::string report = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(report.starts_with("QOR::Base::CQORFileImpl::Backup\t")) << report;
    EXPECT_NE(report.find("\tRename failed: ErrorNo: "), std::string::npos) << report;
    file.WriteBytes(AsBytes(Message(3)));
  }
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadFile(Folder / "old" / "day_20260301_0905.ada"), Message(1));
  EXPECT_EQ(ReadFile(Folder / "day.ada"), Message(2) + Message(3) + Message(3));
}

TEST_F(RecordFileTest, RefusesABackupOfWhatCannotBeWritten) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "there is no full disk here";
  fs::create_symlink("/dev/full", Folder / "day.ada");
  TestFile file(Folder);
  ASSERT_FALSE(file.Open());
  testing::internal::CaptureStderr();
  EXPECT_TRUE(file.WriteBytes(AsBytes(Message(1))));
  EXPECT_FALSE(file.Backup(Folder / "old", Moment()));
  const std::string report = testing::internal::GetCapturedStderr();
  EXPECT_NE(report.find("\tWrite failed: ErrorNo: 28, "), std::string::npos) << report;
  EXPECT_TRUE(fs::is_symlink(Folder / "day.ada") && fs::is_empty(Folder / "old"));
}

}  // namespace
