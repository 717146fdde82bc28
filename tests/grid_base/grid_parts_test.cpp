// The small parts of a grid: folder paths, type names, fonts.
#include "foundations/paths.h"
#include "grid_base/settings/grid_types.h"
#include "grid_base/settings/registry_store.h"
#include "grid_base/settings/xml_settings.h"
#include "tests/support/own_folder.h"

namespace {

namespace fs = std::filesystem;
using GridPartsTest = OwnFolder;

TEST_F(GridPartsTest, BuildsFoldersAndPath) {
  // The relative folder and the file; the folder made and the path.
  const std::tuple<const char*, const char*, const char*, const char*> rows[] = {
      {"ColumnProfile\\Trade Book", "c.xml", "ColumnProfile/Trade Book", "ColumnProfile/Trade Book/c.xml"},
      {"\\\\a/b\\\\/c\\", "", "a/b/c", "a/b/c"},
      {"\\", "f", "", "f"},
      {"file/under", "f", "", "file/under/f"},
  };
  WriteFile(Folder / "file", "no folder can be made here");
  for (const auto& [relative, file, made, path] : rows) {
    EXPECT_EQ(BuildFolderPath(relative, file, Folder), Folder / path);
    EXPECT_TRUE(fs::is_directory(Folder / made)) << relative;
  }
  EXPECT_TRUE(BuildFolderPath("", "c.xml", Folder).empty());
}

TEST(GridTypeNameTest, NamesKnownCodesOnly) {
  EXPECT_EQ(GridTypeName(49), L"NetPosExpiry");
  for (const int unknown : {-1, 50}) EXPECT_EQ(GridTypeName(unknown), L"");
}

TEST(GridFontTest, TakesTheFontOfTheSectionOrABoldOne) {
  CVELDPXMLSettings settings;
  GridFont current;
  current.Height = -13;
  current.CharSet = 2;
  SetFaceName(current, std::wstring(40, L'x'));
  EXPECT_EQ(current.FaceName[30], u'x');
  EXPECT_EQ(current.FaceName[31], 0);
  const auto made = LoadGridFont(settings, L"TradeGrid", current);
  ASSERT_TRUE(made);
  settings.CreatePath(L"TradeGrid");
  EXPECT_FALSE(LoadGridFont(settings, L"TradeGrid", current)) << "a section without a font gives none";
  settings.Write(L"Font", std::wstring(91 * 2, L'0'));
  EXPECT_FALSE(LoadGridFont(settings, L"TradeGrid", current));
  ASSERT_TRUE(WriteFont(settings, *made));
  std::wstring text;
  settings.Read(L"Font", text);
  EXPECT_EQ(text,
            L"f3ffffff000000000000000000000000bc020000000000020000000"
            L"04d0053002000530061006e007300200053006500720069006600" +
                std::wstring(76, L'0'));
  settings.Write(L"Font", text.replace(56, 128, 128, L'a'));
  const auto stored = LoadGridFont(settings, L"TradeGrid", {});
  ASSERT_TRUE(stored);
  EXPECT_EQ(stored->CharSet, 2);
  EXPECT_EQ(std::u16string(stored->FaceName), std::u16string(31, u'\xAAAA'));
}

}  // namespace
