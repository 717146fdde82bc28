#include "toolkit/grid/filter_fields.h"

#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include "tests/toolkit/grid_fixture.h"

namespace {

class FilterBar : public GridFixture {
 protected:
  void SetUp() override {
    GridFixture::SetUp();
    Grid->EnableFilterBar(true);
  }
  // The changes of a grid at each beat.
  void Beat() {
    Grid->SetVirtualRows(Grid->GetVirtualRows() + 3, 3);
    Grid->SetCurSel(4);
    Grid->RedrawRows();
    Grid->AdjustLayout();
  }
  bool RowsHaveFocus() const { return wxWindow::FindFocus() == Grid->GetRowsWindow()->GetParent(); }
  wxTextCtrl* Edit() const { return dynamic_cast<wxTextCtrl*>(Grid->GetFilterEdit()); }
  std::wstring Text() const { return Edit() ? Edit()->GetValue().ToStdWstring() : L"none"; }
  std::pair<long, long> Selection() const {
    long from = -1, to = -1;
    Edit()->GetSelection(&from, &to);
    return {from, to};
  }
};

TEST_F(FilterBar, TypingFiltersAtOnceAndKeepsTheCaret) {
  ASSERT_TRUE(Grid->EditFilter(2));
  Grid->WhenFilterChanges = [this] { Beat(); };
  for (const wchar_t* typed : {L"B", L"y"}) Edit()->WriteText(typed);
  Edit()->SetInsertionPoint(1);
  Edit()->WriteText(L"u");
  EXPECT_EQ(Grid->FilterChanges, (std::vector<FilterChange>{{2, L"B"}, {2, L"By"}, {2, L"Buy"}}));
  EXPECT_EQ(Selection(), std::pair(2L, 2L));
  for (const int column : {2, 2, 3, 6, -1}) Grid->SetFilterText(column, L"sell");
  EXPECT_EQ(Text(), L"sell");
  EXPECT_EQ(Grid->FilterChanges.size(), 5u) << "neither the same text again nor what is no column";
  Grid->OnFilterBarClearAll();
  EXPECT_EQ(Text() + Grid->GetFilterText(2) + Grid->GetFilterText(3), L"");
  EXPECT_EQ(Grid->FilterChanges.size(), 5u);
}

TEST_F(FilterBar, TheEditGoesWithItsColumn) {
  Grid->SetFilterText(4, L"text");
  Grid->EditFilter(4);
  Edit()->SetSelection(1, 3);
  CQORPGridColumnsInfo& columns = Grid->GetColumnsInfo();
  for (const int column : {2, 3, 5}) Grid->SetColumnWidth(column, 500);
  const std::tuple<const char*, std::function<void()>, bool, bool> steps[] = {
      {"moved", [&] { columns.SetColumnDisplayPos(1, 4), Grid->AdjustLayout(); }, false, true},
      {"wider", [&] { Grid->SetColumnWidth(4, 160); }, false, true},
      {"locked among more frozen ones", [&] { Grid->SetColumnLocked(4, true), Grid->FreezeColumns(3); }, true, true},
      {"header hidden", [&] { Grid->EnableHeader(false); }, true, true},
      {"nothing frozen", [&] { Grid->SetColumnLocked(4, false), Grid->FreezeColumns(0); }, false, true},
      {"scrolled", [&] { Press(*Grid->GetRowsWindow(), WXK_RIGHT); }, false, true},
      {"moved to the end", [&] { columns.SetColumnDisplayPos(5, 4), Grid->AdjustLayout(); }, false, false},
      {"scrolled into view", [&] { Grid->EditFilter(4), Edit()->SetSelection(1, 3); }, false, true},
      {"frozen between beats", [&] { Grid->SetColumnLocked(4, true), Beat(); }, true, true},
  };
  for (const auto& [what, change, frozen, inView] : steps) {
    SCOPED_TRACE(what);
    change();
    Pump();
    const wxWindow* header = Grid->GetHeaderWindow(4);
    ASSERT_TRUE(Edit() != nullptr && Edit()->GetParent() == header);
    EXPECT_EQ(header != Grid->GetHeaderWindow(), frozen);
    const wxRect field = Grid->FilterRect(4), edit = Edit()->GetRect().Intersect(header->GetClientSize());
    EXPECT_EQ(!field.IsEmpty(), inView);
    EXPECT_TRUE(!inView || (field.Contains(edit) && edit.GetRight() == field.GetRight() - 1));
    EXPECT_GE(edit.width, field.width - 6);
    EXPECT_TRUE(Text() == L"text" && Selection() == std::pair(1L, 3L));
    EXPECT_EQ(wxWindow::FindFocus(), Grid->GetFilterEdit());
  }
  Grid->SetColumnVisible(4, false);
  EXPECT_TRUE(Text() == L"none" && RowsHaveFocus() && !Grid->EditFilter(4));
  EXPECT_EQ(Grid->GetFilterText(4), L"text");
  EXPECT_TRUE(Grid->EditFilter(5)) << "the window that the edit was in is gone";
  EXPECT_EQ(Grid->FilterChanges.size(), 1u);
}

TEST_F(FilterBar, KeysMoveBetweenFieldsAndLeaveThem) {
  Grid->SetColumnVisible(1, false);
  Grid->SetColumnLocked(3, true);  // 3 | 0 2 4 5
  for (int column = 0; column < 6; ++column) Grid->SetFilterText(column, std::to_wstring(column));
  PressKey('F', kControl), Grid->Keys.clear();  // the first field
  std::vector<int> passedOn;
  Frame->Bind(wxEVT_CHAR_HOOK, [&](wxKeyEvent& event) { passedOn.push_back(event.GetKeyCode()), event.Skip(); });
  // The key with what is held, the text of the field that is edited then, and its selection.
  const std::tuple<int, int, std::wstring, long, long> steps[] = {
      {WXK_TAB, 0, L"0", 0, 1},        {WXK_TAB, 0, L"2", 0, 1},    {WXK_TAB, 0, L"4", 0, 1},
      {WXK_TAB, 0, L"5", 0, 1},        {WXK_TAB, 0, L"3", 0, 1},    {WXK_TAB, kShift, L"5", 0, 1},
      {WXK_TAB, kShift, L"4", 0, 1},   {WXK_RIGHT, 0, L"4", 0, 1},  {WXK_END, 0, L"4", 1, 1},
      {WXK_RIGHT, kShift, L"4", 1, 1}, {WXK_LEFT, 0, L"4", 1, 1},   {WXK_RIGHT, 0, L"5", 0, 0},
      {WXK_RIGHT, 0, L"5", 0, 0},      {WXK_LEFT, 0, L"4", 1, 1},   {WXK_UP, 0, L"4", 1, 1},
      {'C', kControl, L"4", 1, 1},     {'V', kControl, L"4", 1, 1}, {'X', 0, L"4", 1, 1},
      {WXK_F5, 0, L"4", 1, 1},         {'O', kAlt, L"4", 1, 1},     {'K', kControl, L"4", 1, 1},
  };
  for (const auto& [key, held, expected, from, to] : steps) {
    if (key == WXK_END) Edit()->SetInsertionPointEnd();  // a made event does nothing to a native field
    Press(*Edit(), key, held);
    ASSERT_EQ(std::tuple(Text(), Selection()), std::tuple(expected, std::pair(from, to))) << key << ' ' << held;
  }
  EXPECT_EQ(passedOn, (std::vector<int>{WXK_F5, 'O', 'K'}));
  RightClick(*Edit(), {5, 5});
  for (const int key : {WXK_ESCAPE, WXK_RETURN, WXK_NUMPAD_ENTER, WXK_DOWN, WXK_NUMPAD_DOWN}) {
    Press(*Edit(), key);
    EXPECT_TRUE(Text() == L"none" && RowsHaveFocus() && Grid->Keys.empty());
    PressKey('F', kControl);
    EXPECT_EQ(Text(), L"4") << "the last one again";
    Grid->Keys.clear();
  }
  EXPECT_TRUE(Grid->MenuPoints.empty() && Grid->FilterChanges.size() == 6);
}

TEST_F(FilterBar, TheMouseEditsBelowTheTitlesOnly) {
  ClickAt(2, Grid->FilterRect(2));
  ASSERT_TRUE(Edit() && Edit()->GetRect().Intersects(Grid->FilterRect(2)));
  Drag(*Grid->GetHeaderWindow(), Grid->FilterRect(0).GetPosition() + wxPoint(50, 5), {450, 25});
  EXPECT_EQ(Grid->GetColumnsInfo().GetColumnOrder(0), 0);
  EXPECT_TRUE(Edit()->GetRect().Intersects(Grid->FilterRect(0)) && Grid->Toggled.empty());
  ClickAt(1, Grid->HeaderRect(1));
  EXPECT_EQ(Grid->Toggled, std::vector<int>{1});
  Drag(*Grid->GetHeaderWindow(), {Grid->FilterRect(0).GetRight(), Grid->FilterRect(0).y + 5}, {1, 5});
  EXPECT_EQ(Grid->GetColumnsInfo().GetColumnWidth(0), 30);
  wxTextCtrl& other = MakeChild<wxTextCtrl>(Frame, wxID_ANY);
  other.SetFocus();
  EXPECT_TRUE(PumpUntil([this] { return Edit() == nullptr; }));
  EXPECT_EQ(wxWindow::FindFocus(), &other);
}

TEST_F(FilterBar, AHiddenBarKeepsItsTexts) {
  EXPECT_EQ(Grid->HeaderRect(1).GetBottom() + 1, Grid->FilterRect(1).y);
  Grid->SetFilterText(1, L"x");
  Grid->EditFilter(1);
  Grid->EnableFilterBar(false);
  EXPECT_TRUE(Text() == L"none" && Grid->FilterRect(1).IsEmpty() && !Grid->EditFilter(1));
  EXPECT_EQ(Grid->GetFilterText(1), L"x");
  Grid->EnableHeader(false);
  EXPECT_FALSE(Grid->GetHeaderWindow()->IsShown());
  Grid->EnableFilterBar(true);
  EXPECT_TRUE(Grid->GetHeaderWindow()->IsShown() && Grid->FilterRect(1).y == 0);
}

// GTK complains of a hidden window that is scrolled.
TEST_F(FilterBar, TheRealKeyboardTypesWhileRowsCome) {
  if (!GiveRealFocus(*Grid->GetRowsWindow()->GetParent())) GTEST_SKIP() << "the display gives no window the focus";
  testing::internal::CaptureStderr();
  Grid->WhenFilterChanges = [this] { Beat(); };
  Grid->EditFilter(4);
  const auto type = [this](int key, const wchar_t* expected) {
    wxUIActionSimulator().Char(key);
    EXPECT_TRUE(PumpUntil([&] { return Text() == expected; })) << Text();
    Beat();
  };
  type('A', L"a");
  Grid->SetColumnLocked(4, true);  // the edit moves to another window
  type('B', L"ab");
  type(WXK_ESCAPE, L"none");
  EXPECT_TRUE(RowsHaveFocus() && Grid->Keys.empty());
  for (int column = 0; column < 6; ++column) Grid->SetColumnWidth(column, 500);
  for (const int column : {0, 5, 0}) {
    EXPECT_TRUE(Grid->EditFilter(column));
    Press(*Grid->GetFilterEdit(), WXK_ESCAPE);
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr().find("CRITICAL"), std::string::npos);
}

}  // namespace
