#include "grid_ops/exports/csv_export.h"

#include <algorithm>

#include "tests/foundations/time_zone.h"
#include "tests/grid_ops/export_sample.h"
#include "tests/support/own_folder.h"

namespace {

namespace fs = std::filesystem;

// Columns in the order shown: "index", "index*" for a selected one, "-" for the place of a hidden one.
GridColumns ColumnsShown(int count, const std::vector<std::string>& shown) {
  GridColumns columns = ColumnsOfGrid(count);
  for (GridColumn& column : columns) column.Visible = false;
  for (std::size_t place = 0; place < shown.size(); ++place) {
    if (shown[place] == "-") continue;
    GridColumn& column = columns[static_cast<std::size_t>(std::stoi(shown[place]))];
    column.Visible = true;
    column.Order = static_cast<int>(place);
    column.Selected = shown[place].ends_with('*');
  }
  return columns;
}

// What is written, the mode, the columns shown, the rows as places of the cache's trades, the selections, and the
// bytes.
using CsvCase = std::tuple<const char*, const char*, std::vector<std::string>, std::vector<std::size_t>,
                           std::vector<GridRowRange>, std::string>;

// The columns are Server, UserID, VELDTradeID and VELDOrderID; the cache has trades 7 and -3 of server A, 5 of server
// B.
// clang-format off
const CsvCase kCases[] = {
    {"whole cache, by server and signed id, columns by index", "All Columns", {"3", "1"}, {1}, {},
     "Server,UserID,VELDTradeID,VELDOrderID\r\nA,USER1,-3,16910597\r\nA,a,b,7,16910597\r\nB,USER1,5,16910597"},
    {"shown order", "Visible Columns", {"3", "0", "2"}, {2, 0}, {},
     "VELDOrderID,Server,VELDTradeID\r\n16910597,Default,5\r\n16910597,Default,7"},
    {"hidden place", "Visible Columns", {"3", "-", "2", "0"}, {2}, {},
     "VELDOrderID,VELDTradeIDServer,\r\n16910597,5Default,"},
    {"no rows", "Visible Columns", {"1", "2"}, {}, {}, "UserID,VELDTradeID"},
    {"no columns", "Visible Columns", {}, {0, 1}, {}, "\r\n\r\n"},
    {"header as shown, cells by index, no comma after the last", "Selected Columns", {"3*", "1", "0*"}, {0, 1}, {{0, 1}},
     "VELDOrderID,Server,\r\nDefault,16910597\r\nDefault,16910597"},
    {"without the last column", "Selected Columns", {"2*", "1*"}, {2, 1}, {{0, 1}},
     "VELDTradeID,UserID,\r\nUSER1,5,\r\nUSER1,-3,"},
    {"ranges", "Selected Columns", {"2*"}, {0, 1, 2},
     {{2, 9}, {2, 0}, {-1, 1}, {0, 0}, {3, 0x7FFFFFFF}, {-1, -1}, {2, 2}}, "VELDTradeID,\r\n5,\r\n7,\r\n5,"},
    {"no rows at all", "Selected Columns", {"2*"}, {}, {{0, 5}}, "VELDTradeID,"},
    {"mode in another case", "all columns", {"2"}, {0}, {}, ""},
};
// clang-format on

using CsvExport = OwnFolder;

TEST_F(CsvExport, WritesColumnsAndRowsOfItsMode) {
  SampleTrades trades;
  PutText(trades.Add("A", 7).UserID, "a,b");
  trades.Add("A", -3);
  trades.Add("B", 5);
  for (const auto& [what, mode, shown, places, selections, bytes] : kCases) {
    const GridColumns columns = ColumnsShown(4, shown);
    std::vector<TradeRecord*> rows;
    for (const std::size_t place : places) rows.push_back(&trades.Records[place]);
    WriteFile(Folder / "out.csv", std::string(1000, 'x'));
    ExportGridCsv(mode, Folder / "out.csv", {columns, rows, selections, "Default", trades.ByServer});
    EXPECT_EQ(ReadFile(Folder / "out.csv"), bytes) << what;
  }
}

TEST_F(CsvExport, WritesManyBlocksAndTellsProgress) {
  SampleTrades trades;
  std::vector<TradeRecord*> rows;
  std::string lines, told;
  for (int id = 1; id <= 20'001; ++id) {
    rows.push_back(&trades.Add("Default", id));
    lines += "\r\nDefault,USER1," + std::to_string(id) + ",16910597";
  }
  const GridRowRange selections[] = {{0, 9'999}, {-1, 5}, {10'000, 30'000}, {7, 7}};
  GridColumns columns = ColumnsOfGrid(4);
  for (GridColumn& column : columns) column.Selected = true;
  const auto tell = [&](std::size_t done, std::size_t all) { told += std::to_string(done * 100'000 + all) + " "; };
  const auto written = [&](const char* mode) {
    ExportGridCsv(mode, Folder / "out.csv", {columns, rows, selections, "Default", trades.ByServer}, tell);
    return ReadFile(Folder / "out.csv");
  };
  const std::string header = "Server,UserID,VELDTradeID,VELDOrderID", longer(300'000, 's');  // than a block
  trades.Add(longer.c_str(), 1);
  EXPECT_TRUE(written("All Columns") == header + lines + "\r\n" + longer + ",USER1,1,16910597");
  EXPECT_TRUE(written("Visible Columns") == header + lines);
  EXPECT_TRUE(written("Selected Columns") == header + "," + lines + "\r\nDefault,USER1,8,16910597");
  EXPECT_EQ(told, "2000020002 2000020001 2000020002 ");
}

TEST_F(CsvExport, IgnoresFilesThatCannotBeWritten) {
  SampleTrades trades;
  for (int id = 1; id <= 3000; ++id) trades.Add("Default", id);
  const GridColumns columns = ColumnsOfGrid();
  const CsvSource source{columns, {}, {}, "", trades.ByServer};
  ExportGridCsv("All Columns", Folder / "missing" / "out.csv", source);
  ExportGridCsv("All Columns", Folder, source);
  EXPECT_TRUE(fs::is_empty(Folder));
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "there is no full disk here";
  ExportGridCsv("All Columns", "/dev/full", source);
}

TEST(CsvCommands, ProposeTheRememberedFolder) {
  const ZoneForTest zone("IST-5:30");
  ExportFolders folders;
  const auto proposed = [&](int id) {
    constexpr std::int64_t kNoon = 1772884800;  // 2026-03-07 12:00:00 UTC
    std::string proposal = ProposeCsvPath(*FindCsvCommand(id), folders, "grid", kNoon).string();
    std::replace(proposal.begin(), proposal.end(), '\\', '/');
    return proposal;
  };
  const auto afterChoice = [&](int id, const char* chosen) {
    RememberCsvFolder(*FindCsvCommand(id), folders, proposed(id), chosen);
    return proposed(id);
  };
  EXPECT_EQ(proposed(30010), "/TradeBook_All20260307.CSV");
  EXPECT_EQ(proposed(30013), "grid/CSV/TradeBook_Selected20260307.CSV");
  EXPECT_EQ(proposed(30010), "grid/CSV/TradeBook_All20260307.CSV") << "the base has moved";
  EXPECT_EQ(proposed(30011), "grid/CSV/TradeBook_Visible20260307.CSV");
  EXPECT_EQ(proposed(30012), "/TradeBook_Manual20260307_1730.CSV");
  EXPECT_EQ(afterChoice(30011, "some/folder\\name.csv"), "some/folder/TradeBook_Visible20260307.CSV");
  EXPECT_EQ(afterChoice(30013, "some/name.csv"),
            "grid/CSV/TradeBook_Selected20260307.CSV/TradeBook_Selected20260307.CSV");
  EXPECT_EQ(afterChoice(30010, "name.csv"), "grid/CSV/TradeBook_All20260307.CSV");
  EXPECT_EQ(afterChoice(30012, "by/hand/name.csv"), "by/hand/TradeBook_Manual20260307_1730.CSV");
  EXPECT_EQ(FindCsvCommand(30015), nullptr);
  std::string savers;  // of the folder in config.ini
  for (const CsvCommand& command : kCsvCommands)
    if (command.SavesPath) savers.append(command.MenuText).append("|");
  EXPECT_EQ(savers, "Visible Columns|Manual Export|");
}

}  // namespace
