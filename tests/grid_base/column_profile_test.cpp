#include "grid_base/settings/column_profile.h"

#include "tests/support/own_folder.h"

namespace {

class ColumnProfileTest : public OwnFolder {
 protected:
  std::filesystem::path File() const { return Folder / "ColumnProfile" / "Trade Book" / "ColumnProfile.xml"; }
  ColumnProfile NewProfile() const { return {"Trade Book", L"ColumnProfile", Folder}; }
  void Load(ColumnProfile& profile, const std::string& elements) const {
    std::filesystem::create_directories(File().parent_path());
    WriteFile(File(), "<ColumnProfile><TradeBook>" + elements + "</TradeBook></ColumnProfile>");
    profile.LoadColumnProfileFile();
  }
};

const NewColumn kServer{"colServer", L"Server", 60, 0, 0};
const NewColumn kUser{"colUserID", L"User ID", 70, 1, 1};

TEST_F(ColumnProfileTest, WritesThisFileFirst) {
  {
    ColumnProfile profile = NewProfile();
    profile.LoadColumnProfileFile();
    EXPECT_TRUE(std::filesystem::is_directory(File().parent_path())) << "a first start leaves the folders behind";
    EXPECT_FALSE(std::filesystem::exists(File()));
    EXPECT_EQ(profile.LoadMultipleSort(), 1);
    profile.SaveColumnState("colServer", profile.InsertProfiledColumn(kServer, 0));
    profile.SaveColumnState("colUserID", {L"User \"ID\"", 2048, 1, 2, -1, 1, 0, 3});
    profile.SaveMultipleSort(true);
    EXPECT_TRUE(profile.SaveColumnProfileFile());
  }
  EXPECT_EQ(ReadFile(File()),
            "<ColumnProfile>\r\n<TradeBook>\r\n<colServer>\r\n<Header>\"Server\"</Header>\r\n"
            "<Width>\"60\"</Width>\r\n<Visible>\"0\"</Visible>\r\n<Align>\"0\"</Align>\r\n"
            "<Sort>\"0\"</Sort>\r\n<Locked>\"0\"</Locked>\r\n<Order>\"-1\"</Order>\r\n"
            "<Group>\"-1\"</Group>\r\n</colServer>\r\n"
            "<colUserID>\r\n<Header>\"User \"ID\"\"</Header>\r\n"
            "<Width>\"2048\"</Width>\r\n<Visible>\"1\"</Visible>\r\n<Align>\"2\"</Align>\r\n"
            "<Sort>\"-1\"</Sort>\r\n<Locked>\"1\"</Locked>\r\n<Order>\"0\"</Order>\r\n"
            "<Group>\"3\"</Group>\r\n</colUserID>\r\n<IsMultipleSort>\"1\"</IsMultipleSort>\r\n"
            "</TradeBook>\r\n</ColumnProfile>\r\n");
  ColumnProfile loaded = NewProfile();
  loaded.LoadColumnProfileFile();
  EXPECT_EQ(loaded.InsertProfiledColumn(kUser, 0).Locked, 1);
  EXPECT_EQ(loaded.Columns().at(0).Width, 70) << "a reset goes back to the grid's width";
  EXPECT_EQ(loaded.Columns().at(0).Header, L"User \"ID\"");
  EXPECT_EQ(loaded.GroupPlaces().at(3), 0);
  loaded.SaveMultipleSort(false);
  EXPECT_EQ(loaded.LoadMultipleSort(), 0);
  loaded.SaveColumnState("colServer", {L"S", 8, 0, 0, 0, 0, -1, -1});
  EXPECT_TRUE(loaded.SaveColumnProfileFile());
  const std::string kept = "<ColumnProfile>\r\n<TradeBook>\r\n<colServer>\r\n<Header>\"S\"</Header>";
  EXPECT_TRUE(ReadFile(File()).starts_with(kept)) << "what is in the file keeps its place";
}

TEST_F(ColumnProfileTest, IgnoresStoredValuesOutOfRange) {
  // What is stored, then width, alignment, header and whether the sort ascends.
  const std::tuple<std::string, std::int32_t, std::int32_t, std::wstring, std::optional<bool>> rows[] = {
      {"<Width>\"0\"</Width><Sort>\"1\"</Sort>", 70, 1, L"User ID", true},
      {"<Width>\"2049\"</Width><Sort>\"2\"</Sort>", 70, 1, L"User ID", {}},
      {"<Width>\"2048\"</Width><Sort>\"-1\"</Sort>", 2048, 1, L"User ID", false},
      {"<Width>\"1\"</Width><Align>\"2\"</Align>", 1, 2, L"User ID", {}},
      {"<Width>\"99999999999999999999\"</Width><Align>\"3\"</Align>", 70, 1, L"User ID", {}},
      {"<Width>\"wide\"</Width><Align>\"-1\"</Align>", 70, 1, L"User ID", {}},
      {"<Header>\"\"</Header><Group>\"-2147483648\"</Group><Order>\"2147483647\"</Order>", 70, 1, L"User ID", {}},
      {"<Header>\"Own\"</Header>", 70, 1, L"Own", {}},
      {"<Header>\"Own\"</Header></colUserID><fault", 70, 1, L"User ID", {}},
  };
  for (const auto& [stored, width, align, header, ascending] : rows) {
    ColumnProfile profile = NewProfile();
    Load(profile, "<colUserID>" + stored + "</colUserID>");
    const ColumnState state = profile.InsertProfiledColumn(kUser, 0);
    EXPECT_EQ(std::tuple(stored, state.Width, state.Align, state.Header, SortsAscending(state)),
              std::tuple(stored, width, align, header, ascending));
    EXPECT_TRUE(profile.DisplayOrder(1).empty());
  }
}

TEST_F(ColumnProfileTest, PlacesColumnsAndResetsThem) {
  ColumnProfile profile = NewProfile();
  // Place, and whether visible, of columns 0 to 6.
  const std::int32_t stored[][2] = {{3, 1}, {0, 1}, {1, 0}, {3, 1}, {-1, 1}, {99, 1}, {2, 1}};
  for (int i = 0; i < 7; ++i) {
    const std::string key = "col" + std::to_string(i);
    profile.SaveColumnState(key, {L"h", 9, stored[i][1], 0, 0, 0, stored[i][0], -1});
    profile.InsertProfiledColumn({key, L"h", 50 + i, 0, 0}, i);
  }
  EXPECT_EQ(profile.DisplayOrder(7), (std::vector<int>{1, 6, 3}));
  EXPECT_EQ(profile.DisplayOrder(6), (std::vector<int>{1, 3})) << "column 6 is none and takes no place";
  EXPECT_EQ(profile.DisplayOrder(3), (std::vector<int>{1}));
  std::vector<std::int32_t> widths;
  for (const ColumnReset& reset : profile.ResetColumns(8)) widths.push_back(reset.Visible ? reset.Width : -1);
  EXPECT_EQ(widths, (std::vector<std::int32_t>{50, 51, -1, 53, 54, 55, 56, -1}));
  EXPECT_TRUE(profile.ResetColumns(-1).empty());
}

}  // namespace
