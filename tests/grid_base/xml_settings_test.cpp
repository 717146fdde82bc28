#include "grid_base/settings/xml_settings.h"

#include "tests/support/own_folder.h"

namespace {

using XmlSettingsFile = OwnFolder;

class Pair : public SettingsObject {
 public:
  std::string_view ClassName() const override { return "Pair"; }
  std::uint16_t Schema() const override { return 7; }
  void Store(ArchiveWriter& archive) const override {
    archive.Put(First);
    archive.Put(Second);
  }
  bool Load(ArchiveReader& archive) override { return archive.Take(First) && archive.Take(Second); }
  std::uint16_t First = 0;
  std::uint32_t Second = 0;
};

std::wstring StoredText(CVELDPXMLSettings& settings, const std::wstring& key) {
  std::wstring text = L"(none)";
  settings.Read(key, text);
  return text;
}

TEST(XmlSettings, FindsPathsAndKeysWithoutTheirBlanks) {
  CVELDPXMLSettings settings;
  EXPECT_FALSE(settings.Write(L"key", L"no path is open"));
  ASSERT_TRUE(settings.CreatePath(L"Trade Book\\\\Col Price"));
  EXPECT_TRUE(settings.Write(L"My Key", std::wstring(L"a b")));
  EXPECT_EQ(StoredText(settings, L"MyKey"), L"a b");
  EXPECT_EQ(settings.UserRoot().Children()[0]->Name, L"TradeBook");
  EXPECT_EQ(settings.UserRoot().Children()[0]->Children()[0]->Name, L"");
  EXPECT_TRUE(settings.OpenPath(L"TradeBook\\\\ColPrice\\"));
  EXPECT_FALSE(settings.RemoveValue(L"My Key"));
  EXPECT_TRUE(settings.RemoveValue(L"MyKey"));
  EXPECT_EQ(StoredText(settings, L"MyKey"), L"(none)");
  EXPECT_FALSE(settings.OpenPath(L"TradeBook\\colPrice"));
  EXPECT_FALSE(settings.Write(L"key", L"a failed opening leaves nothing open"));
  EXPECT_TRUE(settings.OpenPath(L""));
  EXPECT_FALSE(settings.RemovePath(L"Nothing", false));
  EXPECT_TRUE(settings.OpenPath(L"TradeBook\\\\ColPrice"));
  EXPECT_TRUE(settings.RemovePath(L"TradeBook", false));
  EXPECT_FALSE(settings.Write(L"key", L"the open node is gone"));
}

TEST(XmlSettings, StoresEachKindAsItsBytesAndReadsObjects) {
  CVELDPXMLSettings settings;
  settings.CreatePath(L"P");
  Pair pair;
  pair.First = 0x0102;
  pair.Second = 0x03040506;
  const std::uint8_t bytes[] = {0x00, 0xAB, 0xFF};
  settings.Write(L"bytes", bytes, 3U);
  settings.Write(L"point", SettingsPoint{1, -2});
  settings.Write(L"rectangle", SettingsRectangle{1, 2, 3, -4});
  settings.Write(L"words", std::vector<std::uint16_t>{1, 0xABCD});
  settings.Write(L"value", pair);
  settings.Write(L"pointer", static_cast<const SettingsObject*>(&pair));
  settings.Write(L"nothing", static_cast<const SettingsObject*>(nullptr));
  settings.Write(L"unsigned", std::uint32_t{4294967295U});
  settings.Write(L"signed", std::int32_t{-12});
  const std::pair<const wchar_t*, const wchar_t*> rows[] = {
      {L"bytes", L"00abff"},
      {L"point", L"050001000000feffffff000000000000000000000000"},
      {L"rectangle", L"010000000200000003000000fcffffff"},
      {L"words", L"020000000100cdab"},
      {L"value", L"020106050403"},
      {L"pointer", L"ffff0700040050616972020106050403"},
      {L"nothing", L"0000"},
      {L"unsigned", L"-1"},
      {L"signed", L"-12"},
  };
  for (const auto& [key, text] : rows) EXPECT_EQ(StoredText(settings, key), text);
  settings.KnowClass("Pair", [] { return std::make_unique<Pair>(); });
  std::unique_ptr<SettingsObject> object;
  EXPECT_TRUE(settings.Read(L"pointer", object) && dynamic_cast<Pair&>(*object).Second == 0x03040506U);
  EXPECT_TRUE(settings.Read(L"nothing", object) && object == nullptr);
  SettingsPoint point;
  SettingsRectangle rectangle;
  std::vector<std::uint16_t> words;
  EXPECT_TRUE(settings.Read(L"point", point) && point.X == 1 && point.Y == -2);
  EXPECT_TRUE(settings.Read(L"rectangle", rectangle) && rectangle == (SettingsRectangle{1, 2, 3, -4}));
  EXPECT_TRUE(settings.Read(L"words", words) && words == (std::vector<std::uint16_t>{1, 0xABCD}));
  Pair read;
  EXPECT_TRUE(settings.Read(L"value", read) && read.First == 0x0102 && read.Second == 0x03040506U);
  EXPECT_FALSE(settings.Read(L"none", read)) << "there is no such key";
  EXPECT_FALSE(settings.Read(L"nothing", read)) << "too few bytes for a pair";
}

TEST(XmlSettings, ReadsWhatItCanOfDamagedValues) {
  CVELDPXMLSettings settings;
  settings.CreatePath(L"P");
  // The text, whether it is bytes, which bytes, and the number that it is.
  const std::tuple<std::wstring, bool, std::vector<std::uint8_t>, std::int32_t> rows[] = {
      {L"", true, {}, 0},
      {L"0", false, {}, 0},
      {L"zz", true, {0}, 0},
      {L"1g 2+3-1", true, {1, 2, 3, 255}, 1},
      {L"12x", false, {}, 12},
      {L" 42 ", true, {4, 2}, 42},
      {L"99999999999", false, {}, 2147483647},
      {L"-5", true, {251}, -5},
  };
  for (const auto& [text, hasBytes, expected, number] : rows) {
    SCOPED_TRACE(testing::PrintToString(text));
    settings.Write(L"k", text);
    std::vector<std::uint8_t> bytes{9};
    EXPECT_EQ(settings.Read(L"k", bytes), hasBytes);
    EXPECT_EQ(bytes, hasBytes ? expected : std::vector<std::uint8_t>{9});
    std::int32_t read = 9;
    EXPECT_TRUE(settings.Read(L"k", read) && read == number);
  }
  SettingsRectangle rectangle{7, 7, 7, 7};
  SettingsPoint point{7, 7};
  std::vector<std::uint16_t> words{7};
  settings.Write(L"k", std::wstring(L"0500010000"));
  EXPECT_FALSE(settings.Read(L"k", rectangle) || settings.Read(L"k", point) || settings.Read(L"k", words));
  EXPECT_TRUE(rectangle.Left == 7 && point.X == 7 && words.empty());
  settings.Write(L"k", std::wstring(L"ffffffff0100"));
  EXPECT_FALSE(settings.Read(L"k", words));
}

TEST_F(XmlSettingsFile, KeepsTheTreeInAFile) {
  const std::filesystem::path file = Folder / "settings.xml";
  CVELDPXMLSettings settings, loaded;
  settings.CreatePath(L"A");
  settings.Write(L"B", std::wstring(L"line\nbreak"));
  EXPECT_TRUE(settings.SaveToFile(file) && settings.SaveToFile(file / "no" / "such" / "folder"));
  EXPECT_TRUE(loaded.LoadFromFile(file) && !loaded.LoadFromFile(Folder / "none.xml") && loaded.OpenPath(L"A"));
  EXPECT_EQ(StoredText(loaded, L"B"), L"linebreak");
}

}  // namespace
