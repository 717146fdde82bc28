#include "toolkit/dialogs/message_box.h"

#include <wx/artprov.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/dialog.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/uiaction.h>

#include "tests/toolkit/gui_test.h"
#include "toolkit/dialogs/popups.h"
#include "toolkit/system/make_child.h"

namespace {

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

class MessageBoxTest : public GuiTest {
 protected:
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

TEST_F(MessageBoxTest, ShowsItsStyleAndAnswersKeys) {
  // The style, the buttons, the key (0 closes the box), the answer, the icon, and whether close box and Escape close
  // it.
  const std::tuple<std::uint32_t, wxString, int, int, const char*, bool> rows[] = {
      {0x10, "[OK]", 0, 1, "wxART_ERROR", true},
      {0x21, "[OK]Cancel ", WXK_ESCAPE, 2, "wxART_QUESTION", true},
      {0x32, "[Abort]Retry Ignore ", 'I', 5, "wxART_WARNING", false},
      {0x203, "Yes No [Cancel]", 'n', 7, "", true},
      {0x70, "[OK]", WXK_ESCAPE, 1, "", true},
      {0x104, "Yes [No]", 'y', 6, "", false},
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
      EXPECT_EQ(ChildrenOf<wxStaticText>(dialog).front()->GetLabelText(), L"50 % & more");
      EXPECT_TRUE(dialog.GetTitle() == L"Trade Book" && dialog.HasFlag(wxCAPTION));
      EXPECT_EQ(dialog.GetLayoutDirection() == wxLayout_RightToLeft, (style & 0x80000) != 0);
      EXPECT_EQ(dialog.HasFlag(wxCLOSE_BOX), closes);
      Press(dialog, closes ? 'Q' : int{WXK_ESCAPE});
      Press(dialog, 'O', kControl);
      if (userKey == 0 || !closes) dialog.Close();
      if (userKey != 0) Press(dialog, userKey);
    });
    EXPECT_EQ(answer, std::get<3>(row));
  }
  const std::string printed = testing::internal::GetCapturedStderr();
  EXPECT_EQ(printed.find("CRITICAL"), std::string::npos) << printed;
}

TEST_F(MessageBoxTest, HandsTheCheckBackAndShowsTheIconOfTheFrame) {
  for (const bool before : {false, true}) {
    if (before) Frame->SetIcon(wxArtProvider::GetIcon("wxART_QUESTION", wxART_MESSAGE_BOX, {32, 32}));
    CQORPMessageBox box({.Text = L"Sure?", .Style = 0x81, .WithCheck = true, .Checked = before});
    box.CheckCaption = L" Don't Ask Again";
    Show(box, [before](wxDialog& dialog) {
      wxCheckBox* check = ChildrenOf<wxCheckBox>(dialog).front();
      EXPECT_EQ(check->GetLabel(), L" Don't Ask Again");
      EXPECT_EQ(check->GetValue(), before);
      EXPECT_EQ(ChildrenOf<wxStaticBitmap>(dialog).size(), before ? 1U : 0U);
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
    const std::pair<int, std::size_t> steps[] = {
        {WXK_RIGHT, 2}, {WXK_DOWN, 0}, {WXK_LEFT, 2}, {WXK_UP, 1}, {WXK_UP, 0}};
    for (const auto& [key, focused] : steps) {
      Press(dialog, key);
      ASSERT_TRUE(PumpUntil([&] { return wxWindow::FindFocus() == buttons[focused]; }));
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
