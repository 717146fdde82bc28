#include "toolkit/dialogs/message_box.h"

#include <wx/artprov.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/dialog.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/uiaction.h>

#include <cstring>

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
std::wstring ButtonsOf(wxDialog& dialog) {
  std::wstring text;
  for (const wxButton* button : ChildrenOf<wxButton>(dialog)) {
    const std::wstring caption = button->GetLabelText().ToStdWstring();
    text += (text.empty() ? L"" : L" ") + (button == dialog.GetDefaultItem() ? L"[" + caption + L"]" : caption);
  }
  return text;
}

// True if the only picture is the system's one of that name; without a name, if there is none.
bool HasIcon(wxDialog& dialog, const char* art) {
  const std::vector<wxStaticBitmap*> icons = ChildrenOf<wxStaticBitmap>(dialog);
  if (icons.empty() || *art == 0) return icons.empty() && *art == 0;
  const wxImage shown = icons.front()->GetBitmap().ConvertToImage();
  const wxImage wanted = wxArtProvider::GetBitmap(art, wxART_MESSAGE_BOX).ConvertToImage();
  return shown.GetSize() == wanted.GetSize() &&
         std::memcmp(shown.GetData(), wanted.GetData(),
                     3 * static_cast<std::size_t>(shown.GetWidth() * shown.GetHeight())) == 0;
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
  static void PressButton(wxDialog& dialog, std::size_t index) {
    wxButton& button = *ChildrenOf<wxButton>(dialog)[index];
    wxCommandEvent event(wxEVT_BUTTON, button.GetId());
    event.SetEventObject(&button);
    button.GetEventHandler()->ProcessEvent(event);
  }
};

TEST_F(MessageBoxTest, ShowsItsStyleAndAnswersKeys) {
  const struct {
    std::uint32_t Style;
    const wchar_t* Buttons;
    int Key;  // 0 closes the box
    int Answer;
    const char* Icon;
  } rows[] = {
      {0x10, L"[OK]", 0, 1, "wxART_ERROR"},
      {0x21, L"[OK] Cancel", WXK_ESCAPE, 2, "wxART_QUESTION"},
      {0x32, L"[Abort] Retry Ignore", 'I', 5, "wxART_WARNING"},
      {0x203, L"Yes No [Cancel]", 'n', 7, ""},
      {0x70, L"[OK]", WXK_ESCAPE, 1, ""},
      {0x80140, L"[Left] Right & more", 'R', 1001, "wxART_INFORMATION"},
  };
  testing::internal::CaptureStderr();
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Style);
    CQORPMessageBox box({.Caption = L"Trade Book", .Text = L"50 % & more", .Style = row.Style});
    box.ButtonCaptions = {L"&Left", L"&Right && more"};
    const int answer = Show(box, [&row](wxDialog& dialog) {
      EXPECT_EQ(ButtonsOf(dialog), row.Buttons);
      EXPECT_TRUE(HasIcon(dialog, row.Icon));
      EXPECT_EQ(ChildrenOf<wxStaticText>(dialog).front()->GetLabelText(), L"50 % & more");
      EXPECT_EQ(dialog.GetTitle(), L"Trade Book");
      EXPECT_EQ(dialog.GetLayoutDirection() == wxLayout_RightToLeft, (row.Style & 0x80000) != 0);
      Press(dialog, 'Q');
      Press(dialog, row.Buttons[1], kControl);
      row.Key == 0 ? static_cast<void>(dialog.Close()) : Press(dialog, row.Key);
    });
    EXPECT_EQ(answer, row.Answer);
    EXPECT_FALSE(box.Checked);
  }
  const std::string printed = testing::internal::GetCapturedStderr();
  EXPECT_EQ(printed.find("CRITICAL"), std::string::npos) << printed;
}

TEST_F(MessageBoxTest, HasACloseBoxOnlyIfItCanBeClosed) {
  for (const std::uint32_t style : {0x01U, 0x02U, 0x04U, 0x100U}) {
    SCOPED_TRACE(style);
    CQORPMessageBox box({.Text = L"Sure?", .Style = style, .ButtonCaptions = {L"One", L"Two"}});
    const int answer = Show(box, [style](wxDialog& dialog) {
      EXPECT_EQ(dialog.HasFlag(wxCLOSE_BOX), style == 1);
      EXPECT_TRUE(dialog.HasFlag(wxCAPTION));
      Press(dialog, WXK_ESCAPE);
      if (style == 1) return;
      dialog.Close();
      Pump();
      ASSERT_EQ(ModalDialog(), &dialog);
      PressButton(dialog, 1);
    });
    EXPECT_EQ(answer, style == 1 ? 2 : style == 2 ? 4 : style == 4 ? 7 : 1001);
  }
}

TEST_F(MessageBoxTest, HandsTheCheckBack) {
  for (const bool before : {false, true}) {
    CQORPMessageBox box({.Text = L"Sure?", .Style = 1, .WithCheck = true, .Checked = before});
    box.CheckCaption = L" Don't Ask Again";
    Show(box, [before](wxDialog& dialog) {
      wxCheckBox* check = ChildrenOf<wxCheckBox>(dialog).front();
      EXPECT_EQ(check->GetLabel(), L" Don't Ask Again");
      EXPECT_EQ(check->GetValue(), before);
      check->SetValue(!before);
      dialog.Close();
    });
    EXPECT_EQ(box.Checked, !before);
  }
}

TEST_F(MessageBoxTest, ShowsTheIconOfTheFrame) {
  CQORPMessageBox box({.Text = L"Sure?", .Style = 0x80});
  const auto countIcons = [&] {
    std::size_t count = 0;
    Show(box, [&count](wxDialog& dialog) {
      count = ChildrenOf<wxStaticBitmap>(dialog).size();
      dialog.Close();
    });
    return count;
  };
  EXPECT_EQ(countIcons(), 0U);
  wxIcon icon;
  icon.CopyFromBitmap(wxArtProvider::GetBitmap("wxART_QUESTION", wxART_MESSAGE_BOX, {32, 32}));
  Frame->SetIcon(icon);
  EXPECT_EQ(countIcons(), 1U);
}

TEST_F(MessageBoxTest, EnterAndArrowsMoveAmongTheButtons) {
  CQORPMessageBox box({.Text = L"Sure?", .Style = 0x103});
  const int answer = Show(box, [](wxDialog& dialog) {
    const std::vector<wxButton*> buttons = ChildrenOf<wxButton>(dialog);
    dialog.Raise();
    ASSERT_TRUE(PumpUntil([&] { return wxWindow::FindFocus() == buttons[1]; }));
    const std::pair<int, int> steps[] = {{WXK_RIGHT, 2}, {WXK_DOWN, 0}, {WXK_LEFT, 2}, {WXK_UP, 1}, {WXK_UP, 0}};
    for (const auto& [key, focused] : steps) {
      Press(dialog, key);
      ASSERT_TRUE(PumpUntil([&] { return wxWindow::FindFocus() == buttons[static_cast<std::size_t>(focused)]; }));
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
  ASSERT_TRUE(PumpUntil([&first] { return first == nullptr; }));
  EXPECT_TRUE(Frame->IsActive());
  Click(above, wxPoint(2, 2));
  EXPECT_TRUE(PumpUntil([&second] { return second == nullptr; }));
}

}  // namespace
