// A book's menu by its texts, from the command to its effect on grid, clipboard, disk and terminal.
#include <wx/clipbrd.h>
#include <wx/dcclient.h>
#include <wx/textctrl.h>
#include <wx/timer.h>
#include <wx/uiaction.h>

#include <fstream>
#include <random>

#include "foundations/date_time.h"
#include "foundations/text_tools.h"
#include "grid_ops/columns/cell_text.h"
#include "grid_ops/exports/export_settings.h"
#include "platform/modules.h"
#include "tests/book_windows/books_fixture.h"
#include "tests/support/files.h"

namespace fs = std::filesystem;

namespace {

using Path = std::vector<std::wstring>;

std::string TradePathOf(const fs::path& folder) {
  return "[PATH]\r\nTrade=" + ToUpperText(FolderText(folder)) + "\r\n";
}

std::wstring ClipboardText() {
  wxTextDataObject text;
  const wxClipboardLocker locker;
  return wxTheClipboard->GetData(text) ? text.GetText().ToStdWstring() : L"nothing";
}

class CommandsTest : public BooksTest {
 protected:
  static void Type(CTradeBookGrid& grid, const wchar_t* letter) {
    dynamic_cast<wxTextCtrl&>(*grid.GetFilterEdit()).WriteText(letter);
    Pump();
  }
};

TEST_F(CommandsTest, EntriesAreThereAsTheirRulesSay) {
  CTradeBookGrid& grid = *Open().Grid();
  EXPECT_FALSE(grid.RunContextMenu({L"Copy as HTML"})) << "there are no rows";
  EXPECT_FALSE(grid.RunContextMenu({L"Export CSV", L"Selected Columns"})) << "no row is current";
  EXPECT_FALSE(grid.RunContextMenu({L"Export CSV"})) << "that is a menu";
  EXPECT_FALSE(grid.RunContextMenu({L"All Columns"})) << "that stands in a menu";
  EXPECT_TRUE(grid.RunContextMenu({L"Show Filter"}));
  EXPECT_TRUE(grid.IsFilterBarEnabled());
  EXPECT_FALSE(grid.RunContextMenu({L"Show Filter"}));
  EXPECT_TRUE(grid.RunContextMenu({L"Hide Filter"}));
  EXPECT_FALSE(grid.IsFilterBarEnabled());
  Desk->Trade(1, "COMEX", "GC1", 1, 5, 10);
  Beat();
  EXPECT_TRUE(grid.RunContextMenu({L"Copy as HTML"}));
  EXPECT_TRUE(grid.RunContextMenu({L"Export CSV", L"Selected Columns"}));
  EXPECT_TRUE(grid.RunContextMenu({L"Column Header", L"Remove All"}));
  EXPECT_TRUE(grid.GetColumnsInfo().DisplayColumns().empty());
  EXPECT_TRUE(grid.RunContextMenu({L"Column Header", L"Show All"}));
  EXPECT_EQ(grid.GetColumnsInfo().DisplayColumns().size(), 37u);
  EXPECT_TRUE(grid.RunContextMenu({L"Reset Filter"}));
  EXPECT_FALSE(grid.RunContextMenu({L"Export CSV", L"Selected Columns"})) << "none is current any more";
  EXPECT_TRUE(grid.RunContextMenu({L"Column Header", L"Reset"}));
  EXPECT_EQ(grid.GetColumnsInfo().DisplayColumns().size(), 35u);
}

// The user's keys while a menu is up, which has a loop of its own until it closes.
class MenuKeys : public wxTimer {
 public:
  MenuKeys() { Start(100); }

 private:
  void Notify() override {
    constexpr int kPatience = 50;
    wxUIActionSimulator keyboard;
    if (++Beats > kPatience)
      keyboard.Char(WXK_ESCAPE);
    else
      keyboard.Char(Beats % 2 == 1 ? WXK_UP : WXK_RETURN);  // the last entry, which is Property
  }
  int Beats = 0;
};

TEST_F(CommandsTest, MenuMeansTheBookThatItIsOpenedOver) {
  CTradeBookBar& first = Open();
  CTradeBookBar& second = OpenGold();
  first.DockControlBar(DockSide::Left);
  second.DockControlBar(DockSide::Right);
  second.Grid()->SetFocus();
  ASSERT_TRUE(PumpUntil([&] { return TradeBookScreen::FocusedGrid() == second.Grid(); }));
  fakeTerminal.Sent.clear();
  const MenuKeys keys;
  RightClick(*first.Grid()->GetHeaderWindow(), wxPoint(20, 8));
  EXPECT_EQ(fakeTerminal.SentNumbers(), std::vector<std::uint16_t>{32003});
  EXPECT_EQ(TradeBookScreen::FocusedGrid(), first.Grid()) << "the book under the menu is the one that is meant";
}

TEST_F(CommandsTest, CopiesOneRangeOfAtMost10001Rows) {
  for (std::uint32_t id = 1; id <= 10003; ++id) Desk->Trade(id, "COMEX", "GC1", 1, 5, 10);
  CTradeBookGrid& grid = *Open().Grid();
  ShowOnly(grid, {18, 2});
  wxWindow& rows = *grid.GetRowsWindow();
  const auto select = [&](int from, int shiftTo, int alsoControl) {
    grid.SetCurSel(from);
    if (shiftTo == 0) Press(rows, WXK_HOME, kShift);
    if (shiftTo > 0) Press(rows, WXK_END, kShift);
    if (alsoControl >= 0)
      Press(rows, WXK_UP, kControl), Press(rows, WXK_UP, kControl), Press(rows, WXK_SPACE, kControl);
  };
  const struct {
    int From, ShiftTo, AlsoControl;
    const wchar_t* Said;
    std::size_t Lines;
  } kRows[] = {
      {-1, -1, -1, L"Content of the grid is too large, please make selection and repeat command.", 0},
      {10002, -1, -1, nullptr, 1},
      {10000, 0, -1, nullptr, 10001},
      {2, 1, -1, nullptr, 10001},
      {10001, 0, -1, L"Selection is too large, please make smaller selection and repeat command.", 0},
      {2000, -1, 1, L"This command can't be used on multiple selection.", 0},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.From);
    ASSERT_TRUE(wxTheClipboard->Open());
    wxTheClipboard->SetData(new wxTextDataObject(L"before"));
    wxTheClipboard->Close();
    select(row.From, row.ShiftTo, row.AlsoControl);
    Answers.Said.clear();
    grid.SetFocus();
    Press(rows, 'C', kControl);
    EXPECT_EQ(Answers.Said.size(), row.Said == nullptr ? 0u : 1u);
    if (row.Said != nullptr && !Answers.Said.empty()) {
      EXPECT_EQ(Answers.Said[0], std::wstring(L"Trade Book: ") + row.Said);
    }
    const std::wstring text = ClipboardText();
    if (row.Lines == 0) {
      EXPECT_EQ(text, L"before");
    } else {
      EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(text, L'\n')), row.Lines);
    }
  }
  grid.SetCurSel(10002);
  EXPECT_TRUE(grid.RunContextMenu({L"Copy"}));
  EXPECT_EQ(ClipboardText().substr(0, 3), L"1\t5");
  EXPECT_TRUE(grid.RunContextMenu({L"Copy as HTML"}));
  EXPECT_EQ(Answers.Said.back(), L"Trade Book: Selection was copied to the clipboard as HTML");
  EXPECT_TRUE(grid.RunContextMenu({L"Select All"}));
  EXPECT_EQ(grid.GetSelection(0).Bottom, 10002);
}

TEST_F(CommandsTest, ExportsAskWriteReportAndRemember) {
  Desk->Trade(1, "COMEX", "GC1", 1, 5, 10.5);
  Desk->Trade(2, "NSECM", "GC2", 2, 7, 20);
  CTradeBookGrid& grid = *Open().Grid();
  ShowOnly(grid, {11, 18, 20});
  grid.GetColumnsInfo().SelectColumn(18, true);
  grid.GetColumnsInfo().SelectColumn(2, true);
  grid.SetFilterText(11, L"gc2");
  Pump();
  const std::string today = FormatTimeText(std::time(nullptr), "yyyyMMdd", false);
  const fs::path other = Desk->Folder / "other";
  fs::create_directories(other);
  const auto root = [](std::string name) {
    return fs::path() += fs::path::preferred_separator + fs::path(name).native();
  };
  const fs::path selected = Desk->Folder / "CSV" / ("TradeBook_Selected" + today + ".CSV");
  const struct {
    Path Menu;
    fs::path SaveAs, Proposal;
    const char* Bytes;  // null: nothing is written
  } kRows[] = {
      {{L"Export CSV", L"Visible Columns"}, {}, root("TradeBook_Visible" + today + ".CSV"), nullptr},
      {{L"Export CSV", L"Visible Columns"},
       other / "v.csv",
       root("TradeBook_Visible" + today + ".CSV"),
       "SecurityID,Quantity,Price\r\nGC2,7,20.000000"},
      {{L"Export CSV", L"Visible Columns"}, {}, other / ("TradeBook_Visible" + today + ".CSV"), nullptr},
      {{L"Export CSV", L"Selected Columns"}, Desk->Folder / "s.csv", selected, "VELDTradeID,Quantity,\r\n2,7,"},
      {{L"Export CSV", L"Selected Columns"}, {}, selected / ("TradeBook_Selected" + today + ".CSV"), nullptr},
      {{L"Export CSV", L"All Columns"}, {}, Desk->Folder / "CSV" / ("TradeBook_All" + today + ".CSV"), nullptr},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.Proposal);
    Answers.AnswerAnew(row.SaveAs);
    EXPECT_TRUE(grid.RunContextMenu(row.Menu));
    ASSERT_EQ(Answers.Proposals.size(), 1u);
    EXPECT_EQ(Answers.Proposals[0], row.Proposal);
    EXPECT_EQ(Answers.Said.size(), row.Bytes == nullptr ? 0u : 1u);
    if (row.Bytes == nullptr) continue;
    EXPECT_EQ(ReadFile(row.SaveAs), row.Bytes);
    EXPECT_EQ(Answers.Said[0], L"Trade Book: Trade Book CSV Successfully exported..!!");
  }
  Answers.SaveAs = Desk->Folder / "all.csv";
  EXPECT_TRUE(grid.RunContextMenu({L"Export CSV", L"All Columns"}));
  const std::string all = ReadFile(Desk->Folder / "all.csv");
  EXPECT_EQ(all.substr(0, 26), "Server,UserID,VELDTradeID,");
  EXPECT_EQ(std::ranges::count(all, '\n'), 2) << "whatever the filter says";
  EXPECT_TRUE(ReadFile(Desk->Folder / "config.ini").ends_with(TradePathOf(other)))
      << "that of the visible columns alone";
}

TEST_F(CommandsTest, TradeFilesFollowTheirDescriptions) {
  Desk->Trade(1, "COMEX", "GC1", 1, 5, 10.5);
  Desk->Trade(2, "NSECM", "GC2", 2, 7, 20);
  std::ofstream(Desk->Folder / "EXCHANGETRADEFORMAT.TXT", std::ios::binary) << "VELDTradeID\nBranch No\nTrade Status";
  std::ofstream(Desk->Folder / "TRADEBOOKEXPORT.TXT", std::ios::binary)
      << "VELDTradeID,Trade\nQuantity,Lots\nServer,Hidden\n";
  CTradeBookGrid& grid = *Open().Grid();
  const std::string day = FormatTimeText(std::time(nullptr), "MMddyy", false).substr(0, 4) + "TRD.txt";
  EXPECT_TRUE(grid.RunContextMenu({L"Exchange Trade Format"}));
  EXPECT_EQ(ReadFile(Desk->Folder / "ExchangeTradeFormat" / "FO" / day), "1       ,1  ,11,\r\n");
  EXPECT_EQ(ReadFile(Desk->Folder / "ExchangeTradeFormat" / "CM" / day), "2       ,1  ,11,\r\n");
  EXPECT_EQ(Answers.Said, std::vector<std::wstring>{L"Trade Book: Exchange Trade File Sucessfully Write"});
  Answers.SaveAs = Desk->Folder / "manual.csv";
  EXPECT_TRUE(grid.RunContextMenu({L"Export CSV", L"Manual Export"}));
  EXPECT_EQ(ReadFile(Answers.SaveAs), "Trade,Lots,\r\n1,5,\r\n2,7,");
  EXPECT_EQ(Answers.Said.back(), L"Trade Book: Trade Book CSV Successfully exported..!!");
  EXPECT_TRUE(ReadFile(Desk->Folder / "config.ini").ends_with(TradePathOf(Desk->Folder)))
      << ReadFile(Desk->Folder / "config.ini");
  Answers.AnswerAnew({});
  EXPECT_TRUE(grid.RunContextMenu({L"Export CSV", L"Manual Export"}));
  ASSERT_EQ(Answers.Proposals.size(), 1u);
  EXPECT_EQ(Answers.Proposals[0].parent_path(), Desk->Folder);

  std::ofstream(Desk->Folder / "config.ini", std::ios::binary) << "[TRADECSV]\r\nExchangeFormatCSV = TRUE\r\n";
  Registry().OpenNewBook();
  Pump();
  CTradeBookGrid& exchange = *BarOf(2).Grid();
  const std::string other = FormatTimeText(std::time(nullptr), "ddMMyy", false).substr(0, 4) + "TRD.txt";
  Answers.Proposals.clear();
  EXPECT_TRUE(exchange.RunContextMenu({L"Export CSV", L"Manual Export"}));
  EXPECT_TRUE(Answers.Proposals.empty()) << "its files have names of their own";
  if (other != day) {
    EXPECT_EQ(ReadFile(Desk->Folder / "ExchangeTradeFormat" / "FO" / other), "");
  }
  EXPECT_NE(wxWindow::FindWindowByLabel(other + " Successfully exported..!!"), nullptr) << "the popup";
}

// A file that no other program may write to: a program that runs, this one, under a second name.
fs::path HeldFile() {
  const fs::path link = ProgramFolder() / "held.csv";
  std::error_code ignored;
  fs::remove(link, ignored);  // that of a former build; the present one can stay
  for (const char* program : {"book_windows_test", "book_windows_test.exe"})
    fs::create_hard_link(ProgramFolder() / program, link, ignored);
  return link;
}

// The message comes whatever became of the file, and the next command works.
TEST_F(CommandsTest, FaultsOfTheDiskChangeNothingElse) {
  Desk->Trade(1, "COMEX", "GC1", 1, 5, 10.5);
  CTradeBookGrid& grid = *Open().Grid();
  ShowOnly(grid, {18});
  fs::create_directories(Desk->Folder / "taken.csv");
  std::ofstream(Desk->Folder / "locked.csv") << "kept";
  fs::permissions(Desk->Folder / "locked.csv", fs::perms::owner_read);
  const fs::path held = HeldFile();
  const auto heldSize = fs::file_size(held);
  for (const fs::path& file : {Desk->Folder / "taken.csv", Desk->Folder / "nowhere" / "x.csv", fs::path("/dev/full"),
                               Desk->Folder / "locked.csv", held}) {
    SCOPED_TRACE(file);
    Answers.AnswerAnew(file);
    EXPECT_TRUE(grid.RunContextMenu({L"Export CSV", L"Visible Columns"}));
    EXPECT_EQ(Answers.Said, std::vector<std::wstring>{L"Trade Book: Trade Book CSV Successfully exported..!!"});
  }
  fs::permissions(Desk->Folder / "locked.csv", fs::perms::owner_all);
  EXPECT_FALSE(fs::exists(Desk->Folder / "nowhere"));
  EXPECT_EQ(fs::file_size(held), heldSize);
  fs::create_directories(Desk->Folder / "ExchangeTradeFormat");
  std::ofstream(Desk->Folder / "ExchangeTradeFormat" / "FO") << "in the way";
  EXPECT_TRUE(grid.RunContextMenu({L"Exchange Trade Format"}));
  EXPECT_EQ(Answers.Said.back(), L"Trade Book: Exchange Trade File Sucessfully Write");
  EXPECT_EQ(ReadFile(Desk->Folder / "ExchangeTradeFormat" / "FO"), "in the way");
  Answers.SaveAs = Desk->Folder / "good.csv";
  EXPECT_TRUE(grid.RunContextMenu({L"Export CSV", L"Visible Columns"}));
  EXPECT_EQ(ReadFile(Answers.SaveAs), "Quantity\r\n5");
}

TEST_F(CommandsTest, PropertySendsTheGridAndTwoCallbacks) {
  CTradeBookGrid& grid = *Open().Grid();
  EXPECT_TRUE(grid.RunContextMenu({L"Property"}));
  EXPECT_EQ(fakeTerminal.SentNumbers().back(), 32003);
  CQORPacketWriter expected(0);
  expected.AddU16(10002, 32003);
  expected.AddU64(30002, 78);
  expected.AddU64(30031, 79);
  expected.AddU64(30001, reinterpret_cast<std::uint64_t>(&grid));
  EXPECT_EQ(fakeTerminal.Sent.back(),
            std::vector<std::uint8_t>(expected.GetData(), expected.GetData() + expected.GetSize()));
}

TEST_F(CommandsTest, SizeToFitMeasuresEveryRow) {
  CTradeBookGrid& grid = *Open().Grid();
  wxClientDC dc(grid.GetRowsWindow());
  dc.SetFont(grid.GetGridFont());
  grid.GetColumnsInfo().SetSortColumn(12, true, true);
  EXPECT_TRUE(grid.RunContextMenu({L"Column Header", L"Size To Fit"}));
  EXPECT_EQ(grid.GetColumnsInfo().GetColumnWidth(12), dc.GetTextExtent(L"Symbol...").x + 20);
  EXPECT_EQ(grid.GetColumnsInfo().GetColumnWidth(11), dc.GetTextExtent(L"SecurityID").x + 20);
  grid.RemoveSort();
  std::minstd_rand engine(5);
  const auto random = [&engine] { return static_cast<std::uint32_t>(engine()); };
  for (std::uint32_t id = 1; id <= 500; ++id) {
    std::string security(random() % 9, ' ');
    for (char& c : security) c = "AVWTo.,1lmfi\xE9"[random() % 13];
    Desk->Trade(id, "COMEX", security.c_str(), 1, random() % 100000, static_cast<double>(random() % 1000) / 4);
  }
  Beat();
  grid.GetColumnsInfo().SetColumnLocked(10, true);
  grid.GetColumnsInfo().SetColumnWidth(10, 211);
  EXPECT_TRUE(grid.RunContextMenu({L"Column Header", L"Size To Fit"}));
  for (int column = 0; column < kTradeColumnCount; ++column) {
    SCOPED_TRACE(column);
    int widest = 0;
    for (int row = 0; row < grid.GetVirtualRows(); ++row) {
      CQORPGridCell cell;
      grid.ShowCell(row, column, cell);
      widest = std::max(widest, dc.GetTextExtent(cell.Text).x);
    }
    EXPECT_EQ(grid.GetColumnsInfo().GetColumnWidth(column),
              column == 10 ? 211 : std::max(widest + 10, grid.OnGetColumnMinWidth(column)));
  }
}

// The field's Escape is not the book's, which would close.
TEST_F(CommandsTest, FilterFieldsFilterLetterByLetter) {
  const char* const kSecurities[] = {"GC1", "SI7", "GC2"};
  for (std::uint32_t id = 1; id <= 3; ++id) Desk->Trade(id, "COMEX", kSecurities[id - 1], id == 3 ? 2 : 1, id * 10, 1);
  CTradeBookBar& book = OpenGold();
  CTradeBookGrid& grid = *book.Grid();
  EXPECT_TRUE(grid.RunContextMenu({L"Show Filter"}));
  ASSERT_TRUE(grid.EditFilter(11));
  Type(grid, L"g");
  EXPECT_EQ(Ids(grid), L"31");
  EXPECT_EQ(Summary(book, 30031), L"10") << "totals are those of the rows";
  EXPECT_EQ(Summary(book, 30035), L"30");
  Type(grid, L"c");
  Type(grid, L"1");
  EXPECT_EQ(Ids(grid), L"1");
  Press(*grid.GetFilterEdit(), WXK_ESCAPE);
  EXPECT_EQ(grid.GetFilterEdit(), nullptr);
  EXPECT_TRUE(book.IsBarShown());
  EXPECT_EQ(grid.GetFilterText(11), L"gc1");
  EXPECT_TRUE(grid.RunContextMenu({L"Reset Filter"}));
  EXPECT_EQ(Ids(grid), L"321") << "every trade comes back, of whatever security";
  EXPECT_EQ(grid.GetFilterText(11), L"");
}

}  // namespace
