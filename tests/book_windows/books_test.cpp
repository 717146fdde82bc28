// A book on the screen shows its model, and hands it keys, clicks and closes.
#include <wx/display.h>
#include <wx/settings.h>

#include "grid_base/settings/registry_store.h"
#include "tests/book_windows/books_fixture.h"
#include "tests/support/files.h"

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
  EXPECT_EQ(Part(fakeTerminal.Sent[0], 15, 37),
            Hex("23 3175") + AddressOf(&grid) + Hex("23 3275") + Word(BookDesk::OnPluginMessage(), 8));
  for (void* window : {static_cast<void*>(&book), static_cast<void*>(&grid)})
    EXPECT_TRUE(std::ranges::count(fakeTerminal.Focus, std::pair(window, false)) > 0);
  EXPECT_EQ(grid.GetGridFont().GetWeight(), wxFONTWEIGHT_BOLD) << "the font of a book without a stored one";
  EXPECT_EQ(grid.GetVirtualRows(), 100);
  EXPECT_EQ(Cell(book, 0, 2).Text, L"100");
  EXPECT_EQ(Cell(book, 0, 2).Background, 0x0000FFu);
  EXPECT_EQ(Cell(book, 0, 2).TextColor, 0xFFFFFFu);
  EXPECT_EQ(Cell(book, 1, 2).Background, 0xFF0000u);
  CQORPGridCell cell;
  EXPECT_TRUE(grid.ShowCell(500, -1, cell));
  EXPECT_FALSE(grid.ShowCell(100, 2, cell) || grid.ShowCell(-1, 2, cell));
  wxRect text(10, 10, 20, 20);
  grid.OnDrawValue(text);
  EXPECT_EQ(text, wxRect(10, 8, 22, 22)) << "two pixels upward and to the right";
  int paints = 0;
  grid.GetRowsWindow()->Bind(wxEVT_PAINT, [&paints](wxPaintEvent& event) { event.Skip(), ++paints; });
  Beat();
  EXPECT_TRUE(PumpUntil([&paints] { return paints > 0; })) << "a beat repaints rows that only changed";
  const wxImage picture = PictureOf(book);
  const wxColour frame = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNSHADOW);
  for (const int x : {0, picture.GetWidth() - 1}) EXPECT_EQ(ColourAt(picture, {x, 50}), frame) << x;
}

// What is selected stays so between a trade and the beat.
TEST_F(BooksTest, CurrentRowFollowsItsTrade) {
  CTradeBookBar& book = Open();
  CTradeBookGrid& grid = *book.Grid();
  for (std::uint32_t id = 1; id <= 5; ++id) Desk->Trade(id, "COMEX", id == 4 ? "GC4" : "GC1", 1, 10 - id, id);
  Beat();
  EXPECT_EQ(grid.GetCurSel(), 0);
  grid.SetCurSel(1);
  for (const std::uint32_t id : {6u, 7u}) Desk->Trade(id, "COMEX", "GC1", 1, 1, 1);
  EXPECT_EQ(grid.GetVirtualRows(), 5);
  EXPECT_EQ(book.CurrentRow(), 3);
  // Behind a sort new rows come in below the sorted ones, and move those that came before.
  grid.ToggleSortColumn(18);
  grid.SetCurSel(2);
  Desk->Trade(8, "COMEX", "GC8", 1, 1, 1);
  Beat();
  EXPECT_EQ(grid.GetCurSel(), 2);
  grid.SetCurSel(7);
  Desk->Trade(9, "COMEX", "GC9", 1, 1, 1);
  EXPECT_EQ(book.CurrentRow(), 8);
  grid.SetCurSel(6);
  grid.SetFilterText(11, L"gc1");
  EXPECT_EQ(grid.GetSelection(0).Top, 5) << "the last of fewer rows";
  EXPECT_EQ(Summary(book, 30031), L"31") << "totals are those of the rows";
  EXPECT_TRUE(grid.RunContextMenu({L"Reset Filter"}));
  EXPECT_EQ(std::pair(grid.GetVirtualRows(), grid.GetCurSel()), std::pair(9, 0));
  EXPECT_EQ(grid.GetFilterText(11), L"");
}

TEST_F(BooksTest, HeaderClickSortsAndMarks) {
  for (std::uint32_t id = 1; id <= 4; ++id)
    Desk->Trade(id, "COMEX", id % 2 == 0 ? "GC2" : "GC1", id == 1 ? 0 : 1, 10 - id, id);
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
  const wxImage picture = PictureOf(*grid.GetRowsWindow());
  const auto colour = [&](int column) {
    return ColourAt(picture, grid.CellRect(1, column).GetTopRight() + wxPoint(-3, 5));
  };
  EXPECT_NE(colour(11), colour(18)) << "trade 1 has no side, so its cell shows that the column is sorted";
  EXPECT_EQ(click(18), 1);
  EXPECT_EQ(columns.GetSortPriority(18), 1);
  EXPECT_EQ(click(18), -1);
  EXPECT_EQ(click(18), 0);
  EXPECT_EQ(grid.GetCurSel(), 3) << "the current row stays when a column leaves the sort";
  for (const wchar_t* end : {L"Remove Sort", L"Reset"}) {
    grid.SetCurSel(2);
    EXPECT_TRUE(grid.RunContextMenu({L"Column Header", end}));
    EXPECT_EQ(grid.GetCurSel(), 2) << "no row came in";
    EXPECT_EQ(columns.GetColumnState(11), 0);
    EXPECT_EQ(Ids(grid), L"4321");
    grid.ToggleSortColumn(11);
  }
}

TEST_F(BooksTest, SummaryLineFollowsTheTrades) {
  CTradeBookBar& book = OpenGold();
  Desk->Trade(1, "COMEX", "GC1", 1, 5, 10);
  Desk->Trade(2, "COMEX", "GC1", 2, 7, 20);
  EXPECT_EQ(Summary(book, 30031), L"0") << "nothing is written before the beat";
  Beat();
  const std::tuple<int, const wchar_t*, ColorRef> kTotals[] = {
      {30031, L"5", 0xFF0000},  {30033, L"50.00", 0xFF0000},  {30043, L"10.00", 0xFF0000},
      {30035, L"7", 0x0000FF},  {30037, L"140.00", 0x0000FF}, {30045, L"20.00", 0x0000FF},
      {30039, L"-2", 0x0000FF}, {30041, L"90.00", 0xFF0000},
  };
  for (const auto& [id, text, color] : kTotals) {
    EXPECT_EQ(Summary(book, id), text) << id;
    EXPECT_EQ(book.Dialog->GetStatic(id)->GetTextColor(), color) << id;
  }
  CQORPStatic& average = *book.Dialog->GetStatic(30043);
  const auto point = [](wxWindow& window, wxEventType how) {
    wxMouseEvent event(how);
    window.GetEventHandler()->ProcessEvent(event);
    return window.GetToolTipText();
  };
  for (wxWindow* over : {average.GetParent(), static_cast<wxWindow*>(&average)})
    EXPECT_EQ(point(*over, wxEVT_ENTER_WINDOW),
              "Buy: 5\nBuyAmt: 50.00\nBuyAvg: 10.00\nSell: 7\nSellAmt: 140.00\nSellAvg: 20.00\nNet: -2\nNetAmt: 90.00");
  point(*average.GetParent(), wxEVT_LEAVE_WINDOW);  // may come after the next window is entered
  for (const int id : kAverageControls) EXPECT_TRUE(book.Dialog->GetStatic(id)->IsShown()) << id;
  book.Shown.Widen();
  for (const int id : kAverageControls) EXPECT_FALSE(book.Dialog->GetStatic(id)->IsShown()) << id;
  const wxString widened = "Buy: 5\nBuyAmt: 50.00\nSell: 7\nSellAmt: 140.00\nNet: -2\nNetAmt: 90.00";
  EXPECT_EQ(average.GetToolTipText(), widened);
  EXPECT_EQ(point(average, wxEVT_LEAVE_WINDOW), widened);
  point(*average.GetParent(), wxEVT_ENTER_WINDOW);
  Desk->Trade(3, "COMEX", "GC1", 1, 5, 10);
  Beat();
  EXPECT_EQ(average.GetToolTipText(), widened) << "only the text under the pointer is updated";
  EXPECT_TRUE(average.GetParent()->GetToolTipText().StartsWith("Buy: 10\n"));
}

// In units of the template, of 1.5 by 1.625 pixels at 100 %; 25 pixels stay under the grid, however large the book.
TEST_F(BooksTest, LineOfTotalsFitsUnderTheGrid) {
  CTradeBookBar& book = Open();
  const CDlgTradeBook& dialog = *book.Dialog;
  const wxWindow& line = *dialog.GetStatic(30030)->GetParent();
  EXPECT_FALSE(line.AcceptsFocus());
  for (const auto& [height, rows] : {std::pair(20, 0), {60, 35}, {400, 375}}) {
    book.Dialog->SetSize(1600, height);
    EXPECT_EQ(line.GetRect(), wxRect(0, rows, 1600, 25));
    EXPECT_EQ(book.Grid()->GetRect(), wxRect(0, 0, 1600, rows));
  }
  std::wstring placed;
  for (const DialogControl& control : kLineControls) {
    const CQORPStatic& text = *dialog.GetStatic(control.Id);
    const wxRect rect = text.GetRect();
    placed += L"|" + std::to_wstring(control.Id) + text.GetWindowText();
    for (const int length : {rect.x, rect.y, rect.width, rect.height}) placed += L" " + std::to_wstring(length);
    const wxSize extent = text.GetTextExtent(control.Text);
    EXPECT_TRUE(extent.x <= rect.width && extent.y <= rect.height) << control.Id;
  }
  EXPECT_EQ(placed,
            L"|30030Buy: 6 4 24 13|300310 33 4 75 13|30032BuyAmt: 120 4 47 13|300330.00 168 4 158 13"
            L"|30034Sell: 522 4 24 13|300350 551 4 75 13|30036SellAmt: 633 4 45 13|300370.00 681 4 141 13"
            L"|30038Net: 1068 4 23 13|300390 1097 4 81 13|30040NetAmt: 1187 4 43 13|300410.00 1238 4 160 13"
            L"|30042BuyAvg: 336 4 47 13|300430.00 387 4 128 13|30044SellAvg: 828 4 47 13|300450.00 876 4 185 13");
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
  wxKeyEvent escape(wxEVT_KEY_DOWN);
  escape.m_keyCode = WXK_ESCAPE;
  escape.SetAltDown(true);
  EXPECT_FALSE(grid.PreTranslateMessage(escape) || book.PreTranslateMessage(escape)) << "Alt keys are the terminal's";
  EXPECT_EQ(book.GetBarTitle(), L"Trade Book : All");
  Press(*grid.GetRowsWindow(), WXK_ESCAPE);
  EXPECT_EQ(book.GetBarTitle(), L"Trade Book : COMEX GOLD 201312");
  escape.SetAltDown(false);
  EXPECT_TRUE(book.PreTranslateMessage(escape));
  EXPECT_FALSE(book.IsBarShown());
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
  fakeTerminal.Focus.clear();
  wxFocusEvent focus(wxEVT_SET_FOCUS);
  tabbed.GetParentMDIChild()->GetEventHandler()->ProcessEvent(focus);
  EXPECT_TRUE(PumpUntil([&] {
    return std::ranges::count(fakeTerminal.Focus, std::pair<void*, bool>(&tabbed, false)) > 0;
  })) << "the tab passes the focus on";
  EXPECT_EQ(tabbed.OnTabCloseButton(), 1);
  EXPECT_TRUE(tabbed.IsBarShown()) << "the tab hides it";
  EXPECT_TRUE(Registry().BarsById.empty());
  EXPECT_EQ(tabbed.OnTabCloseButton(), 1) << "unknown by now, and the tab still goes";
}

TEST_F(BooksTest, ColumnsComeBackAfterARestart) {
  const fs::path later = Desk->Folder / "later";
  fs::create_directories(later);
  fs::current_path(later);
  CTradeBookGrid& grid = *Open().Grid();
  fs::current_path(Desk->Folder);
  EXPECT_EQ(grid.GetWorkingFolder(), later) << "the folder that it was opened in";
  grid.SetColumnVisible(0, true);
  grid.SetColumnVisible(3, false);
  grid.SetColumnWidth(12, 222);
  grid.GetColumnsInfo().SetColumnDisplayPos(0, 20);
  grid.SetColumnLocked(4, true);
  grid.SetColumnAlign(4, 1);
  grid.EnableMultipleSort(false);
  grid.ToggleSortColumn(18);
  EXPECT_TRUE(grid.RunContextMenu({L"Column Header", L"Save Column Profile"}));
  Stop();
  EXPECT_EQ(Desk->Functions->Boxes, nullptr) << "no message box after the books";
  fs::current_path(later);
  Start();
  CTradeBookBar& bar = OpenGold();
  fs::current_path(Desk->Folder);
  const CQORPGridColumnsInfo& columns = bar.Grid()->GetColumnsInfo();
  EXPECT_TRUE(columns.GetColumnVisible(0) && !columns.GetColumnVisible(3) && columns.GetColumnLocked(4));
  EXPECT_EQ(std::tuple(columns.GetColumnWidth(12), columns.GetColumnAlign(4), columns.GetColumnState(18)),
            std::tuple(222, 1, 1));
  EXPECT_EQ(columns.GetColumnOrder(20), 1) << "behind the locked one";
  EXPECT_FALSE(bar.Grid()->IsMultipleSort());
  EXPECT_EQ(bar.Shown.Sort.SortColumns, std::vector<int>{18});
  bar.Grid()->ToggleSortColumn(3);
  EXPECT_EQ(columns.GetColumnState(18), 0) << "one column at a time";
  EXPECT_TRUE(bar.Grid()->RunContextMenu({L"Column Header", L"Reset"}));
  EXPECT_EQ(columns.GetColumnState(3), 1) << "a hidden column stays sorted";
  EXPECT_EQ(columns.GetColumnWidth(12), 47) << "the width that the grid gave, not the stored one";
}

TEST_F(BooksTest, ComeBackToTheirPlaces) {
  const fs::path file = Desk->Folder / "stored.xml";
  for (int i = 0; i < 3; ++i) OpenGold();
  BarOf(1).DockControlBar(DockSide::Left), BarOf(2).TabControlBar(), BarOf(3).FloatControlBar({320, 210, 444, 222});
  Pump();
  const auto place = [](CTradeBookBar& bar) { return bar.Floats() ? bar.GetFloatRect() : bar.GetScreenRect(); };
  std::map<std::uint32_t, wxRect> places;
  for (const auto& [id, book] : Registry().BarsById) places[id] = place(WindowOf(*book));
  Registry().SaveBookLayout(*RegistryStore::Make(file)->Open(0, 0));
  EXPECT_NE(ReadFile(file).find("<TradeBook:COMEXGOLD201312TradeBook11>\r\n<Bar-1>\"1;docked;1;100;100;530;300;left;"),
            std::string::npos);
  Stop();
  Start();
  BookDesk::Select("COMEX", "GC1");
  Registry().RestoreBookLayout(*RegistryStore::Make(file)->Open(0, 1));
  ASSERT_EQ(Registry().BarsById.size(), 3u);
  for (const auto& [id, rect] : places) EXPECT_TRUE(PumpUntil([&] { return place(BarOf(id)) == rect; })) << id;
  const BookPlace docked = BarOf(1).Place(), tabbed = BarOf(2).Place(), floating = BarOf(3).Place();
  EXPECT_TRUE(docked.Docked && !docked.Tabbed && tabbed.Tabbed && !tabbed.Docked && !floating.Docked);
  const wxRect rect = BarOf(1).GetScreenRect();
  EXPECT_EQ(docked.Rect, (SettingsRectangle{rect.x, rect.y, rect.x + rect.width, rect.y + rect.height}));
}

// Whatever is stored, the book is on the screen.
TEST_F(BooksTest, FloatsOnTheScreenWithoutAStoredPlace) {
  constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min(), kMost = -(kLeast + 1);
  const TerminalMasters masters(*Desk->Functions);
  const SettingsRectangle rects[] = {
      {kLeast, kLeast, kMost, kMost}, {kMost, kMost, kLeast, kLeast}, {10, -2, 0, 0}, {310, 210, 754, 432}};
  for (const SettingsRectangle& rect : rects) {
    SCOPED_TRACE(rect.Left);
    Book book(State(), masters, "TradeBook 1");
    auto& bar = dynamic_cast<CTradeBookBar&>(*Screen->MakeWindow(book, rect, 1));
    book.Window = &bar;
    bar.ShowBar(true);
    EXPECT_TRUE(bar.IsFloating());
    EXPECT_FALSE(bar.Dialog->GetStatic(30042)->IsShown()) << "averages are of one security";
    EXPECT_TRUE(wxDisplay(0U).GetGeometry().Contains(bar.GetFloatRect().GetPosition() + wxPoint(40, 12)));
    EXPECT_TRUE(wxRect(wxSize(4000, 4000)).Contains(wxRect(bar.GetFloatRect().GetSize())));
    const wxRect stored(310, 210, 444, 222);
    EXPECT_TRUE(rect.Left != stored.x || PumpUntil([&] { return bar.GetFloatRect() == stored; }));
    bar.GetDockingManager()->DestroyBar(&bar);
    Pump();
  }
}

}  // namespace
