#include <wx/artprov.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/dcclient.h>
#include <wx/settings.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/uiaction.h>

#include "tests/toolkit/gui_test.h"
#include "toolkit/dialogs/dialog.h"
#include "toolkit/dialogs/message_box.h"
#include "toolkit/dialogs/popups.h"
#include "toolkit/system/make_child.h"

namespace {

constexpr DialogControl kControls[] = {
    {30029, L"", 0, 0, 200, 60}, {30030, L"Buy:", 4, 70, 16, 8}, {30031, L"", 22, 70, 50, 8}};

class DialogTest : public GuiTest {
 protected:
  CQORPDialog& MakeDialog() {
    CQORPDialog& dialog = MakeChild<CQORPDialog>();
    EXPECT_TRUE(dialog.CreateChild(Frame, wxID_ANY, 200, 80, kControls));
    return dialog;
  }
  // Shows the box and runs that as soon as it is up.
  int Show(CQORPMessageBox& box, const std::function<void(wxDialog&)>& user) {
    box.Parent = Frame;
    Frame->CallAfter([&] {
      ASSERT_TRUE(PumpUntil([] { return ModalDialog() != nullptr && ModalDialog()->IsShownOnScreen(); }));
      user(*ModalDialog());
    });
    return box.ShowModal();
  }
};
using MessageBoxTest = DialogTest;
const std::wstring kLongText = std::wstring(35, L'W') + L' ' + std::wstring(35, L'W');

TEST_F(DialogTest, AnchoredControlsFollowTheSizeByTheirShare) {
  CQORPDialog& dialog = MakeDialog();
  EXPECT_EQ(dialog.GetSize(), dialog.ConvertDialogToPixels(wxSize(200, 80)));
  EXPECT_EQ(dialog.GetStatic(30031)->GetRect(), dialog.FromDialogUnits(wxRect(22, 70, 50, 8)));
  EXPECT_EQ(dialog.GetStatic(30032), nullptr);
  dialog.SetSize(400, 200);
  // The control, its place, its anchor, and its places in a large and a small dialog.
  const std::tuple<int, wxRect, CQORPDialog::Anchor, wxRect, wxRect> rows[] = {
      {30029, {0, 0, 400, 170}, {0, 0, 100, 100}, {0, 0, 600, 270}, {0, 0, 300, 70}},
      {30030, {10, 180, 60, 15}, {.MoveYPercent = 100}, {10, 280, 60, 15}, {10, 80, 60, 15}},
      {30031, {100, 180, 100, 15}, {50, 100, 50, 0}, {200, 280, 200, 15}, {50, 80, 50, 15}}};
  for (const auto& [id, rect, anchor, large, small] : rows) {
    dialog.GetStatic(id)->SetSize(rect);
    dialog.AddAnchor(dialog.GetStatic(id), anchor);
  }
  for (const wxSize size : {wxSize(600, 300), wxSize(300, 100), wxSize(0, 20), wxSize(400, 200)}) {
    dialog.SetSize(size);
    dialog.AdjustControlsLayout();
    EXPECT_TRUE(size.x > 0 || dialog.GetStatic(30030)->GetRect() == wxRect(10, 0, 60, 15));
    if (size.x == 0) continue;  // a window without an area is not the same on every platform
    for (const auto& [id, rect, anchor, large, small] : rows)
      EXPECT_EQ(dialog.GetStatic(id)->GetRect(), size.x == 600 ? large : size.x == 300 ? small : rect) << id;
  }
}

TEST_F(DialogTest, AStaticPaintsOnlyIfItChanges) {
  CQORPDialog& dialog = MakeDialog();
  CQORPStatic &text = *dialog.GetStatic(30031), &other = *dialog.GetStatic(30030);
  ASSERT_TRUE(PumpUntil([&text] { return text.GetPaintCount() > 0; }));
  const std::tuple<const char*, std::function<void()>, bool> rows[] = {
      {"text", [&] { text.SetWindowText(L"1500"); }, true},
      {"the same text", [&] { text.SetWindowText(L"1500"); }, false},
      {"colour", [&] { text.SetTextColor(0x0000FF); }, true},
      {"the same colour", [&] { text.SetTextColor(0x0000FF); }, false},
      {"theme's colour", [&] { text.SetTextColor({}); }, true},
      {"the dialog's font", [&] { dialog.SetFont(dialog.GetFont().Bold()); }, true},
  };
  for (const auto& [what, change, paints] : rows) {
    // A second static that is always painted shows that painting is over.
    Pump();
    const int before = text.GetPaintCount(), otherBefore = other.GetPaintCount();
    change();
    other.Refresh();
    ASSERT_TRUE(PumpUntil([&] { return other.GetPaintCount() > otherBefore; }));
    EXPECT_EQ(text.GetPaintCount() > before, paints) << what;
  }
  EXPECT_TRUE(text.GetFont() == dialog.GetFont() && text.GetToolTipText().empty());
  text.SetWindowText(kLongText);
  EXPECT_TRUE(PumpUntil([&] { return text.GetToolTipText() == kLongText; }));
  auto& list = MakeChild<CQORPCheckListBox>(Frame, wxID_ANY, L"Columns");
  EXPECT_EQ(SpokenName(text) + SpokenName(list), kLongText + L"Columns");
}

// Painted at once, in no event.
TEST_F(DialogTest, ProgressIsShownAtTheLowerEdgeUntilItsEnd) {
  const wxSize size = Frame->GetClientSize();
  const auto isBarAt = [&](int x) {
    wxColour colour;
    wxClientDC(Frame).GetPixel(x, size.y - 3, &colour);
    return colour == wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT);
  };
  {
    CQORPProgressOverlay overlay(*Frame);
    for (const int percent : {0, 30, 60}) {
      overlay.ShowProgress(L"Exporting:", percent);
      for (const int at : {0, 20, 50, 80})
        EXPECT_EQ(isBarAt(size.x * at / 100), at < percent) << at << " of " << percent;
    }
  }
  EXPECT_TRUE(PumpUntil([&] { return !isBarAt(20); }));
}

TEST_F(DialogTest, AModalDialogResizesAndAnswers) {
  for (const int wanted : {7, int{wxID_CANCEL}}) {
    CQORPDialog dialog;
    ASSERT_TRUE(dialog.CreateModal(Frame, L"Trade - FieldChoose", 200, 80, kControls));
    wxWindow& window = *wxGetTopLevelParent(&dialog);
    EXPECT_EQ(window.GetClientSize(), dialog.GetSize());
    dialog.CallAfter([&] {
      window.SetClientSize(640, 360);
      EXPECT_TRUE(PumpUntil([&] { return dialog.GetSize() == wxSize(640, 360); }));
      wanted == 7 ? dialog.EndDialog(7) : static_cast<void>(window.Close());
    });
    EXPECT_EQ(dialog.DoModal(), wanted);
  }
}

template <typename Control>
std::vector<Control*> ChildrenOf(wxWindow& window) {
  std::vector<Control*> found;
  for (wxWindow* child : window.GetChildren())
    if (auto* control = dynamic_cast<Control*>(child)) found.push_back(control);
  return found;
}

// The captions from left to right, the default one in brackets.
wxString ButtonsOf(wxDialog& dialog) {
  wxString text;
  for (const wxButton* button : ChildrenOf<wxButton>(dialog))
    text += button == dialog.GetDefaultItem() ? L"[" + button->GetLabelText() + L"]" : button->GetLabelText() + L" ";
  return text;
}

// True if the only picture is the system's one of that name; without a name, if there is none.
bool HasIcon(wxDialog& dialog, const char* art) {
  const std::vector<wxStaticBitmap*> icons = ChildrenOf<wxStaticBitmap>(dialog);
  if (icons.empty() || *art == 0) return icons.empty() && *art == 0;
  const wxImage shown = icons.front()->GetBitmap().ConvertToImage();
  const wxImage wanted = wxArtProvider::GetBitmap(art, wxART_MESSAGE_BOX).ConvertToImage();
  const auto bytes = 3 * static_cast<std::size_t>(wanted.GetWidth() * wanted.GetHeight());
  return shown.GetSize() == wanted.GetSize() && std::equal(shown.GetData(), shown.GetData() + bytes, wanted.GetData());
}

TEST_F(MessageBoxTest, ShowsItsStyleAndAnswersKeys) {
  // The style, the buttons, the key (0 closes the box), the answer, the icon, and whether close box and Escape close
  // it.
  const std::tuple<std::uint32_t, wxString, int, int, const char*, bool> rows[] = {
      {0x10, "[OK]", 0, 1, "wxART_ERROR", true},
      {0x21, "[OK]Cancel ", WXK_ESCAPE, 2, "wxART_QUESTION", true},
      {0x32, "[Abort]Retry Ignore ", 'I', 5, "wxART_WARNING", false},
      {0x203, "Yes No [Cancel]", 'n', 7, "", true},
      {0x70, "[OK]", WXK_ESCAPE, 1, "", true},
      {0x80140, "[Left]Right & more ", 'R', 1001, "wxART_INFORMATION", false},
  };
  testing::internal::CaptureStderr();
  for (const auto& row : rows) {
    SCOPED_TRACE(std::get<0>(row));
    CQORPMessageBox box({.Caption = L"Trade Book", .Text = L"50 % & more", .Style = std::get<0>(row)});
    box.ButtonCaptions = {L"&Left", L"&Right && more"};
    const int answer = Show(box, [&row](wxDialog& dialog) {
      const auto& [style, buttons, userKey, answers, icon, closes] = row;
      EXPECT_EQ(ButtonsOf(dialog), buttons);
      EXPECT_TRUE(HasIcon(dialog, icon));
      EXPECT_EQ(dialog.GetTitle() + ChildrenOf<wxStaticText>(dialog).front()->GetLabelText(), L"Trade Book50 % & more");
      EXPECT_EQ(dialog.GetLayoutDirection() == wxLayout_RightToLeft, (style & 0x80000) != 0);
      EXPECT_EQ(dialog.HasFlag(wxCLOSE_BOX), closes);
      Press(dialog, closes ? 'Q' : int{WXK_ESCAPE});
      Press(dialog, 'O', kControl);
      if (userKey == 0 || !closes) dialog.Close();
      if (userKey != 0) Press(dialog, userKey);
    });
    EXPECT_EQ(answer, std::get<3>(row));
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr().find("CRITICAL"), std::string::npos);
}

TEST_F(MessageBoxTest, HandsTheCheckBackAndShowsTheIconOfTheFrame) {
  for (const bool before : {false, true}) {
    if (before) Frame->SetIcon(wxArtProvider::GetIcon("wxART_QUESTION", wxART_MESSAGE_BOX, {32, 32}));
    CQORPMessageBox box({.Text = kLongText, .Style = 0x81, .WithCheck = true, .Checked = before});
    box.CheckCaption = L" Don't Ask Again";
    Show(box, [before](wxDialog& dialog) {
      wxCheckBox* check = ChildrenOf<wxCheckBox>(dialog).front();
      EXPECT_TRUE(check->GetLabel() == L" Don't Ask Again" && check->GetValue() == before);
      EXPECT_EQ(ChildrenOf<wxStaticBitmap>(dialog).size(), before ? 1U : 0U);
      EXPECT_LT(dialog.GetSize().x, dialog.GetTextExtent(kLongText).x) << "a long text has several lines";
      check->SetValue(!before);
      dialog.Close();
    });
    EXPECT_EQ(box.Checked, !before);
  }
}

TEST_F(MessageBoxTest, EnterAndArrowsMoveAmongTheButtons) {
  CQORPMessageBox box({.Text = L"Sure?", .Style = 0x103});
  const int answer = Show(box, [](wxDialog& dialog) {
    const std::vector<wxButton*> buttons = ChildrenOf<wxButton>(dialog);
    dialog.Raise();
    ASSERT_TRUE(PumpUntil([&] { return wxWindow::FindFocus() == buttons[1]; }));
    for (const auto& [key, focused] :
         {std::pair<int, std::size_t>(WXK_RIGHT, 2), {WXK_DOWN, 0}, {WXK_LEFT, 2}, {WXK_UP, 1}, {WXK_UP, 0}}) {
      Press(dialog, key);
      ASSERT_TRUE(PumpUntil([&, place = focused] { return wxWindow::FindFocus() == buttons[place]; }));
    }
    wxUIActionSimulator().Char(WXK_RETURN);
  });
  EXPECT_EQ(answer, 6);
}

TEST_F(MessageBoxTest, APopupTakesNoFocusAndClosesItself) {
  ASSERT_TRUE(PumpUntil([this] { return Frame->IsActive(); }));
  auto& popup = MakeChild<CQORPPopupWindow>(Frame, L"Trade Book", L"0601TRD.txt Successfully exported..!!",
                                            CQORPPopupWndParams{.AutoCloseMs = 50});
  auto& above = MakeChild<CQORPPopupWindow>(nullptr, L"", L"Second", CQORPPopupWndParams{.AutoCloseMs = 60'000});
  wxWeakRef<wxWindow> first(&popup), second(&above);
  popup.ShowInCorner();
  above.ShowInCorner();
  EXPECT_GT(popup.GetRect().x, 1000);
  EXPECT_LE(above.GetRect().GetBottom(), popup.GetRect().y);
  EXPECT_EQ(ChildrenOf<wxStaticText>(popup).size() + ChildrenOf<wxStaticText>(above).size(), 3U);
  ASSERT_TRUE(PumpUntil([&first] { return first == nullptr; }));
  EXPECT_TRUE(Frame->IsActive());
  Click(above, wxPoint(2, 2));
  EXPECT_TRUE(PumpUntil([&second] { return second == nullptr; }));
}

}  // namespace
