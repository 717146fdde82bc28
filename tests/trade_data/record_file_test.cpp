// Record files: their names, what is loaded of them, and the writer thread.
#include <algorithm>
#include <iostream>

#include "platform/locale.h"
#include "tests/support/own_folder.h"
#include "tests/support/wire_bytes.h"
#include "trade_data/record_files/ada_write_async.h"
#include "trade_data/records/trade_impl.h"

namespace {

namespace fs = std::filesystem;
using QOR::Base::CQORADAWriteAsync;

std::span<const std::uint8_t> AsBytes(const std::string& text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// "day.ada" in a folder. Remembers the ids of its messages; refuses id 13, and writes once the count of writes allowed
// is used up.
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
  bool Write(const std::string& message) { return WriteBytes(AsBytes(message)); }
  std::string Ids;
  int WritesAllowed = 1000000;
};

class RecordFileTest : public OwnFolder {
 protected:
  // The file with these bytes, opened; without any as it stands.
  TestFile& Open(const std::string& bytes = {}) {
    File.reset();
    if (!bytes.empty()) WriteFile(Path(), bytes);
    File = std::make_unique<TestFile>(Folder);
    EXPECT_FALSE(File->Open());
    return *File;
  }
  std::string Closed() {
    EXPECT_TRUE(File->Close());
    return ReadFile(Path());
  }
  fs::path Path() const { return Folder / "day.ada"; }
  std::unique_ptr<TestFile> File;
};

// What the action reports.
template <typename Action>
std::string ReportOf(Action action) {
  testing::internal::CaptureStderr();
  action();
  return testing::internal::GetCapturedStderr();
}

std::string Message(std::uint32_t id, unsigned mode = 0) {
  return WireMessage(8111, WireU32(20008, id), mode);  // 22 bytes
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

// Whole messages after damage are cut off too: they would come back after the new ones.
TEST_F(RecordFileTest, LoadsUpToTheLastWholeMessageAndWritesAfterIt) {
  const std::string deflated = Deflated(WireU16(10002, 8111) + WireU32(20008, 1));
  // The bytes, the ids that are loaded, and the size of what is.
  std::vector<std::tuple<std::string, std::string, std::string, std::size_t>> cases = {
      {"plain and compressed", WireFrame(deflated, 1) + Message(2), "1 2 ", 10 + deflated.size() + 22},
      {"a refused one costs itself", Message(1) + Message(13) + Message(2), "1 2 ", 66},
      {"garbage between", Message(1) + "#xy" + Message(2) + "z", "1 2 ", 47},
      {"enciphered without a key", Message(1) + Message(2, 2) + Message(3), "1 ", 22},
      {"unknown mode", Message(1) + Message(2, 7) + Message(3) + Message(4), "1 ", 22},
      {"no number first", Message(1) + WireU16(1, 0) + WireU16(10001, 4) + WireU8(101, 1) + Message(3), "1 ", 22},
      {"a bare header", WireU16(1, 0) + WireU16(10001, 0), "", 0},
  };
  for (std::size_t size = 1; size <= 66; ++size)
    cases.emplace_back("cut after " + std::to_string(size), (Message(1) + Message(2) + Message(3)).substr(0, size),
                       std::string("1 2 3 ").substr(0, size / 22 * 2), size / 22 * 22);
  EXPECT_EQ(TestFile(Folder).Load(), 0u);
  for (const auto& [name, bytes, ids, loaded] : cases) {
    SCOPED_TRACE(name);
    TestFile& file = Open(bytes);
    EXPECT_EQ(file.Load(), loaded);
    EXPECT_EQ(file.Ids, ids);
    EXPECT_EQ(ReadFile(Path()), bytes) << "reading alone changes nothing";
    const std::string report = ReportOf([&] { EXPECT_TRUE(file.Write(Message(8)) && file.Write(Message(9))); });
    const std::size_t rest = bytes.size() - loaded;
    const std::string expected = "\tBytes behind the last whole message, cut off: " + std::to_string(rest) + "\n";
    EXPECT_TRUE(rest == 0 ? report.empty() : report.ends_with(expected)) << report;
    EXPECT_LE(std::count(report.begin(), report.end(), '\n'), 1) << report;
    EXPECT_EQ(Closed(), bytes.substr(0, loaded) + Message(8) + Message(9));
  }
}

TEST_F(RecordFileTest, WritesInOrderAndLoadsTheTradesAgain) {
  CQORTradeImpl trades, loaded;
  trades.SetName(Folder, "day");
  ASSERT_FALSE(trades.Open());
  CQORADAWriteAsync writer(trades, trades.BufferStore());
  TradeRecord record{};
  EXPECT_FALSE(trades.SaveRecord(record, 8111, 0));
  trades.SetWriterHandle(&writer);
  std::string ids;
  for (std::uint32_t id = 1; id <= 5000; ++id) {
    record.VELDTradeID = id;
    // Lengths on both sides of a buffer's step, so that buffers of all sizes come back from the pool.
    std::memset(record.ReferenceText, 'r', sizeof record.ReferenceText - 1);
    record.ReferenceText[id % 65] = '\0';
    ASSERT_TRUE(trades.SaveRecord(record, 9101, id % 3 == 0 ? 1 : 0));
    if (id != 13) ids += std::to_string(id) + " ";
  }
  EXPECT_TRUE(writer.Close());
  EXPECT_FALSE(writer.Write(AsBytes("late")));
  const std::size_t size = ReadFile(Path()).size();  // flushed before the file is closed
  EXPECT_TRUE(trades.Close());
  EXPECT_EQ(Open().Load(), size);
  EXPECT_EQ(File->Ids, ids);
  File.reset();
  loaded.SetName(Folder, "day");
  ASSERT_FALSE(loaded.Open());
  EXPECT_EQ(loaded.Load(), size);
  for (const std::uint32_t id : {1u, 2499u, 5000u}) {
    EXPECT_TRUE(loaded.FetchRecord(static_cast<std::int32_t>(id), record));
    EXPECT_EQ(record.ReferenceText, std::string(id % 65, 'r'));
  }
  EXPECT_EQ(loaded.NextTradeID(), 5001);
}

// What a writer of more messages than the file takes reports, with its error.
std::string ReportOfTooMany(TestFile& file) {
  return ReportOf([&file] {
    QOR::Base::CQORADAStore store;
    CQORADAWriteAsync writer(file, store);
    for (std::uint32_t id = 1; id <= 10000; ++id) writer.Write(AsBytes(Message(id)));
    EXPECT_FALSE(writer.Close() || writer.Close());
    std::cerr << writer.Error() << std::endl;
  });
}

TEST_F(RecordFileTest, ReportsAFailedWriteOnceAndStopsWriting) {
  Open().WritesAllowed = 2;
  const std::string report = ReportOfTooMany(*File);
  EXPECT_TRUE(report.starts_with("QOR::Base::CQORADAWriteAsync::WriteOut\t")) << report;
  EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), 2) << report;
  EXPECT_NE(report.find("\tWrite failed: "), std::string::npos) << report;
  EXPECT_EQ(Closed(), Message(1) + Message(2));
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "there is no full disk here";
  fs::remove(Path());
  fs::create_symlink("/dev/full", Path());
  const std::string full = ReportOfTooMany(Open());
  EXPECT_NE(full.find("Write failed: ErrorNo: 28, "), std::string::npos) << full;
  EXPECT_TRUE(full.ends_with("\n28\n")) << full;
  // Nor does such a file go to a backup.
  Open();
  const std::string refused =
      ReportOf([this] { EXPECT_TRUE(File->Write(Message(1)) && !File->Backup(Folder / "old", Moment())); });
  EXPECT_NE(refused.find("\tWrite failed: ErrorNo: 28, "), std::string::npos) << refused;
  EXPECT_TRUE(fs::is_symlink(Path()) && fs::is_empty(Folder / "old"));
}

TEST_F(RecordFileTest, ReportsWhyItCannotOpen) {
  WriteFile(Folder / "file", "x");
  for (const fs::path& folder : {Folder / "missing", Folder / "file"}) {
    TestFile file(folder);
    EXPECT_TRUE(file.Open());
    EXPECT_FALSE(file.Write(Message(1)));
  }
}

TEST_F(RecordFileTest, MovesTheFileToABackupAndStartsAFreshOne) {
  TestFile& file = Open();
  file.Write(Message(1));
  EXPECT_TRUE(file.Backup(Folder / "old", Moment()));
  file.Write(Message(2));
  // A backup of the same minute, and a folder that cannot be created: the file stays in use.
  WriteFile(Folder / "taken", "x");
  for (const char* folder : {"old", "taken"}) {
    const std::string report = ReportOf([&] { EXPECT_FALSE(file.Backup(Folder / folder, Moment())); });
    EXPECT_TRUE(report.starts_with("QOR::Base::CQORFileImpl::Backup\t")) << report;
    EXPECT_NE(report.find("\tRename failed: ErrorNo: "), std::string::npos) << report;
    file.Write(Message(3));
  }
  EXPECT_EQ(Closed(), Message(2) + Message(3) + Message(3));
  EXPECT_EQ(ReadFile(Folder / "old" / "day_20260301_0905.ada"), Message(1));
}

}  // namespace
