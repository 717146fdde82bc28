// A book searches its records for what it shows, and tells what its selected rows come to.
#include <wx/textctrl.h>

#include "tests/book_windows/books_fixture.h"

namespace {

TEST_F(BooksTest, FindsInItsRecordsWhileTradesCome) {
  CTradeBookGrid& grid = *Open().Grid();
  for (std::uint32_t id = 1; id <= 400; ++id)
    Desk->Trade(id, "COMEX", id % 100 == 0 ? "Gold" : "GC1", id % 3 == 0 ? 2 : 1, 10, id + 0.25);
  Beat();
  ShowOnly(grid, {2, 11, 16, 20});
  grid.SetCurSel(0);
  grid.OpenFind();
  auto* field = dynamic_cast<wxTextCtrl*>(grid.GetFindEdit());
  ASSERT_NE(field, nullptr);
  // The text, the id of the trade in the row that is found, and the column; 0 and -1 for none. The next row on is the
  // one before in time.
  const std::tuple<const wchar_t*, std::uint32_t, int> rows[] = {
      {L"GOLD", 400, 11}, {L"old", 400, 11}, {L"37.25", 337, 20}, {L"210", 210, 2},
      {L"sell", 210, 16}, {L"comex", 0, -1}, {L"400.2", 400, 20},
  };
  std::uint32_t last = 400;
  for (const auto& [text, id, column] : rows) {
    SCOPED_TRACE(testing::PrintToString(text));
    Desk->Trade(++last, "COMEX", "GC1", 1, 10, 0);  // the grid does not know its row yet
    field->SetValue(text);
    EXPECT_TRUE(PumpUntil([&grid] { return !grid.IsSearching(); }));
    const GridCellPlace found = grid.GetFoundCell();
    EXPECT_EQ(found.Column, column);
    if (column < 0) continue;
    EXPECT_EQ(grid.GetCurSel(), found.Row);
    EXPECT_EQ(found.Row, static_cast<int>(last - id));
    CQORPGridCell cell;
    EXPECT_TRUE(grid.ShowCell(found.Row, column, cell));
  }
  // Every way to the rows of a text is the one over their shown texts.
  std::vector<int> columns = grid.GetColumnsInfo().DisplayColumns();
  for (const wchar_t* text : {L"uY", L"25", L"1", L"GC1", L"x", L"4", L"0.25"}) {
    const auto fast = grid.MakeFinder(text, columns), slow = grid.CQORPGridCtrl::MakeFinder(text, columns);
    for (int row = 0; row < grid.GetVirtualRows(); ++row)
      for (const int step : {1, -1}) {
        ASSERT_EQ(fast->FindRow(row, step, 1), slow->FindRow(row, step, 1)) << text << " " << row;
        for (const int column : columns) ASSERT_EQ(fast->Holds(row, column), slow->Holds(row, column)) << text << row;
      }
  }
}

TEST_F(BooksTest, TellsWhatSelectedRowsComeTo) {
  CTradeBookBar& book = Open();
  CTradeBookGrid& grid = *book.Grid();
  for (std::uint32_t id = 1; id <= 5; ++id) Desk->Trade(id, "COMEX", "GC1", id == 4 ? 2 : 1, id, 2);
  Beat();
  grid.SetCurSel(0);
  EXPECT_EQ(grid.SelectionText(), L"");
  FocusGrid(book);
  Press(*grid.GetRowsWindow(), WXK_DOWN, kShift);
  const auto starts = [&grid](const wchar_t* with) { return grid.SelectionText().starts_with(with); };
  EXPECT_TRUE(starts(L"2 rows; Buy 1: 5 at 2") && grid.SelectionText().find(L"; Sell 1: 4 at 2") != std::wstring::npos);
  Desk->Trade(6, "COMEX", "GC1", 1, 6, 2);
  EXPECT_TRUE(starts(L"2 rows; Buy 1: 5 at")) << "the selection stays with its trades";
  CQORPStatic& total = *book.Dialog->GetStatic(30031);
  wxMouseEvent enter(wxEVT_ENTER_WINDOW);
  total.GetEventHandler()->ProcessEvent(enter);
  EXPECT_NE(total.GetToolTipText().Find("\n\nSelected\n2 rows\nBuy 1: 5 at"), wxNOT_FOUND);
  grid.SelectAll();
  EXPECT_TRUE(starts(L"6 rows; Buy 5: 17 at"));
  grid.SetFilterText(16, L"sell");
  grid.SelectAll();
  EXPECT_EQ(grid.SelectionText(), L"") << "one row";
  grid.SetFilterText(16, L"buy");
  grid.SelectAll();
  EXPECT_TRUE(starts(L"5 rows; Buy 5: 17 at"));
  Desk->Trade(3, "COMEX", "GC1", 1, 30, 2, "amended");
  Desk->Tell(30020);
  EXPECT_TRUE(starts(L"5 rows; Buy 5: 44 at")) << grid.SelectionText();
}

}  // namespace
