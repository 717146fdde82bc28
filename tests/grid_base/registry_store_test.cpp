#include "grid_base/registry_store.h"

#include "platform/replace_file.h"
#include "tests/grid_base/own_folder.h"

namespace {

namespace fs = std::filesystem;

class RegistryStoreTest : public OwnFolder {
 protected:
  void SetUp() override {
    OwnFolder::SetUp();
    File = Folder / "s.xml";
    Beside = Folder / "s.xml.new";
  }
  fs::path File, Beside;
};

const std::string kOldBytes = "<Root>\r\n<P>\r\n<k>\"1\"</k>\r\n</P>\r\n</Root>\r\n";
const std::string kNewBytes = "<Root>\r\n<P>\r\n<k>\"2\"</k>\r\n</P>\r\n</Root>\r\n";

void WriteNumber(RegistryStore& store, std::int32_t number) {
  const auto handle = store.Open(0, 0);
  ASSERT_TRUE(handle->CreatePath(L"P"));
  ASSERT_TRUE(handle->Write(L"k", number));
}

TEST_F(RegistryStoreTest, HandlesShareATreeAndNeverHoldANodeThatIsGone) {
  const auto store = RegistryStore::Make(File);
  const auto writer = store->Open(0, 0);
  const auto reader = store->Open(0, 1);
  const auto deep = store->Open(0, 0);
  const auto machine = store->Open(1, 0);
  ASSERT_TRUE(writer->CreatePath(L"P\\Q\\R"));
  ASSERT_TRUE(reader->OpenPath(L"P\\Q\\R") && deep->OpenPath(L"P\\Q\\R"));
  ASSERT_TRUE(writer->Write(L"k", std::int32_t{5}));
  std::int32_t number = 0;
  EXPECT_TRUE(reader->Read(L"k", number) && number == 5);
  EXPECT_FALSE(reader->Write(L"k", std::int32_t{6}) || reader->CreatePath(L"P") || reader->RemovePath(L"P", false));
  EXPECT_FALSE(machine->OpenPath(L"P"));
  ASSERT_TRUE(reader->OpenPath(L"P"));
  EXPECT_TRUE(reader->RemoveValue(L"Q"));
  EXPECT_FALSE(deep->Read(L"k", number) || writer->Write(L"k", std::int32_t{7}));
  ASSERT_TRUE(writer->CreatePath(L"P"));
  EXPECT_TRUE(writer->RemovePath(L"P", false));
  EXPECT_FALSE(reader->RemoveValue(L"k") || writer->Read(L"k", number));
}

TEST_F(RegistryStoreTest, WritesTheFileWhenTheLastWriterGoes) {
  auto store = RegistryStore::Make(File);
  auto first = store->Open(0, 0);
  const auto reader = store->Open(0, 1);
  WriteNumber(*store, 2);
  EXPECT_FALSE(fs::exists(File));
  store.reset();
  first.reset();
  EXPECT_EQ(BytesOf(File), "<CURRENT_USER>\r\n<P>\r\n<k>\"2\"</k>\r\n</P>\r\n</CURRENT_USER>\r\n");
  EXPECT_FALSE(fs::exists(Beside));
  WriteBytes(File, kOldBytes);
  store = RegistryStore::Make(File);
  WriteBytes(File, "changed by another hand");
  WriteNumber(*store, 1);
  EXPECT_EQ(BytesOf(File), "changed by another hand") << "nothing has changed, so nothing is written";
  WriteNumber(*store, 2);
  EXPECT_EQ(BytesOf(File), kNewBytes);
}

TEST_F(RegistryStoreTest, OldFileSurvivesEveryFailure) {
  const std::string damaged = "<Root><P></P></Root";
  const struct {
    const char* What;
    std::string Old;
    fs::path Obstacle;
    const char* LinkTo;  // a folder stands in the way where this is null
  } rows[] = {
      {"the new file cannot be opened", kOldBytes, Beside, nullptr},
      {"the disk is full", kOldBytes, Beside, "/dev/full"},
      {"a damaged file cannot be kept", damaged, Folder / "s.xml.damaged", nullptr},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.What);
    WriteBytes(File, row.Old);
    testing::internal::CaptureStderr();
    const auto store = RegistryStore::Make(File);
    std::error_code noLinks;
    if (row.LinkTo == nullptr) fs::create_directory(row.Obstacle);
    if (row.LinkTo != nullptr) fs::create_symlink(row.LinkTo, row.Obstacle, noLinks);
    const bool obstructed = fs::exists(row.Obstacle);
    WriteNumber(*store, 2);
    const std::string report = testing::internal::GetCapturedStderr();
    if (!obstructed) continue;  // no device here that is always full
    EXPECT_NE(report.find("s.xml cannot be written"), std::string::npos) << report;
    EXPECT_EQ(BytesOf(File), row.Old);
    if (row.LinkTo == nullptr) {
      testing::internal::CaptureStderr();
      EXPECT_FALSE(store->Save());
      EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "a failure is told once";
      EXPECT_TRUE(fs::remove(row.Obstacle)) << "what is not ours stays";
    }
    EXPECT_FALSE(fs::exists(fs::symlink_status(Beside)));
    EXPECT_TRUE(store->Save());
    EXPECT_EQ(BytesOf(File), kNewBytes);
  }
  EXPECT_EQ(BytesOf(Folder / "s.xml.damaged"), damaged);
  unsigned long errorNumber = 0;
  EXPECT_FALSE(ReplaceFileContent(Folder, "x", errorNumber));
  EXPECT_NE(errorNumber, 0UL);
  EXPECT_FALSE(fs::exists(Folder.string() + ".new"));
}

// Display names and titles are the terminal's, and the format has no escape.
TEST_F(RegistryStoreTest, NoTextHidesWhatStandsBehindIt) {
  const std::wstring brackets(100'000, L'<');
  const struct {
    std::wstring Text, Back;
  } rows[] = {
      {L"</k>", L"(/k>"},
      {L"<k>", L"(k>"},
      {L"x</P></CURRENT_USER>", L"x(/P>(/CURRENT_USER>"},
      {L"</Q:ax>", L"(/Q:ax>"},
      {L"<<k>k>", L"<(k>k>"},
      {L"</K> </kk> </behind> <b> 1 < 2 > \"", L"</K> </kk> </behind> <b> 1 < 2 > \""},
      {L"two\nlines", L"twolines"},
      {brackets, brackets},
      {brackets + L"/Q:ax>", std::wstring(99'999, L'<') + L"(/Q:ax>"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.Text.begin(), row.Text.begin() + std::min<std::ptrdiff_t>(row.Text.size(), 20)));
    fs::remove(File);
    const std::wstring path = L"P\\//Q :\na<x>\\";
    auto writer = RegistryStore::Make(File)->Open(0, 0);
    ASSERT_TRUE(writer->CreatePath(path) && writer->Write(L"k", row.Text) &&
                writer->Write(L"behind<", std::int32_t{7}));
    ASSERT_TRUE(writer->CreatePath(L"Z") && writer->Write(L"last", std::int32_t{8}));
    writer.reset();
    const auto reader = RegistryStore::Make(File)->Open(0, 1);
    std::wstring text;
    std::int32_t behind = 0, last = 0;
    ASSERT_TRUE(reader->OpenPath(path));
    EXPECT_TRUE(reader->Read(L"k", text) && text == row.Back);
    EXPECT_TRUE(reader->Read(L"behind<", behind) && reader->OpenPath(L"P\\Q:ax"));
    EXPECT_TRUE(reader->OpenPath(L"Z") && reader->Read(L"last", last));
    EXPECT_EQ(behind + last, 15);
  }
}

TEST_F(RegistryStoreTest, ProcessHasOneStoreInTheFolderNamedFirst) {
  CQORPRegistrySP::UseFolder(Folder);
  CQORPRegistrySP::UseFolder(Folder / "other");
  const auto handle = CQORPRegistrySP::Create(0, 0);
  ASSERT_TRUE(handle->CreatePath(L"TradeBook") && handle->Write(L"BuyColor", std::uint32_t{255}));
  EXPECT_TRUE(CQORPRegistrySP::Save());
  EXPECT_EQ(BytesOf(Folder / "TradeBookSettings.xml"),
            "<CURRENT_USER>\r\n<TradeBook>\r\n<BuyColor>\"255\"</BuyColor>\r\n</TradeBook>\r\n</CURRENT_USER>\r\n");
  EXPECT_TRUE(CQORPRegistrySP::Create(0, 1)->OpenPath(L"Trade Book"));
}

}  // namespace
