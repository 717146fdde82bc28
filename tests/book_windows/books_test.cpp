#include "book_windows/windows/book_list.h"

#include <cstring>
#include <fstream>
#include <functional>

#include "book_windows/windows/book_dialog_template.h"
#include "tests/book_windows/books_fixture.h"
#include "tests/toolkit/spoken_name.h"

namespace fs = std::filesystem;

namespace {

TEST_F(BooksTest, OpensWhatTheFocusedWindowSelects) {
  Trade(1, "COMEX", "GC1", 1, 5, 10);
  Trade(2, "COMEX", "GC2", 2, 3, 20);
  CTradeBookBar& all = Open();
  EXPECT_EQ(all.GetBarTitle(), L"Trade Book : All");
  EXPECT_EQ(all.Grid()->GetVirtualRows(), 2);
  EXPECT_TRUE(all.IsFloating());
  CTradeBookBar& one = OpenFor("COMEX", "GC2");
  EXPECT_EQ(one.GetBarTitle(), L"Trade Book : COMEX GOLD 201312");
  EXPECT_EQ(SpokenName(*one.Grid()->GetRowsWindow()), L"Trade Book : COMEX GOLD 201312");
  EXPECT_EQ(one.Grid()->GetVirtualRows(), 1);
  EXPECT_EQ(Cell(one, 0, "colSecurityID"), L"GC2");
  EXPECT_EQ(terminal.BarIds, (std::vector<std::string>{"TradeBook 1", "TradeBook 2"}));
  EXPECT_EQ(terminal.Messages, (std::vector<std::uint16_t>{32021, 32022, 32021, 32022}));
  EXPECT_EQ(State->BooksByKey.size(), 2u);
  EXPECT_TRUE(State->BooksByKey.contains("Trade Book : COMEX GOLD 201312TradeBook 22"));
  // An exchange without a security is no selection.
  EXPECT_EQ(OpenFor("COMEX", "").GetBarTitle(), L"Trade Book : All");
}

TEST_F(BooksTest, NewestStandsOnTopAndTheCurrentRowStays) {
  CTradeBookBar& book = Open();
  for (std::uint32_t id = 1; id <= 100; ++id) Trade(id, "COMEX", "GC1", 1, 1, id);
  Beat();
  EXPECT_EQ(Cell(book, 0, "colVELDTradeID"), L"100");
  EXPECT_EQ(book.Grid()->GetCurSel(), 0);
  book.Grid()->SetCurSel(3);
  Trade(101, "COMEX", "GC1", 2, 7, 5);
  Beat();
  EXPECT_EQ(book.Grid()->GetVirtualRows(), 101);
  EXPECT_EQ(book.Grid()->GetCurSel(), 4);
  EXPECT_EQ(Cell(book, 4, "colVELDTradeID"), L"97");
  CQORPGridCell cell;
  ASSERT_TRUE(book.Grid()->ShowCell(0, 2, cell));
  EXPECT_EQ(cell.Background, 0x0000FFu);
  EXPECT_EQ(cell.TextColor, 0xFFFFFFu);
  ASSERT_TRUE(book.Grid()->ShowCell(1, 2, cell));
  EXPECT_EQ(cell.Background, 0xFF0000u);
  EXPECT_FALSE(book.Grid()->ShowCell(101, 2, cell));
}

// What is selected stays so in the time between a trade and the beat.
TEST_F(BooksTest, SelectionStaysWithItsTradesBeforeTheBeat) {
  CTradeBookGrid& grid = *Open().Grid();
  for (std::uint32_t id = 1; id <= 5; ++id) Trade(id, "COMEX", id == 4 ? "GC4" : "GC1", 1, 10 - id, id);
  Beat();
  grid.SetCurSel(1);
  Trade(6, "COMEX", "GC1", 1, 1, 1);
  Trade(7, "COMEX", "GC1", 1, 1, 1);
  std::string exchange, securityId;
  ASSERT_TRUE(grid.SelectedSecurity(exchange, securityId));
  EXPECT_EQ(securityId, "GC4");
  EXPECT_EQ(grid.GetSelection(0).Top, 3);
  // Behind a sort new rows come in below the sorted ones, and move those that came before.
  grid.ToggleSortColumn(18);
  grid.SetCurSel(2);
  Trade(8, "COMEX", "GC8", 1, 1, 1);
  Beat();
  EXPECT_EQ(grid.GetCurSel(), 2);
  grid.SetCurSel(7);
  Trade(9, "COMEX", "GC9", 1, 1, 1);
  ASSERT_TRUE(grid.SelectedSecurity(exchange, securityId));
  EXPECT_EQ(securityId, "GC8");
  Beat();
  EXPECT_EQ(grid.GetCurSel(), 8);
}

TEST_F(BooksTest, SummaryLineFollowsTheTrades) {
  CTradeBookBar& book = OpenFor("COMEX", "GC1");
  Trade(1, "COMEX", "GC1", 1, 5, 10);
  Trade(2, "COMEX", "GC1", 2, 7, 20);
  Trade(3, "COMEX", "GC2", 1, 100, 1);
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
  EXPECT_TRUE(book.Dialog->GetStatic(30043)->IsShown());
  PaintNow(*book.Dialog->GetStatic(30043));
  for (wxWindow* over :
       {book.Dialog->GetStatic(30030)->GetParent(), static_cast<wxWindow*>(book.Dialog->GetStatic(30043))}) {
    wxMouseEvent enter(wxEVT_ENTER_WINDOW);
    over->GetEventHandler()->ProcessEvent(enter);
    EXPECT_EQ(over->GetToolTipText(),
              "Buy: 5\nBuyAmt: 50.00\nBuyAvg: 10.00\nSell: 7\nSellAmt: 140.00\nSellAvg: 20.00\nNet: -2\nNetAmt: 90.00");
  }
  EXPECT_EQ(book.Dialog->GetToolTipText() + book.Grid()->GetToolTipText(), "");
  book.Grid()->SetFocus();
  Pump();
  List->OpenBookByCommand();
  EXPECT_FALSE(book.Dialog->GetStatic(30043)->IsShown());
  EXPECT_EQ(Summary(book, 30031), L"105");
  EXPECT_EQ(book.Dialog->GetStatic(30043)->GetToolTipText(),
            "Buy: 105\nBuyAmt: 150.00\nSell: 7\nSellAmt: 140.00\nNet: 98\nNetAmt: -10.00");
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
}

TEST_F(BooksTest, LifeOfABookOfOneSecurity) {
  Trade(1, "COMEX", "GC1", 1, 5, 10);
  Trade(2, "COMEX", "GC2", 1, 5, 10);
  CTradeBookBar& book = OpenFor("COMEX", "GC1");
  CTradeBookGrid& grid = *book.Grid();
  const auto rows = [&] { return grid.GetVirtualRows(); };
  ASSERT_TRUE(PumpUntil([&] {
    grid.SetFocus();
    Pump();
    return grid.IsDescendant(wxWindow::FindFocus());
  }));
  List->OpenBookByCommand();  // widens the book that has the focus
  EXPECT_EQ(List->BarsById.size(), 1u);
  EXPECT_EQ(rows(), 2);
  EXPECT_EQ(grid.GetCurSel(), 0);
  EXPECT_EQ(book.GetBarTitle(), L"Trade Book : All");
  EXPECT_TRUE(State->BooksByKey.contains("Trade Book : COMEX GOLD 201312TradeBook 11")) << "the old entry stays";
  Press(*grid.GetRowsWindow(), WXK_ESCAPE);
  EXPECT_EQ(rows(), 1);
  EXPECT_EQ(book.GetBarTitle(), L"Trade Book : COMEX GOLD 201312");
  State->TradeStore.OnDownloadEnd();  // 8112: every book takes all trades
  Beat();
  EXPECT_EQ(rows(), 2);
  List->ReapplyFilters();  // 30020 makes it right again; the state says filtered, and so do the rows
  EXPECT_EQ(rows(), 1);
  State->TradeStore.OnClearTrades();
  Beat();
  EXPECT_EQ(rows(), 0);
  Trade(9, "COMEX", "GC1", 1, 5, 10);
  Trade(10, "COMEX", "GC2", 1, 5, 10);
  Beat();
  EXPECT_EQ(rows(), 0) << "before the end of the download nothing reaches a book";
  Press(*grid.GetRowsWindow(), WXK_ESCAPE);  // a floating book that is filtered closes
  EXPECT_FALSE(book.IsBarShown());
  EXPECT_TRUE(List->BarsById.empty() && List->BooksByWindow.empty() && State->BooksByKey.empty());
  EXPECT_EQ(terminal.BarIds.back(), "-1");
  Open();
  EXPECT_EQ(terminal.BarIds.back(), "TradeBook 2") << "names are not used again";
}

// A book that has lost its place among the keys, as to a restored one of the same key, points at no record either.
TEST_F(BooksTest, NoBookKeepsTradesThatGo) {
  Trade(1, "COMEX", "GC1", 1, 5, 10);
  CTradeBookBar& book = Open();
  State->BooksByKey.clear();
  List->ReapplyFilters();
  ASSERT_EQ(book.Grid()->Rows.RowCount(), 1u);
  List->ForgetTrades();
  State->TradeStore.OnClearTrades();
  EXPECT_EQ(book.Grid()->Rows.RowCount(), 0u);
  EXPECT_EQ(Cell(book, 0, "colSecurityID"), L"");
  PaintNow(*book.Grid()->GetRowsWindow());
}

TEST_F(BooksTest, ABookKeepsTheFolderThatItWasOpenedIn) {
  const fs::path later = Folder / "later";
  fs::create_directories(later);
  fs::current_path(later);
  CTradeBookGrid& grid = *Open().Grid();
  fs::current_path(Folder);
  EXPECT_EQ(grid.GetWorkingFolder(), later);
  EXPECT_EQ(State->WorkingFolder, Folder);
  grid.SaveColumnProfile();
  EXPECT_TRUE(fs::exists(later / "ColumnProfile" / "Trade Book" / "ColumnProfile.xml"));
}

TEST_F(BooksTest, ClosesByItsFourWays) {
  CTradeBookBar& docked = OpenFor("COMEX", "GC1");
  docked.DockControlBar(DockSide::Bottom);
  Pump();
  Press(*docked.Grid()->GetRowsWindow(), WXK_ESCAPE);
  EXPECT_TRUE(docked.IsBarShown()) << "a docked book does not close by Escape";
  docked.OnPressCloseButton();
  EXPECT_FALSE(docked.IsBarShown());
  EXPECT_TRUE(List->BarsById.empty());
  CTradeBookBar& tabbed = OpenFor("COMEX", "GC1");
  tabbed.TabControlBar();
  Pump();
  State->MultipleTradeBookDisable = false;  // which the close saves
  EXPECT_EQ(tabbed.OnTabCloseButton(), 1);
  EXPECT_TRUE(List->BarsById.empty());
  EXPECT_EQ(tabbed.OnTabCloseButton(), 1) << "unknown by now, and the tab still goes";
  Open();
  FocusMain();
  List->OpenBookByCommand();
  EXPECT_EQ(List->BarsById.size(), 1u) << "one book only";
}

// As of a terminal without GetPluginBarID.
TEST_F(BooksTest, BooksOfOneIdStandAndCloseEachByItself) {
  terminal.GivesOneId = true;
  terminal.Answer = KeyOf("COMEX", "GC1");
  const struct {
    void (*Place)(CTradeBookBar&);
    bool (*Stands)(const CTradeBookBar&);
    void (*Close)(CTradeBookBar&);
  } kBooks[] = {
      {[](auto& bar) { bar.DockControlBar(DockSide::Left); }, [](auto& bar) { return bar.IsDocked(); },
       [](auto& bar) { bar.OnPressCloseButton(); }},
      {[](auto&) {}, [](auto& bar) { return bar.IsFloating(); },
       [](auto& bar) { Press(*bar.Grid()->GetRowsWindow(), WXK_ESCAPE); }},
      {[](auto& bar) { bar.TabControlBar(); }, [](auto& bar) { return bar.IsMDITabbed(); },
       [](auto& bar) { bar.OnTabCloseButton(), bar.ShowControlBar(false); }},
      {[](auto& bar) { bar.DockControlBar(DockSide::Left); }, [](auto& bar) { return bar.IsDocked(); },
       [](auto& bar) { bar.OnPressCloseButton(); }},
  };
  std::vector<CTradeBookBar*> bars;
  for (const auto& book : kBooks) {
    List->OpenNewBook();
    bars.push_back(&BarOf(terminal.LastId));
    book.Place(*bars.back());
  }
  for (std::size_t i = 0; i < bars.size(); ++i) EXPECT_TRUE(kBooks[i].Stands(*bars[i])) << i;
  State->MultipleTradeBookDisable = false;  // which each close saves
  for (std::size_t i = 0; i < bars.size(); ++i) {
    SCOPED_TRACE(i);
    terminal.BarIds.clear();
    kBooks[i].Close(*bars[i]);
    EXPECT_FALSE(bars[i]->IsBarShown());
    EXPECT_EQ(terminal.BarIds, std::vector<std::string>{"-7"});
    EXPECT_EQ(List->BarsById.size(), bars.size() - 1 - i);
    EXPECT_EQ(State->BooksByKey.size(), bars.size() - 1 - i);
  }
  for (int time = 0; time < 2; ++time) List->OpenNewBook();
  EXPECT_EQ(List->BarsById.size(), 1u);
}

TEST_F(BooksTest, ColumnsComeBackAfterARestart) {
  {
    CTradeBookGrid& grid = *Open().Grid();
    EXPECT_FALSE(grid.GetColumnsInfo().GetColumnVisible(0));
    grid.SetColumnVisible(0, true);
    grid.SetColumnVisible(3, false);
    grid.SetColumnWidth(12, 222);
    grid.GetColumnsInfo().SetColumnDisplayPos(0, 20);
    grid.ToggleSortColumn(18);
    grid.SaveColumnProfile();
  }
  std::ifstream file(Folder / "ColumnProfile" / "Trade Book" / "ColumnProfile.xml", std::ios::binary);
  std::string line, text;
  for (int i = 0; i < 6 && std::getline(file, line); ++i) text += line + "\n";
  EXPECT_EQ(text,
            "<ColumnProfile>\r\n<TradeBook>\r\n<colServer>\r\n<Header>\"Server\"</Header>\r\n<Width>\"60\"</Width>\r\n"
            "<Visible>\"1\"</Visible>\r\n");
  Stop();
  Start();
  CTradeBookGrid& grid = *Open().Grid();
  const CQORPGridColumnsInfo& columns = grid.GetColumnsInfo();
  EXPECT_TRUE(columns.GetColumnVisible(0));
  EXPECT_FALSE(columns.GetColumnVisible(3));
  EXPECT_EQ(columns.GetColumnWidth(12), 222);
  EXPECT_EQ(columns.GetColumnOrder(20), 0);
  EXPECT_EQ(columns.GetColumnState(18), 1);
  EXPECT_EQ(grid.Rows.SortColumns, std::vector<int>{18});
  grid.ResetColumns();
  EXPECT_EQ(columns.GetColumnWidth(12), 47) << "the width that the grid gave, not the stored one";
  EXPECT_TRUE(columns.GetColumnVisible(0)) << "the visibility of the profile";
  EXPECT_EQ(columns.GetColumnState(18), 0);
  EXPECT_TRUE(grid.Rows.SortColumns.empty());
}

TEST_F(BooksTest, TellsWhatItsRowSelects) {
  Trade(1, "COMEX", "GC1", 1, 5, 10);
  Trade(2, "COMEX", "GC2", 1, 5, 10);
  CTradeBookBar& book = Open();
  std::string exchange, securityId;
  const auto address = reinterpret_cast<std::uint64_t>(&book);
  ASSERT_TRUE(List->SelectedSecurity(address, exchange, securityId));
  EXPECT_EQ(exchange + " " + securityId, "COMEX GC2");
  book.Grid()->SetCurSel(1);
  ASSERT_TRUE(List->SelectedSecurity(address, exchange, securityId));
  EXPECT_EQ(securityId, "GC1");
  EXPECT_FALSE(List->SelectedSecurity(address + 8, exchange, securityId)) << "no book stands there";
  book.Grid()->SetCurSel(-1);
  EXPECT_FALSE(List->SelectedSecurity(address, exchange, securityId));
}

TEST_F(BooksTest, HostileProfilesGiveTheDefaults) {
  const char* const kProfiles[] = {
      "", "<", "<ColumnProfile><TradeBook><colSymbol><Width>\"2049\"</Width>",
      ("<ColumnProfile><TradeBook><colSymbol><Width>\"-5\"</Width><Align>\"99\"</Align><Sort>\"7\"</Sort>"
       "<Order>\"2147483647\"</Order><Header>\"\"</Header></colSymbol></TradeBook></ColumnProfile>")};
  for (const char* profile : kProfiles) {
    SCOPED_TRACE(profile);
    fs::create_directories(Folder / "ColumnProfile" / "Trade Book");
    std::ofstream(Folder / "ColumnProfile" / "Trade Book" / "ColumnProfile.xml") << profile;
    const CQORPGridColumnsInfo& columns = Open().Grid()->GetColumnsInfo();
    EXPECT_EQ(columns.GetColumnWidth(12), 47);
    EXPECT_EQ(columns.GetColumnName(12), L"Symbol");
    EXPECT_EQ(columns.GetColumnAlign(12), 0);
    EXPECT_EQ(columns.GetColumnState(12), 0);
  }
}

TEST_F(BooksTest, HeaderClicksSortByTheirPriority) {
  for (std::uint32_t id = 1; id <= 6; ++id) Trade(id, "COMEX", id % 2 == 0 ? "GC2" : "GC1", 1, 10 - id, id);
  CTradeBookGrid& grid = *Open().Grid();
  CTradeBookBar& book = BarOf(1);
  const auto ids = [&] {
    std::wstring text;
    for (int row = 0; row < grid.GetVirtualRows(); ++row) text += Cell(book, row, "colVELDTradeID");
    return text;
  };
  EXPECT_EQ(ids(), L"654321");
  grid.ToggleSortColumn(11);
  EXPECT_EQ(ids(), L"531642");
  grid.ToggleSortColumn(18);
  EXPECT_EQ(ids(), L"531642") << "by quantity within a security";
  grid.ToggleSortColumn(18);
  EXPECT_EQ(ids(), L"135246");
  Trade(7, "COMEX", "GC1", 1, 1, 1);
  Trade(8, "COMEX", "GC1", 1, 1, 1);
  Beat();
  EXPECT_EQ(ids(), L"13524687") << "what comes after a sort stands below it";
  grid.RemoveSort();
  EXPECT_EQ(ids(), L"87654321");
}

std::wstring IdsOf(const CTradeBookGrid& grid) {
  std::wstring ids;
  CQORPGridCell cell;
  for (int row = 0; grid.ShowCell(row, 2, cell); ++row) ids += cell.Text;
  return ids;
}

TEST_F(BooksTest, BooksKeepTheirOwnRowsWhenASortEnds) {
  for (std::uint32_t id = 1; id <= 4; ++id) Trade(id, "COMEX", id == 3 ? "GC2" : "GC1", 1, 10 * id, 1);
  CTradeBookBar& book = OpenFor("COMEX", "GC1");
  CTradeBookGrid& grid = *book.Grid();
  const struct {
    std::function<void()> EndSort;
    const wchar_t *Ids, *Bought;
  } kRows[] = {{[&] { grid.RemoveSort(); }, L"421", L"70"},
               {[&] { grid.ResetColumns(); }, L"5421", L"71"},
               {[&] { grid.SetFilterText(2, L"5"), Pump(), grid.ToggleSortColumn(2), grid.RemoveSort(); }, L"5", L"1"}};
  for (const auto& row : kRows) {
    grid.ToggleSortColumn(18);
    row.EndSort();
    EXPECT_EQ(IdsOf(grid), row.Ids);
    EXPECT_EQ(grid.GetVirtualRows(), static_cast<int>(wcslen(row.Ids)));
    EXPECT_EQ(Summary(book, 30031), row.Bought);
    Trade(5, "COMEX", "GC1", 1, 1, 1);
    Trade(6, "COMEX", "GC2", 1, 1, 1);
    Beat();
  }
}

TEST_F(BooksTest, SelectsTheLastRowWhenRowsShrinkBelowTheCurrentOne) {
  for (std::uint32_t id = 1; id <= 9; ++id) Trade(id, "COMEX", id < 4 ? "GC1" : "GC2", 1, 1, 1);
  CTradeBookGrid& grid = *Open().Grid();
  grid.SetCurSel(8);
  grid.SetFilterText(11, L"gc1");
  Pump();
  ASSERT_EQ(grid.GetSelectionCount(), 1);
  EXPECT_EQ(grid.GetSelection(0).Top, 2);
  EXPECT_EQ(grid.GetCurSel(), 2);
}

}  // namespace
