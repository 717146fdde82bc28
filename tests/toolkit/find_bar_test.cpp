#include "toolkit/grid/find_bar.h"

#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include "tests/toolkit/grid_fixture.h"

namespace {

// The cells of the grid are "row.column".
class FindBar : public GridFixture {
 protected:
  bool RowsHaveFocus() const { return wxWindow::FindFocus() == Grid->GetRowsWindow()->GetParent(); }
  wxTextCtrl* Edit() const { return dynamic_cast<wxTextCtrl*>(Grid->GetFindEdit()); }
  void Type(const std::wstring& text) { Edit()->SetValue(text); }
  // A busy machine may need more than one slice for the smallest search.
  void WaitForSearch() {
    EXPECT_TRUE(PumpUntil([this] { return !Grid->IsSearching(); }));
  }
  std::wstring Told() {
    WaitForSearch();
    return Grid->GetFindMessage();
  }
  // The row and column that were found, and are current and in view.
  std::pair<int, int> Found() {
    WaitForSearch();
    const GridCellPlace cell = Grid->GetFoundCell();
    const bool isShown = Grid->GetCurSel() == cell.Row && !Grid->CellRect(cell.Row, cell.Column).IsEmpty();
    return isShown ? std::pair(cell.Row, cell.Column) : std::pair(-2, -2);
  }
};

TEST_F(FindBar, KeysGoFromCellToCell) {
  for (int column = 0; column < 6; ++column) Grid->SetColumnWidth(column, 500);  // two of them in view
  Grid->SetColumnVisible(4, false);
  Grid->SetCurSel(50);
  const int rowsHeight = Grid->GetRowsWindow()->GetClientSize().y;
  PressKey(WXK_F3);
  ASSERT_TRUE(Edit() && wxWindow::FindFocus() == Grid->GetFindEdit());
  EXPECT_LT(Grid->GetRowsWindow()->GetClientSize().y, rowsHeight);
  for (const wchar_t* letter : {L"9", L"9", L".", L"5"}) Edit()->WriteText(letter);
  EXPECT_EQ(Found(), std::pair(99, 5));
  // Where the key is pressed, the key, and the cell that is found then.
  const std::tuple<bool, int, int, int, int> steps[] = {
      {true, WXK_RETURN, 0, 199, 5},  {true, WXK_F3, 0, 299, 5},  {true, WXK_NUMPAD_ENTER, kShift, 199, 5},
      {false, WXK_F3, kShift, 99, 5}, {false, WXK_F3, 0, 199, 5}, {true, WXK_F3, kShift, 99, 5},
  };
  for (const auto& [inField, key, held, row, column] : steps) {
    inField ? Edit()->SetFocus() : Grid->GetRowsWindow()->GetParent()->SetFocus();
    Press(inField ? *Edit() : *Grid->GetRowsWindow(), key, held);
    EXPECT_EQ(Found(), std::pair(row, column));
    EXPECT_EQ(RowsHaveFocus(), !inField);
  }
  EXPECT_EQ(Told(), L"Title 5, row 100");
  Grid->SetCurSel(990);
  PressKey(WXK_F3);
  EXPECT_EQ(Found(), std::pair(999, 5));
  PressKey(WXK_F3);
  EXPECT_EQ(Told(), L"Continued at the top: Title 5, row 100");
  PressKey(WXK_F3, kShift);
  EXPECT_EQ(Told(), L"Continued at the bottom: Title 5, row 1,000");
  PressKey(WXK_TAB);
  EXPECT_EQ(wxWindow::FindFocus(), Edit());
  Press(*Edit(), WXK_DOWN);
  EXPECT_TRUE(RowsHaveFocus() && Edit());
  PressKey(WXK_TAB);
  Press(*Edit(), WXK_ESCAPE);
  EXPECT_TRUE(RowsHaveFocus() && !Edit() && Grid->GetRowsWindow()->GetClientSize().y == rowsHeight);
  PressKey(WXK_F3);
  EXPECT_TRUE(Edit() && Edit()->GetStringSelection() == L"99.5" && wxWindow::FindFocus() == Edit());
  EXPECT_EQ(Found(), std::pair(99, 5)) << "goes on from where it was";
  Type(L"99.4");
  EXPECT_EQ(Told(), L"Not found") << "the column is hidden";
  Type(L"");
  EXPECT_EQ(Told(), L"");
}

TEST_F(FindBar, MarksTheCellAsLongAsItHasTheText) {
  Grid->OpenFind();
  Type(L"7.2");
  WaitForSearch();
  PaintNow(*Grid->GetRowsWindow());
  const auto colour = [this](int row) {
    const wxRect cell = Grid->CellRect(row, 2);
    return ColourAt(PictureOf(*Grid->GetRowsWindow()), cell.GetPosition() + wxPoint(2, cell.height / 2));
  };
  const wxColour marked = colour(7);
  EXPECT_NE(marked, colour(8));
  Grid->SetVirtualRows(1002, 2, 0);  // the trade of row 7 is in row 9 now; the texts of this grid stay
  EXPECT_EQ(Grid->GetFoundCell(), (GridCellPlace{9, 2}));
  EXPECT_NE(colour(9), marked) << "it shows another text";
  Press(*Edit(), WXK_ESCAPE);
  EXPECT_NE(colour(7), marked);
}

TEST_F(FindBar, KeysOfTheBarStayThere) {
  Grid->OpenFind();
  std::vector<int> passedOn;
  Frame->Bind(wxEVT_CHAR_HOOK, [&](wxKeyEvent& event) { passedOn.push_back(event.GetKeyCode()), event.Skip(); });
  for (const auto& [key, held] : {std::pair(int{WXK_F5}, 0),
                                  {'K', kControl},
                                  {'C', kControl},
                                  {'X', 0},
                                  {int{WXK_DELETE}, 0},
                                  {int{WXK_HOME}, 0},
                                  {int{WXK_F3}, 0},
                                  {int{WXK_ESCAPE}, 0}})
    Press(*Edit(), key, held);
  EXPECT_EQ(passedOn, (std::vector<int>{WXK_F5, 'K'}));
  EXPECT_TRUE(Grid->Keys.empty() && Grid->MenuPoints.empty());
  Grid->Swallowed = WXK_F3;
  PressKey(WXK_F3);
  EXPECT_EQ(Edit(), nullptr) << "the derived grid comes first";
  Grid->Swallowed = 0;
  Grid->EnableFilterBar(true);
  Grid->EditFilter(2);
  Press(*Grid->GetFilterEdit(), WXK_F3);
  EXPECT_TRUE(Edit() && wxWindow::FindFocus() == Edit());
}

// A search of many slices: rows come in, columns change, a letter begins it anew.
TEST_F(FindBar, SearchesWhileOtherThingsGoOn) {
  int rows = 400'000, wanted = 399'000;
  Grid->EnableVirtualMode([&](int row, int column, CQORPGridCell& cell) {
    return cell.Text = row == wanted && column == 3 ? L"needle" : L"hay", true;
  });
  Grid->SetVirtualRows(rows);
  Grid->SetCurSel(0);
  Grid->OpenFind();
  Type(L"needles");
  const auto insert = [&] { Grid->SetVirtualRows(rows += 3, 3, 0), wanted += 3; };
  insert();
  Type(L"needle");
  EXPECT_TRUE(Grid->IsSearching());
  for (int beat = 0; beat < 5; ++beat) insert(), wxYield();
  Grid->SetColumnVisible(1, false);
  insert();
  Grid->OnRowsReplaced();
  insert();
  EXPECT_EQ(Found(), std::pair(wanted, 3));
  Type(L"needles");
  Press(*Edit(), WXK_ESCAPE);
  Pump();
  EXPECT_EQ(Grid->GetCurSel(), wanted) << "a closed bar searches no more";
}

TEST_F(FindBar, TheRealKeyboardTypes) {
  if (!GiveRealFocus(*Grid->GetRowsWindow()->GetParent())) GTEST_SKIP() << "the display gives no window the focus";
  wxUIActionSimulator keyboard;
  keyboard.Char(WXK_F3);
  ASSERT_TRUE(PumpUntil([this] { return Edit() && Edit()->HasFocus(); }));
  keyboard.Text("12.1");
  EXPECT_TRUE(PumpUntil([this] { return Found() == std::pair(12, 1); }));
  keyboard.Char(WXK_RETURN);
  EXPECT_TRUE(PumpUntil([this] { return Found() == std::pair(112, 1); }));
  keyboard.Char(WXK_ESCAPE);
  EXPECT_TRUE(PumpUntil([this] { return Edit() == nullptr && RowsHaveFocus(); }));
  EXPECT_TRUE(Grid->Keys.size() == 1) << "only the key that opened the bar";
}

}  // namespace
