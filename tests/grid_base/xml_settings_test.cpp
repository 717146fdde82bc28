#include "grid_base/settings/xml_settings.h"

#include <gtest/gtest.h>

#include "tests/grid_base/slow_settings_text.h"

namespace {

class Pair : public SettingsObject {
 public:
  explicit Pair(std::uint16_t first = 0, std::uint32_t second = 0) : First(first), Second(second) {}
  std::string_view ClassName() const override { return "Pair"; }
  std::uint16_t Schema() const override { return 7; }
  void Store(ArchiveWriter& archive) const override {
    archive.Put(First);
    archive.Put(Second);
  }
  bool Load(ArchiveReader& archive) override { return archive.Take(First) && archive.Take(Second); }
  std::uint16_t First;
  std::uint32_t Second;
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
  EXPECT_EQ(ShapeOf(settings.UserRoot()), L"CURRENT_USER(TradeBook((ColPrice(MyKey=a b))))");
  EXPECT_TRUE(settings.OpenPath(L"TradeBook\\\\ColPrice\\"));
  EXPECT_FALSE(settings.RemoveValue(L"My Key"));
  EXPECT_TRUE(settings.RemoveValue(L"MyKey"));
  EXPECT_EQ(StoredText(settings, L"MyKey"), L"(none)");
  EXPECT_FALSE(settings.OpenPath(L"TradeBook\\colPrice"));
  EXPECT_FALSE(settings.Write(L"key", L"a failed opening leaves nothing open"));
  EXPECT_TRUE(settings.OpenPath(L""));
  EXPECT_FALSE(settings.RemovePath(L"Nothing", false) || settings.RemovePath(L"", false));
  EXPECT_TRUE(settings.SaveToFile("no/such/folder/s.xml")) << "a no-op without the folder";
  EXPECT_FALSE(settings.LoadFromFile("no/such/folder/s.xml"));
}

// Written, read back, and written again.
template <typename Value>
void ExpectStored(const Value& value, const std::wstring& text) {
  CVELDPXMLSettings settings;
  settings.CreatePath(L"P");
  EXPECT_TRUE(settings.Write(L"first", value));
  EXPECT_EQ(StoredText(settings, L"first"), text);
  Value read{};
  EXPECT_TRUE(settings.Read(L"first", read) && settings.Write(L"again", read));
  EXPECT_EQ(StoredText(settings, L"again"), text);
}

TEST(XmlSettings, StoresEachKindAsItsBytesAndReadsObjects) {
  Pair pair(0x0102, 0x03040506);
  ExpectStored(pair, L"020106050403");
  ExpectStored(SettingsPoint{1, -2}, L"050001000000feffffff000000000000000000000000");
  ExpectStored(SettingsRectangle{1, 2, 3, -4}, L"010000000200000003000000fcffffff");
  ExpectStored(std::vector<std::uint16_t>{1, 0xABCD}, L"020000000100cdab");
  ExpectStored(std::uint32_t{4294967295U}, L"-1");
  ExpectStored(std::int32_t{-12}, L"-12");
  CVELDPXMLSettings settings;
  settings.CreatePath(L"P");
  const std::uint8_t bytes[] = {0x00, 0xAB, 0xFF};
  settings.Write(L"bytes", bytes, 3U);
  settings.Write(L"pointer", static_cast<const SettingsObject*>(&pair));
  settings.Write(L"nothing", static_cast<const SettingsObject*>(nullptr));
  EXPECT_EQ(StoredText(settings, L"bytes"), L"00abff");
  EXPECT_EQ(StoredText(settings, L"pointer"), L"ffff0700040050616972020106050403");
  EXPECT_EQ(StoredText(settings, L"nothing"), L"0000");
  settings.KnowClass("Pair", [] { return std::make_unique<Pair>(); });
  std::unique_ptr<SettingsObject> object;
  EXPECT_TRUE(settings.Read(L"pointer", object) && dynamic_cast<Pair&>(*object).Second == 0x03040506U);
  EXPECT_TRUE(settings.Read(L"nothing", object) && object == nullptr);
  for (const wchar_t* damaged :
       {L"ff", L"feff0700040050616972020106050403", L"ffff07000400", L"ffff0700040050616979020106050403",
        L"ffff0800040050616972020106050403", L"ffff07000400506169720201"}) {
    settings.Write(L"damaged", std::wstring(damaged));
    EXPECT_FALSE(settings.Read(L"damaged", object)) << damaged;
  }
  EXPECT_FALSE(settings.Read(L"none", pair)) << "there is no such key";
  EXPECT_FALSE(settings.Read(L"nothing", pair)) << "too few bytes for a pair";
}

TEST(XmlSettings, ReadsWhatItCanOfDamagedValues) {
  CVELDPXMLSettings settings;
  settings.CreatePath(L"P");
  // The text, whether it is bytes, which bytes, and the number that it is.
  const std::tuple<std::wstring, bool, std::vector<std::uint8_t>, std::int32_t> rows[] = {
      {L"", true, {}, 0},       {L"zz", true, {0}, 0},       {L"1g 2+3-1", true, {1, 2, 3, 255}, 1},
      {L"12x", false, {}, 12},  {L" 42 ", true, {4, 2}, 42}, {L"99999999999", false, {}, 2147483647},
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
}

}  // namespace
