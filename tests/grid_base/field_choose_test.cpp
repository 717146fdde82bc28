#include <wx/dialog.h>
#include <wx/uiaction.h>

#include "grid_base/windows/base_grid.h"
#include "tests/toolkit/gui_test.h"
#include "toolkit/dialogs/controls.h"
#include "toolkit/system/make_child.h"

namespace {

// A + follows a checked item, brackets enclose the selected one.
std::wstring TextOf(const CheckList& list) {
  std::wstring text;
  for (int i = 0; i < list.GetItemCount(); ++i) {
    const std::wstring item = list.GetItemText(i) + (list.GetCheck(i) ? L"+" : L"");
    text += i == list.GetCurSel() ? L"[" + item + L"]" : item;
  }
  return text;
}

class ChooserGrid : public CVELDSGridCtrl {
 public:
  explicit ChooserGrid(const GridHost& host) : CVELDSGridCtrl(41, "Chooser", L"ColumnProfile", host) {}
  void SaveColumnProfile() override { ++SaveCount; }
  int SaveCount = 0;
};

class FieldChooseTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    if (Frame == nullptr) return;
    Grid = &MakeChild<ChooserGrid>(Host);
    ASSERT_TRUE(Grid->Create(Frame, 1));
    Grid->SetSize(Frame->GetClientSize());
    for (int column = 0; column < 5; ++column) {
      const std::string key(1, "ABCDE"[column]);
      Grid->InsertProfiledColumn({key, std::wstring(key.begin(), key.end()), 80, 0, column < 3 ? 1 : 0}, column);
    }
    Grid->AdjustLayout();
  }

  // Runs the chooser, and that as soon as it is up and has the focus.
  void Choose(const std::function<void(wxDialog&)>& user) {
    Frame->CallAfter([&] {
      ASSERT_TRUE(PumpUntil([] { return wxWindow::FindWindowById(27014) != nullptr; }));
      wxWindow* list = wxWindow::FindWindowById(27014);
      auto& dialog = dynamic_cast<wxDialog&>(*wxGetTopLevelParent(list));
      const auto isUp = [&] { return dialog.IsModal() && dialog.IsActive() && wxWindow::FindFocus() == list; };
      EXPECT_TRUE(PumpUntil(isUp));
      user(dialog);
    });
    Grid->ChooseFields();
  }

  std::vector<int> Columns() const { return Grid->GetColumnsInfo().DisplayColumns(); }

  const GridHost Host{{}};
  ChooserGrid* Grid = nullptr;
};

CQORPCheckListBox& ListOf(wxDialog& dialog, int id) {
  return dynamic_cast<CQORPCheckListBox&>(*dialog.FindWindow(id));
}

// With the pointer of the display.
void ClickCheck(CQORPCheckListBox& list, int item) {
  wxPoint point(list.FromDIP(10), 0);
  while (list.HitTest(point) != item && point.y < list.GetSize().y) ++point.y;
  point.y += list.GetCharHeight() / 2;
  wxUIActionSimulator pointer;
  pointer.MouseMove(list.ClientToScreen(point));
  Pump();
  pointer.MouseClick();
  Pump();
}

void Key(int code, int modifiers = wxMOD_NONE) {
  wxUIActionSimulator().Char(code, modifiers);
  Pump();
}

TEST_F(FieldChooseTest, MouseAndKeysChangeTheGridAtOnce) {
  Choose([this](wxDialog& dialog) {
    CQORPCheckListBox &shown = ListOf(dialog, 27014), &hidden = ListOf(dialog, 27015);
    EXPECT_EQ(dialog.GetTitle(), L"Trade - FieldChoose");
    EXPECT_EQ(TextOf(shown) + L" | " + TextOf(hidden), L"A+B+C+ | DE");
    shown.SetCurSel(0);
    // Another item than the selected one. The click misses while a window manager still moves the dialog.
    const auto isTaken = [&] { return TextOf(shown) == L"A+[C+]"; };
    for (int attempt = 0; attempt < 3 && TextOf(shown) == L"[A+]B+C+"; ++attempt) {
      ClickCheck(shown, 1);
      PumpUntil(isTaken);
    }
    EXPECT_TRUE(isTaken()) << TextOf(shown);
    EXPECT_EQ(TextOf(hidden), L"BDE");
    EXPECT_TRUE(PumpUntil([this] { return !Grid->HeaderRect(0).IsEmpty() && Grid->HeaderRect(1).IsEmpty(); }));
    Key('U', wxMOD_ALT);
    EXPECT_TRUE(PumpUntil([&] { return TextOf(shown) == L"[C+]A+"; })) << TextOf(shown);
    EXPECT_LT(Grid->HeaderRect(2).x, Grid->HeaderRect(0).x);
    Key('H', wxMOD_ALT);
    EXPECT_TRUE(PumpUntil([&] { return wxWindow::FindFocus() == &hidden; }));
    hidden.SetCurSel(1);
    Key(WXK_DOWN);
    Key(WXK_SPACE);
    EXPECT_TRUE(PumpUntil([&] { return TextOf(shown) == L"[C+]A+E+"; })) << TextOf(shown);
    EXPECT_EQ(TextOf(hidden), L"B[D]");
    Key(WXK_RETURN);
  });
  EXPECT_EQ(Columns(), (std::vector<int>{2, 0, 4}));
  EXPECT_TRUE(PumpUntil([this] { return Grid->IsDescendant(wxWindow::FindFocus()); }));
}

TEST_F(FieldChooseTest, KeepsOrRestoresTheOrderByTheWayItIsLeft) {
  const auto press = [](int id) {
    return [id](wxDialog& dialog) {
      wxCommandEvent click(wxEVT_BUTTON, id);
      dialog.FindWindow(id)->GetEventHandler()->ProcessEvent(click);
    };
  };
  const std::tuple<const char*, std::function<void(wxDialog&)>, int, std::vector<int>> rows[] = {
      {"save", press(27011), 1, {1, 0}},
      {"no save", press(27016), 0, {1, 0}},
      {"cancel", press(2), 0, {0, 1}},
      {"Escape", [](wxDialog& dialog) { Press(ListOf(dialog, 27014), WXK_ESCAPE); }, 0, {0, 1}},
      {"close", [](wxDialog& dialog) { dialog.Close(); }, 0, {0, 1}},
  };
  for (const auto& row : rows) {
    const auto& [way, ignored, saved, columns] = row;
    SCOPED_TRACE(way);
    Grid->SaveCount = 0;
    Grid->ShowAllColumns();
    for (int column = 0; column < 5; ++column) Grid->GetColumnsInfo().SetColumnDisplayPos(column, column);
    for (const int column : {3, 4}) Grid->SetColumnVisible(column, false);
    Choose([&](wxDialog& dialog) {
      ListOf(dialog, 27014).SetCurSel(0);
      press(27013)(dialog);
      ListOf(dialog, 27014).SetCurSel(2);
      Key(WXK_SPACE);
      EXPECT_TRUE(PumpUntil([this] { return Columns() == std::vector<int>{1, 0}; }));
      std::get<1>(row)(dialog);
    });
    EXPECT_EQ(Columns(), columns);
    EXPECT_EQ(Grid->SaveCount, saved);
  }
}

}  // namespace
