#include "grid_base/settings/registry_store.h"

#include "tests/support/own_folder.h"

namespace {

namespace fs = std::filesystem;

class RegistryStoreTest : public OwnFolder {
 protected:
  fs::path File() const { return Folder / "s.xml"; }
};

const std::string kOldBytes = "<Root>\r\n<P>\r\n<k>\"1\"</k>\r\n</P>\r\n</Root>\r\n";
const std::string kNewBytes = "<Root>\r\n<P>\r\n<k>\"2\"</k>\r\n</P>\r\n</Root>\r\n";

void WriteNumber(RegistryStore& store, std::int32_t number) {
  const auto handle = store.Open(0, 0);
  ASSERT_TRUE(handle->CreatePath(L"P") && handle->Write(L"k", number));
}

TEST_F(RegistryStoreTest, SharesATreeAndClosesHandlesOfRemovedNodes) {
  const auto store = RegistryStore::Make(File());
  const auto writer = store->Open(0, 0), reader = store->Open(0, 1), deep = store->Open(0, 0),
             machine = store->Open(1, 0);
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
  auto store = RegistryStore::Make(File());
  auto first = store->Open(0, 0);
  const auto reader = store->Open(0, 1);
  WriteNumber(*store, 2);
  EXPECT_FALSE(fs::exists(File()));
  store.reset();
  first.reset();
  EXPECT_EQ(ReadFile(File()), "<CURRENT_USER>\r\n<P>\r\n<k>\"2\"</k>\r\n</P>\r\n</CURRENT_USER>\r\n");
  WriteFile(File(), kOldBytes);
  store = RegistryStore::Make(File());
  WriteFile(File(), "changed by another hand");
  WriteNumber(*store, 1);
  EXPECT_EQ(ReadFile(File()), "changed by another hand") << "nothing has changed, so nothing is written";
  WriteNumber(*store, 2);
  EXPECT_EQ(ReadFile(File()), kNewBytes);
}

TEST_F(RegistryStoreTest, ReportsAFailedWriteOnceAndWritesLater) {
  const auto store = RegistryStore::Make(Folder / "later" / "s.xml");
  testing::internal::CaptureStderr();
  WriteNumber(*store, 2);
  EXPECT_FALSE(store->Save());
  const std::string report = testing::internal::GetCapturedStderr();
  EXPECT_NE(report.find("s.xml cannot be written"), std::string::npos) << report;
  EXPECT_EQ(report.find('\n'), report.size() - 1);
  fs::create_directory(Folder / "later");
  EXPECT_TRUE(store->Save());
  EXPECT_TRUE(fs::exists(Folder / "later" / "s.xml"));
}

// The second of two stores finds the file replaced and keeps nothing.
TEST_F(RegistryStoreTest, KeepsEachDamagedFileOnce) {
  const std::string damaged[] = {"<Root><P></P></Root", "<Root>\r\n\x1A<P>\n</Root>"};
  fs::create_directory(Folder / "s.xml.damaged2");
  for (const std::string& bytes : damaged) {
    WriteFile(File(), bytes);
    const auto first = RegistryStore::Make(File()), second = RegistryStore::Make(File());
    WriteNumber(*first, 1);
    WriteNumber(*second, 2);
    EXPECT_EQ(ReadFile(File()), kNewBytes);
  }
  EXPECT_EQ(ReadFile(Folder / "s.xml.damaged"), damaged[0]);
  EXPECT_EQ(ReadFile(Folder / "s.xml.damaged3"), damaged[1]);
  EXPECT_EQ(std::distance(fs::directory_iterator(Folder), {}), 4);
  WriteFile(File(), damaged[0]);
  const auto store = RegistryStore::Make(File());
  fs::remove(File());
  WriteNumber(*store, 2);
  EXPECT_EQ(ReadFile(File()), kNewBytes) << "a damaged file that is gone need not be kept";
}

// Titles come from the terminal, and the format has no escape.
TEST_F(RegistryStoreTest, KeepsWhatFollowsATextWithTags) {
  const std::wstring brackets(100'000, L'<');
  const std::pair<std::wstring, std::wstring> rows[] = {
      {L"</k>", L"(/k>"},
      {L"<k>", L"(k>"},
      {L"x</P></CURRENT_USER>", L"x(/P>(/CURRENT_USER>"},
      {L"</Q:ax>", L"(/Q:ax>"},
      {L"<<k>k>", L"<(k>k>"},
      {L"</K> </kk> </behind> <b> 1 < 2 > \"", L"</K> </kk> </behind> <b> 1 < 2 > \""},
      {L"</k\n> <\n/P\n>", L"(/k> (/P>"},
      {L"</\u0416\u2020\u20AC> </?\u2020\u20AC>", L"(/?\u2020\u20AC> (/?\u2020\u20AC>"},
      {L"</k\r\n>", L"</k\r>"},
      {brackets, brackets},
      {brackets + L"/Q:ax>", std::wstring(99'999, L'<') + L"(/Q:ax>"},
  };
  for (const auto& [written, back] : rows) {
    SCOPED_TRACE(testing::PrintToString(written.substr(0, 20)));
    fs::remove(File());
    const std::wstring path = L"P\\//Q :\na<x>\\\u0416\u2020\u20AC\\";
    auto writer = RegistryStore::Make(File())->Open(0, 0);
    ASSERT_TRUE(writer->CreatePath(path) && writer->Write(L"k", written) && writer->Write(L"behind<", std::int32_t{7}));
    ASSERT_TRUE(writer->CreatePath(L"Z") && writer->Write(L"last", std::int32_t{8}));
    writer.reset();
    const auto reader = RegistryStore::Make(File())->Open(0, 1);
    std::wstring text;
    std::int32_t number = 0;
    ASSERT_TRUE(reader->OpenPath(L"P\\Q:ax\\?\u2020\u20AC")) << "letters outside the code page are question marks";
    EXPECT_TRUE(reader->Read(L"k", text) && text == back);
    EXPECT_TRUE(reader->Read(L"behind<", number) && number == 7);
    EXPECT_TRUE(reader->OpenPath(L"Z") && reader->Read(L"last", number) && number == 8);
  }
}

TEST_F(RegistryStoreTest, OpensOneStoreInTheFirstFolder) {
  CQORPRegistrySP::UseFolder(Folder);
  CQORPRegistrySP::UseFolder(Folder / "other");
  const auto handle = CQORPRegistrySP::Create(0, 0);
  ASSERT_TRUE(handle->CreatePath(L"TradeBook") && handle->Write(L"BuyColor", std::uint32_t{255}));
  EXPECT_TRUE(CQORPRegistrySP::Save());
  EXPECT_TRUE(fs::exists(Folder / "TradeBookSettings.xml"));
  EXPECT_TRUE(CQORPRegistrySP::Create(0, 1)->OpenPath(L"Trade Book"));
}

}  // namespace
