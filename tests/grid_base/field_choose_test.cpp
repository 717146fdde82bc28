#include <wx/dialog.h>
#include <wx/stattext.h>
#include <wx/uiaction.h>

#include "grid_base/windows/base_grid.h"
#include "tests/grid_base/check_list_text.h"
#include "tests/toolkit/gui_test.h"
#include "toolkit/dialogs/controls.h"
#include "toolkit/system/make_child.h"

namespace {

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
    Grid = &MakeChild<ChooserGrid>(Host);
    ASSERT_TRUE(Grid->Create(Frame, 1));
    Grid->SetSize(Frame->GetClientSize());
    for (int column = 0; column < 5; ++column)
      Grid->InsertProfiledColumn({{"ABCDE"[column]}, {L"ABCDE"[column]}, 80, 0, column < 3 ? 1 : 0}, column);
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
  pointer.MouseDown();
  Pump();
  pointer.MouseUp();
  Pump();
}

void Key(int code, int modifiers = wxMOD_NONE) {
  wxUIActionSimulator().Char(code, modifiers);
  Pump();
}

TEST_F(FieldChooseTest, MouseAndKeysChangeTheGridAtOnce) {
  Choose([this](wxDialog& dialog) {
    CQORPCheckListBox &shown = ListOf(dialog, 27014), &hidden = ListOf(dialog, 27015);
    for (const auto& [list, label] : {std::pair(&shown, L"Shown columns"), {&hidden, L"Hidden columns"}}) {
      const auto* above = dynamic_cast<wxStaticText*>(list->GetPrevSibling());
      EXPECT_TRUE(above != nullptr && above->GetLabelText() == label) << label;
    }
    EXPECT_NEAR(shown.GetSize().x, hidden.GetSize().x, 1);
    const auto become = [&](const std::wstring& lists) {
      return PumpUntil([&] { return TextOf(shown) + L" | " + TextOf(hidden) == lists; });
    };
    EXPECT_EQ(dialog.GetTitle(), L"Trade - FieldChoose");
    EXPECT_TRUE(become(L"A+B+C+ | DE"));
    shown.SetCurSel(0);
    // Another item than the selected one. The click misses while a window manager still moves the dialog.
    for (int attempt = 0; attempt < 3 && TextOf(shown) == L"[A+]B+C+"; ++attempt) {
      ClickCheck(shown, 1);
      become(L"A+[C+] | BDE");
    }
    EXPECT_TRUE(become(L"A+[C+] | BDE")) << TextOf(shown);
    EXPECT_TRUE(PumpUntil([this] { return !Grid->HeaderRect(0).IsEmpty() && Grid->HeaderRect(1).IsEmpty(); }));
    Key('U', wxMOD_ALT);
    EXPECT_TRUE(become(L"[C+]A+ | BDE")) << TextOf(shown);
    Key('H', wxMOD_ALT);
    EXPECT_TRUE(PumpUntil([&] { return wxWindow::FindFocus() == &hidden; }));
    hidden.SetCurSel(1);
    Key(WXK_DOWN);
    Key(WXK_SPACE);
    EXPECT_TRUE(become(L"[C+]A+E+ | B[D]")) << TextOf(shown);
    Press(hidden, 'W', kAlt);
    EXPECT_TRUE(PumpUntil([&] { return wxWindow::FindFocus() == &shown; }));
    EXPECT_EQ(dialog.GetDefaultItem(), dialog.FindWindow(27016));
    Key(WXK_RETURN);
  });
  EXPECT_EQ(Grid->GetColumnsInfo().DisplayColumns(), (std::vector<int>{2, 0, 4}));
  EXPECT_TRUE(PumpUntil([this] { return Grid->IsDescendant(wxWindow::FindFocus()); }));
}

TEST_F(FieldChooseTest, KeepsOrRestoresTheOrderByTheWayItIsLeft) {
  // The button, or Escape, or 0 to close the dialog; then the profiles saved and the columns.
  const std::vector<int> before{0, 1, 2}, moved{1, 0, 2};
  const std::tuple<int, int, std::vector<int>> rows[] = {{27016, 0, moved}, {27011, 1, before},
                                                         {2, 1, before},    {WXK_ESCAPE, 1, before},
                                                         {0, 1, before},    {WXK_NUMPAD_ENTER, 1, moved}};
  for (const auto& [way, saved, columns] : rows) {
    SCOPED_TRACE(way);
    Choose([id = way](wxDialog& dialog) {
      const auto press = [&dialog](int clicked) {
        wxCommandEvent click(wxEVT_BUTTON, clicked);
        dialog.FindWindow(clicked)->GetEventHandler()->ProcessEvent(click);
      };
      ListOf(dialog, 27014).SetCurSel(0);
      press(27013);
      if (id == 0) return void(dialog.Close());
      if (id > 2 && id < 27000) return Press(ListOf(dialog, 27014), id);
      wxWindow& button = *dialog.FindWindow(id);
      EXPECT_TRUE(PumpUntil([&button] { return button.SetFocus(), wxWindow::FindFocus() == &button; }));
      Press(button, WXK_RETURN);
      EXPECT_TRUE(dialog.IsModal()) << "Enter is the button's";
      press(id);
    });
    EXPECT_EQ(Grid->GetColumnsInfo().DisplayColumns(), columns);
    EXPECT_EQ(Grid->SaveCount, saved);
  }
}

}  // namespace
