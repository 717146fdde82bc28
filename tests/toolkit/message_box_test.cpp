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

namespace {

wxDialog* ModalDialog() {
  for (wxWindow* window : wxTopLevelWindows)
    if (auto* dialog = dynamic_cast<wxDialog*>(window); dialog != nullptr && dialog->IsModal()) return dialog;
  return nullptr;
}

template <typename Control>
std::vector<Control*> ChildrenOf(wxWindow& window) {
  std::vector<Control*> found;
  for (wxWindow* child : window.GetChildren())
    if (auto* control = dynamic_cast<Control*>(child)) found.push_back(control);
  return found;
}

// The captions in the order of the screen, the default one in brackets.
std::wstring ButtonsOf(wxDialog& dialog) {
  std::wstring text;
  for (const wxButton* button : ChildrenOf<wxButton>(dialog)) {
    const std::wstring caption = button->GetLabelText().ToStdWstring();
    text += (text.empty() ? L"" : L" ") + (button == dialog.GetDefaultItem() ? L"[" + caption + L"]" : caption);
  }
  return text;
}

// The one picture is that one of the system's; none for no name.
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
  // Shows the box and has the user do that once it is up.
  int Show(CQORPMessageBox& box, const std::function<void(wxDialog&)>& user) {
    box.Parent = Frame;
    Frame->CallAfter([&] {
      ASSERT_TRUE(PumpUntil([] { return ModalDialog() != nullptr && ModalDialog()->IsShownOnScreen(); }));
      user(*ModalDialog());
    });
    return box.ShowModal();
  }
};

TEST_F(MessageBoxTest, StyleAndKeysGiveButtonsAndAnswer) {
  struct Row {
    std::uint32_t Style;
    const wchar_t* Buttons;
    int Key;  // 0 closes the box
    int Answer;
    const char* Icon;
  };
  const Row rows[] = {
      {0x00, L"[OK]", WXK_ESCAPE, 1, ""},
      {0x10, L"[OK]", 0, 1, "wxART_ERROR"},
      {0x21, L"[OK] Cancel", WXK_ESCAPE, 2, "wxART_QUESTION"},
      {0x32, L"[Abort] Retry Ignore", 'I', 5, "wxART_WARNING"},
      {0x42, L"[Abort] Retry Ignore", 'a', 3, "wxART_INFORMATION"},
      {0x103, L"Yes [No] Cancel", 'N', 7, ""},
      {0x203, L"Yes No [Cancel]", 0, 2, ""},
      {0x04, L"[Yes] No", 'Y', 6, ""},
      {0x304, L"[Yes] No", 'n', 7, ""},
      {0x05, L"[Retry] Cancel", 'R', 4, ""},
      {0x06, L"[Cancel] Try Again Continue", 'T', 10, ""},
      {0x06, L"[Cancel] Try Again Continue", 'C', 11, ""},
      {0x70, L"[OK]", WXK_ESCAPE, 1, ""},
      {0x07, L"[OK]", WXK_ESCAPE, 1, ""},
      {0x100, L"[Left] Right & more", 'L', 1000, ""},
      {0x80140, L"[Left] Right & more", 'R', 1001, "wxART_INFORMATION"},
  };
  testing::internal::CaptureStderr();
  for (const Row& row : rows) {
    SCOPED_TRACE(row.Style);
    CQORPMessageBox box({.Caption = L"Trade Book", .Text = L"50 % & more", .Style = row.Style});
    box.ButtonCaptions = {L"&Left", L"&Right && more"};
    const int answer = Show(box, [&row](wxDialog& dialog) {
      EXPECT_EQ(ButtonsOf(dialog), row.Buttons);
      EXPECT_TRUE(HasIcon(dialog, row.Icon));
      EXPECT_EQ(ChildrenOf<wxStaticText>(dialog).front()->GetLabelText(), L"50 % & more");
      EXPECT_EQ(dialog.GetTitle(), L"Trade Book");
      EXPECT_EQ(dialog.GetLayoutDirection() == wxLayout_RightToLeft, (row.Style & 0x80000) != 0);
      if (row.Key == 0) {
        dialog.Close();
      } else {
        Press(dialog, row.Key);
      }
    });
    EXPECT_EQ(answer, row.Answer);
    EXPECT_FALSE(box.Checked);
  }
  const std::string printed = testing::internal::GetCapturedStderr();
  EXPECT_EQ(printed.find("CRITICAL"), std::string::npos) << printed;
}

TEST_F(MessageBoxTest, ABoxWithoutCancelWaitsForAButton) {
  for (const std::uint32_t style : {0x04U, 0x02U, 0x100U}) {
    SCOPED_TRACE(style);
    CQORPMessageBox box({.Text = L"Sure?", .Style = style, .ButtonCaptions = {L"One", L"Two"}});
    const int answer = Show(box, [](wxDialog& dialog) {
      Press(dialog, WXK_ESCAPE);
      dialog.Close();
      Pump();
      ASSERT_EQ(ModalDialog(), &dialog);
      wxButton* second = ChildrenOf<wxButton>(dialog)[1];
      wxCommandEvent event(wxEVT_BUTTON, second->GetId());
      event.SetEventObject(second);
      second->GetEventHandler()->ProcessEvent(event);
    });
    EXPECT_EQ(answer, style == 4 ? 7 : style == 2 ? 4 : 1001);
  }
}

TEST_F(MessageBoxTest, TheCheckBoxIsHandedBack) {
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

TEST_F(MessageBoxTest, TheFrameLendsItsIcon) {
  wxIcon icon;
  icon.CopyFromBitmap(wxArtProvider::GetBitmap("wxART_QUESTION", wxART_MESSAGE_BOX, {32, 32}));
  Frame->SetIcon(icon);
  CQORPMessageBox box({.Text = L"Sure?", .Style = 0x80});
  Show(box, [](wxDialog& dialog) {
    EXPECT_EQ(ChildrenOf<wxStaticBitmap>(dialog).size(), 1U);
    dialog.Close();
  });
}

TEST_F(MessageBoxTest, EnterAndArrowsMoveAmongTheButtons) {
  CQORPMessageBox box({.Text = L"Sure?", .Style = 0x103});
  const int answer = Show(box, [](wxDialog& dialog) {
    const std::vector<wxButton*> buttons = ChildrenOf<wxButton>(dialog);
    dialog.Raise();
    ASSERT_TRUE(PumpUntil([&] { return wxWindow::FindFocus() == buttons[1]; }));
    Press(dialog, WXK_RIGHT);
    Press(dialog, WXK_RIGHT);
    ASSERT_TRUE(PumpUntil([&] { return wxWindow::FindFocus() == buttons[0]; }));
    wxUIActionSimulator().Char(WXK_RETURN);
  });
  EXPECT_EQ(answer, 6);
}

TEST_F(MessageBoxTest, APopupTakesNoFocusAndGoesByItself) {
  ASSERT_TRUE(PumpUntil([this] { return Frame->IsActive(); }));
  auto* popup =
      new CQORPPopupWindow(Frame, L"Trade Book", L"0601TRD.txt Successfully exported..!!", {.AutoCloseMs = 50});
  auto* above = new CQORPPopupWindow(nullptr, L"", L"Second", {.AutoCloseMs = 60'000});
  wxWeakRef<wxWindow> first(popup), second(above);
  popup->ShowInCorner();
  above->ShowInCorner();
  EXPECT_GT(popup->GetRect().x, 1000);
  EXPECT_LE(above->GetRect().GetBottom(), popup->GetRect().y);
  ASSERT_TRUE(PumpUntil([&first] { return first == nullptr; }));
  EXPECT_TRUE(Frame->IsActive());
  Click(*above, wxPoint(2, 2));
  EXPECT_TRUE(PumpUntil([&second] { return second == nullptr; }));
}

}  // namespace
