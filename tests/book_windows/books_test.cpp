// A book on the screen shows its model, and hands it keys, clicks and closes.
#include <fstream>

#include "tests/book_windows/books_fixture.h"
#include "tests/support/files.h"
#include "tests/toolkit/spoken_name.h"

namespace fs = std::filesystem;

namespace {

TEST_F(BooksTest, ShowsTitleRowsAndColors) {
  for (std::uint32_t id = 1; id <= 100; ++id) Desk->Trade(id, "COMEX", "GC1", id == 100 ? 2 : 1, 1, id);
  CTradeBookBar& book = OpenGold();
  CTradeBookGrid& grid = *book.Grid();
  EXPECT_EQ(book.GetBarTitle(), L"Trade Book : COMEX GOLD 201312");
  EXPECT_EQ(SpokenName(*grid.GetRowsWindow()), L"Trade Book : COMEX GOLD 201312");
  EXPECT_TRUE(book.IsFloating());
  EXPECT_EQ(fakeTerminal.SentNumbers(), (std::vector<std::uint16_t>{32021, 32022}));
  for (void* window : {static_cast<void*>(&book), static_cast<void*>(&grid)})
    EXPECT_TRUE(std::ranges::count(fakeTerminal.Focus, std::pair(window, false)) > 0);
  EXPECT_EQ(grid.GetVirtualRows(), 100);
  EXPECT_EQ(Cell(book, 0, "colVELDTradeID"), L"100");
  CQORPGridCell cell;
  ASSERT_TRUE(grid.ShowCell(0, 2, cell));
  EXPECT_EQ(cell.Background, 0x0000FFu);
  EXPECT_EQ(cell.TextColor, 0xFFFFFFu);
  ASSERT_TRUE(grid.ShowCell(1, 2, cell));
  EXPECT_EQ(cell.Background, 0xFF0000u);
  EXPECT_TRUE(grid.ShowCell(500, -1, cell));
  EXPECT_FALSE(grid.ShowCell(100, 2, cell) || grid.ShowCell(-1, 2, cell));
  wxRect text(10, 10, 20, 20);
  grid.OnDrawValue(text);
  EXPECT_EQ(text, wxRect(10, 8, 22, 22)) << "two pixels upward and to the right";
}

// What is selected stays so between a trade and the beat.
TEST_F(BooksTest, CurrentRowFollowsItsTrade) {
  CTradeBookBar& book = Open();
  CTradeBookGrid& grid = *book.Grid();
  ShowOnly(grid, {2, 11, 18});
  for (std::uint32_t id = 1; id <= 5; ++id) Desk->Trade(id, "COMEX", id == 4 ? "GC4" : "GC1", 1, 10 - id, id);
  Beat();
  EXPECT_EQ(grid.GetCurSel(), 0);
  grid.SetCurSel(1);
  for (const std::uint32_t id : {6u, 7u}) Desk->Trade(id, "COMEX", "GC1", 1, 1, 1);
  EXPECT_EQ(grid.GetVirtualRows(), 5);
  EXPECT_EQ(book.CurrentRow(), 3);
  EXPECT_EQ(grid.GetSelection(0).Top, 3);
  // Behind a sort new rows come in below the sorted ones, and move those that came before.
  Click(*grid.GetHeaderWindow(18), grid.HeaderRect(18).GetPosition() + wxPoint(8, 8));
  EXPECT_EQ(Ids(grid), L"7654321") << "by quantity: 1, 1, 5, 6, 7, 8, 9";
  grid.SetCurSel(2);
  Desk->Trade(8, "COMEX", "GC8", 1, 1, 1);
  Beat();
  EXPECT_EQ(grid.GetCurSel(), 2);
  grid.SetCurSel(7);
  Desk->Trade(9, "COMEX", "GC9", 1, 1, 1);
  EXPECT_EQ(book.CurrentRow(), 8);
  grid.SetFilterText(11, L"gc1");
  Pump();
  EXPECT_EQ(grid.GetCurSel(), 5) << "the last of fewer rows";
  EXPECT_EQ(grid.GetSelection(0).Top, 5);
}

TEST_F(BooksTest, HeaderClickSortsAndMarks) {
  for (std::uint32_t id = 1; id <= 4; ++id) Desk->Trade(id, "COMEX", id % 2 == 0 ? "GC2" : "GC1", 1, 10 - id, id);
  CTradeBookGrid& grid = *Open().Grid();
  ShowOnly(grid, {2, 11, 18});
  const CQORPGridColumnsInfo& columns = grid.GetColumnsInfo();
  const auto click = [&](int column) {
    grid.SetCurSel(3);
    Click(*grid.GetHeaderWindow(column), grid.HeaderRect(column).GetPosition() + wxPoint(8, 8));
    return columns.GetColumnState(column);
  };
  EXPECT_EQ(click(11), 1);
  EXPECT_EQ(Ids(grid), L"3142");
  EXPECT_EQ(grid.GetCurSel(), 0) << "no row was current ahead of the sort";
  EXPECT_EQ(click(18), 1);
  EXPECT_EQ(columns.GetSortPriority(18), 1);
  EXPECT_EQ(click(11), -1);
  EXPECT_EQ(Ids(grid), L"4231");
  EXPECT_EQ(click(11), 0);
  EXPECT_EQ(grid.GetCurSel(), 3) << "the current row stays when a column leaves the sort";
  EXPECT_EQ(columns.GetSortPriority(18), 0);
  EXPECT_EQ(Ids(grid), L"4321");
  EXPECT_TRUE(grid.RunContextMenu({L"Column Header", L"Remove Sort"}));
  EXPECT_EQ(columns.GetColumnState(18), 0);
  EXPECT_EQ(click(18), 1);
  EXPECT_TRUE(grid.RunContextMenu({L"Column Header", L"Reset"}));
  EXPECT_EQ(columns.GetColumnState(18), 0);
  EXPECT_TRUE(WindowOf(*Registry().BarsById.begin()->second).Shown.Sort.SortColumns.empty());
}

TEST_F(BooksTest, SummaryLineFollowsTheTrades) {
  CTradeBookBar& book = OpenGold();
  Desk->Trade(1, "COMEX", "GC1", 1, 5, 10);
  Desk->Trade(2, "COMEX", "GC1", 2, 7, 20);
  EXPECT_EQ(Summary(book, 30031), L"0") << "nothing is written before the beat";
  Beat();
  const struct {
    int Id;
    const wchar_t* Text;
    ColorRef Color;
  } kTotals[] = {
      {30031, L"5", 0xFF0000},  {30033, L"50.00", 0xFF0000},  {30043, L"10.00", 0xFF0000},
      {30035, L"7", 0x0000FF},  {30037, L"140.00", 0x0000FF}, {30045, L"20.00", 0x0000FF},
      {30039, L"-2", 0x0000FF}, {30041, L"90.00", 0xFF0000},
  };
  for (const auto& total : kTotals) {
    SCOPED_TRACE(total.Id);
    EXPECT_EQ(Summary(book, total.Id), total.Text);
    EXPECT_EQ(book.Dialog->GetStatic(total.Id)->GetTextColor(), total.Color);
  }
  PaintNow(*book.Dialog->GetStatic(30043));
  for (wxWindow* over :
       {book.Dialog->GetStatic(30030)->GetParent(), static_cast<wxWindow*>(book.Dialog->GetStatic(30043))}) {
    wxMouseEvent enter(wxEVT_ENTER_WINDOW);
    over->GetEventHandler()->ProcessEvent(enter);
    EXPECT_EQ(over->GetToolTipText(),
              "Buy: 5\nBuyAmt: 50.00\nBuyAvg: 10.00\nSell: 7\nSellAmt: 140.00\nSellAvg: 20.00\nNet: -2\nNetAmt: 90.00");
  }
  EXPECT_EQ(book.Dialog->GetToolTipText() + book.Grid()->GetToolTipText(), "");
  for (const int id : kAverageControls) EXPECT_TRUE(book.Dialog->GetStatic(id)->IsShown()) << id;
  book.Shown.Widen();
  for (const int id : kAverageControls) EXPECT_FALSE(book.Dialog->GetStatic(id)->IsShown()) << id;
  EXPECT_EQ(book.Dialog->GetStatic(30043)->GetToolTipText(),
            "Buy: 5\nBuyAmt: 50.00\nSell: 7\nSellAmt: 140.00\nNet: -2\nNetAmt: 90.00");
}

// In units of the template, of 1.5 by 1.625 pixels at 100 %; 25 pixels stay under the grid, however large the book.
TEST_F(BooksTest, LineOfTotalsFitsUnderTheGrid) {
  CTradeBookBar& book = Open();
  const CDlgTradeBook& dialog = *book.Dialog;
  for (const int height : {60, 400}) {
    book.Dialog->SetSize(1600, height);
    const auto strip = dialog.GetStatic(30030)->GetParent()->GetRect();
    EXPECT_EQ(strip, wxRect(0, book.Grid()->GetSize().y, 1600, 25));
    EXPECT_EQ(strip.GetBottom() + 1, height);
  }
  EXPECT_EQ(dialog.GetStatic(30030)->GetRect(), wxRect(6, 4, 24, 13));
  EXPECT_EQ(dialog.GetStatic(30038)->GetRect(), wxRect(1068, 4, 23, 13));
  EXPECT_EQ(dialog.GetStatic(30041)->GetRect(), wxRect(1238, 4, 160, 13));
  for (const DialogControl& control : kLineControls) {
    const wxSize text = dialog.GetStatic(control.Id)->GetTextExtent(control.Text);
    EXPECT_LE(text.x, dialog.GetStatic(control.Id)->GetSize().x) << control.Id;
    EXPECT_LE(text.y, dialog.GetStatic(control.Id)->GetSize().y) << control.Id;
  }
  book.SetSize(300, 200);
  EXPECT_EQ(dialog.GetRect(), wxRect(wxPoint(1, 1), book.GetClientSize() - wxSize(2, 2))) << "a frame of one pixel";
}

TEST_F(BooksTest, CommandAndEscapeReachTheBookWithTheFocus) {
  CTradeBookBar& book = OpenGold();
  CTradeBookGrid& grid = *book.Grid();
  FocusGrid(book);
  Registry().OnBookCommand();
  EXPECT_EQ(Registry().BarsById.size(), 1u);
  EXPECT_EQ(book.GetBarTitle(), L"Trade Book : All");
  Press(*grid.GetRowsWindow(), WXK_ESCAPE, kAlt);
  wxKeyEvent alt(wxEVT_KEY_DOWN);
  alt.m_keyCode = WXK_ESCAPE;
  alt.SetAltDown(true);
  EXPECT_FALSE(grid.PreTranslateMessage(alt) || book.PreTranslateMessage(alt)) << "Alt keys are the terminal's";
  EXPECT_EQ(book.GetBarTitle(), L"Trade Book : All");
  Press(*grid.GetRowsWindow(), WXK_ESCAPE);
  EXPECT_EQ(book.GetBarTitle(), L"Trade Book : COMEX GOLD 201312");
  fakeTerminal.Focus.clear();
  Press(*grid.GetRowsWindow(), WXK_ESCAPE);
  EXPECT_FALSE(book.IsBarShown());
  EXPECT_TRUE(std::ranges::count(fakeTerminal.Focus, std::pair<void*, bool>(&book, true)) == 1);
}

TEST_F(BooksTest, ClosesFromItsBarAndItsTab) {
  CTradeBookBar& docked = OpenGold();
  docked.DockControlBar(DockSide::Bottom);
  Pump();
  Press(*docked.Grid()->GetRowsWindow(), WXK_ESCAPE);
  EXPECT_TRUE(docked.IsBarShown()) << "a docked book does not close by Escape";
  docked.OnPressCloseButton();
  EXPECT_FALSE(docked.IsBarShown());
  CTradeBookBar& tabbed = OpenGold();
  tabbed.TabControlBar();
  Pump();
  EXPECT_EQ(tabbed.GetParentMDIChild()->GetTitle(), L"Trade Book : COMEX GOLD 201312");
  EXPECT_EQ(tabbed.OnTabCloseButton(), 1);
  EXPECT_TRUE(tabbed.IsBarShown()) << "the tab hides it";
  EXPECT_TRUE(Registry().BarsById.empty());
  EXPECT_EQ(tabbed.OnTabCloseButton(), 1) << "unknown by now, and the tab still goes";
  CTradeBookBar& floating = OpenGold();
  wxKeyEvent escape(wxEVT_KEY_DOWN);
  escape.m_keyCode = WXK_ESCAPE;
  EXPECT_TRUE(floating.PreTranslateMessage(escape));
  EXPECT_FALSE(floating.IsBarShown());
}

TEST_F(BooksTest, ABookThatIsGonePaintsAndForgets) {
  Desk->Trade(1, "COMEX", "GC1", 1, 5, 10);
  CTradeBookBar& book = Open();
  Desk->Tell(30022);
  EXPECT_EQ(Cell(book, 0, "colSecurityID"), L"");
  PaintNow(*book.Grid()->GetRowsWindow());
  book.GetDockingManager()->DestroyBar(&book);
  Pump();
  EXPECT_TRUE(Registry().BarsById.empty() && Registry().BooksByWindow.empty() && State().BooksByKey.empty());
}

TEST_F(BooksTest, ColumnsComeBackAfterARestart) {
  const fs::path later = Desk->Folder / "later";
  fs::create_directories(later);
  fs::current_path(later);
  {
    CTradeBookGrid& grid = *Open().Grid();
    fs::current_path(Desk->Folder);
    EXPECT_EQ(grid.GetWorkingFolder(), later) << "the folder that it was opened in";
    EXPECT_FALSE(grid.GetColumnsInfo().GetColumnVisible(0));
    grid.SetColumnVisible(0, true);
    grid.SetColumnVisible(3, false);
    grid.SetColumnWidth(12, 222);
    grid.GetColumnsInfo().SetColumnDisplayPos(0, 20);
    grid.ToggleSortColumn(18);
    EXPECT_TRUE(grid.RunContextMenu({L"Column Header", L"Save Column Profile"}));
  }
  const std::string file = ReadFile(later / "ColumnProfile" / "Trade Book" / "ColumnProfile.xml");
  EXPECT_EQ(file.substr(0, 109),
            "<ColumnProfile>\r\n<TradeBook>\r\n<colServer>\r\n<Header>\"Server\"</Header>\r\n<Width>\"60\"</Width>\r\n"
            "<Visible>\"1\"</Visi");
  Stop();
  fs::current_path(later);
  Start();
  CTradeBookBar& bar = Open();
  fs::current_path(Desk->Folder);
  CTradeBookGrid& grid = *bar.Grid();
  const CQORPGridColumnsInfo& columns = grid.GetColumnsInfo();
  EXPECT_TRUE(columns.GetColumnVisible(0));
  EXPECT_FALSE(columns.GetColumnVisible(3));
  EXPECT_EQ(columns.GetColumnWidth(12), 222);
  EXPECT_EQ(columns.GetColumnOrder(20), 0);
  EXPECT_EQ(columns.GetColumnState(18), 1);
  EXPECT_EQ(bar.Shown.Sort.SortColumns, std::vector<int>{18});
  EXPECT_TRUE(grid.RunContextMenu({L"Column Header", L"Reset"}));
  EXPECT_EQ(columns.GetColumnWidth(12), 47) << "the width that the grid gave, not the stored one";
  EXPECT_TRUE(columns.GetColumnVisible(0)) << "the visibility of the profile";
  EXPECT_EQ(columns.GetColumnState(18), 0);
}

TEST_F(BooksTest, HostileProfilesGiveTheDefaults) {
  for (const char* profile :
       {"", "<", "<ColumnProfile><TradeBook><colSymbol><Width>\"2049\"</Width>",
        "<ColumnProfile><TradeBook><colSymbol><Width>\"-5\"</Width><Align>\"99\"</Align><Sort>\"7\"</Sort>"
        "<Order>\"2147483647\"</Order><Header>\"\"</Header></colSymbol></TradeBook></ColumnProfile>"}) {
    SCOPED_TRACE(profile);
    fs::create_directories(Desk->Folder / "ColumnProfile" / "Trade Book");
    WriteFile(Desk->Folder / "ColumnProfile" / "Trade Book" / "ColumnProfile.xml", profile);
    const CQORPGridColumnsInfo& columns = Open().Grid()->GetColumnsInfo();
    EXPECT_EQ(columns.GetColumnWidth(12), 47);
    EXPECT_EQ(columns.GetColumnName(12), L"Symbol");
    EXPECT_EQ(columns.GetColumnAlign(12), 0);
    EXPECT_EQ(columns.GetColumnState(12), 0);
  }
}

}  // namespace
