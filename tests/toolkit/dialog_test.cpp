#include "toolkit/dialogs/dialog.h"

#include <wx/frame.h>
#include <wx/textctrl.h>

#include "tests/toolkit/gui_test.h"
#include "toolkit/system/make_child.h"

namespace {

constexpr DialogControl kControls[] = {
    {30029, L"", 0, 0, 200, 60},
    {30030, L"Buy:", 4, 70, 16, 8},
    {30031, L"", 22, 70, 50, 8},
};

class DialogTest : public GuiTest {
 protected:
  CQORPDialog& MakeDialog() {
    CQORPDialog& dialog = MakeChild<CQORPDialog>();
    EXPECT_TRUE(dialog.CreateChild(Frame, wxID_ANY, 200, 80, kControls));
    return dialog;
  }
};

TEST_F(DialogTest, AnchoredControlsFollowTheSizeByTheirShare) {
  CQORPDialog& dialog = MakeDialog();
  EXPECT_EQ(dialog.GetSize(), dialog.ConvertDialogToPixels(wxSize(200, 80)));
  EXPECT_EQ(dialog.GetStatic(30031)->GetRect(), dialog.FromDialogUnits(wxRect(22, 70, 50, 8)));
  EXPECT_EQ(dialog.GetStatic(30032), nullptr);
  dialog.SetSize(400, 200);
  CQORPStatic *fill = dialog.GetStatic(30029), *line = dialog.GetStatic(30030), *half = dialog.GetStatic(30031);
  fill->SetSize(0, 0, 400, 170);
  line->SetSize(10, 180, 60, 15);
  half->SetSize(100, 180, 100, 15);
  dialog.AddAnchor(fill, {.SizeXPercent = 100, .SizeYPercent = 100});
  dialog.AddAnchor(line, {.MoveYPercent = 100});
  dialog.AddAnchor(half, {.MoveXPercent = 50, .MoveYPercent = 100, .SizeXPercent = 50});
  const std::tuple<wxSize, wxRect, wxRect, wxRect> rows[] = {
      {{600, 300}, {0, 0, 600, 270}, {10, 280, 60, 15}, {200, 280, 200, 15}},
      {{300, 100}, {0, 0, 300, 70}, {10, 80, 60, 15}, {50, 80, 50, 15}},
      {{0, 20}, {0, 0, 0, 0}, {10, 0, 60, 15}, {-100, 0, 0, 15}},
      {{400, 200}, {0, 0, 400, 170}, {10, 180, 60, 15}, {100, 180, 100, 15}},
  };
  for (const auto& [size, fillRect, lineRect, halfRect] : rows) {
    dialog.SetSize(size);
    dialog.AdjustControlsLayout();
    EXPECT_EQ(line->GetRect(), lineRect) << size.x;
    if (size.x == 0) continue;  // a window without an area is not the same on every platform
    EXPECT_EQ(fill->GetRect(), fillRect) << size.x;
    EXPECT_EQ(half->GetRect(), halfRect) << size.x;
  }
}

TEST_F(DialogTest, AStaticPaintsOnlyIfItChanges) {
  CQORPDialog& dialog = MakeDialog();
  CQORPStatic& text = *dialog.GetStatic(30031);
  ASSERT_TRUE(PumpUntil([&text] { return text.GetPaintCount() > 0; }));
  const wxFont bold = dialog.GetFont().Bold();
  const std::tuple<const char*, std::function<void()>, bool> rows[] = {
      {"text", [&] { text.SetWindowText(L"1500"); }, true},
      {"the same text", [&] { text.SetWindowText(L"1500"); }, false},
      {"colour", [&] { text.SetTextColor(0x0000FF); }, true},
      {"the same colour", [&] { text.SetTextColor(0x0000FF); }, false},
      {"theme's colour", [&] { text.SetTextColor({}); }, true},
      {"the dialog's font", [&] { dialog.SetFont(bold); }, true},
  };
  for (const auto& [what, change, paints] : rows) {
    // A second static that is always painted shows that painting is over.
    Pump();
    const int before = text.GetPaintCount(), otherBefore = dialog.GetStatic(30030)->GetPaintCount();
    change();
    dialog.GetStatic(30030)->Refresh();
    ASSERT_TRUE(PumpUntil([&] { return dialog.GetStatic(30030)->GetPaintCount() > otherBefore; }));
    EXPECT_EQ(text.GetPaintCount() > before, paints) << what;
  }
  EXPECT_EQ(text.GetFont(), bold);
  EXPECT_EQ(text.GetToolTipText(), L"");
  text.SetWindowText(std::wstring(200, L'9'));
  EXPECT_TRUE(PumpUntil([&text] { return text.GetToolTipText() == std::wstring(200, L'9'); }));
}

TEST_F(DialogTest, AModalDialogResizesAndAnswers) {
  for (const int wanted : {7, int{wxID_CANCEL}}) {
    CQORPDialog dialog;
    ASSERT_TRUE(dialog.CreateModal(Frame, L"Trade - FieldChoose", 200, 80, kControls));
    EXPECT_EQ(wxGetTopLevelParent(&dialog)->GetClientSize(), dialog.GetSize());
    dialog.CallAfter([&] {
      wxGetTopLevelParent(&dialog)->SetClientSize(640, 360);
      PumpUntil([&] { return dialog.GetSize() == wxSize(640, 360); });
      if (wanted == 7) dialog.EndDialog(7);
      if (wanted != 7) wxGetTopLevelParent(&dialog)->Close();
    });
    EXPECT_EQ(dialog.DoModal(), wanted);
    EXPECT_EQ(dialog.GetSize(), wxSize(640, 360));
  }
}

}  // namespace
