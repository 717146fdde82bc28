#include "toolkit/dialogs/message_box.h"

#include <wx/artprov.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/dialog.h>
#include <wx/display.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/statline.h>
#include <wx/stattext.h>

#include <cwctype>

#include "toolkit/model/dialog_parts.h"
#include "toolkit/start/toolkit_start.h"
#include "toolkit/system/make_child.h"

namespace {

constexpr std::uint32_t kIconBits = 0xF0;
constexpr std::uint32_t kFrameIcon = 0x80;
constexpr std::uint32_t kRightToLeft = 0x80000;
constexpr std::uint32_t kKeyDown = 0x100;
constexpr int kBoxMarginPx = 12;
constexpr int kTextWidthPx = 480;

struct IconRow {
  std::uint32_t Bits;
  const char* Art;
};
constexpr IconRow kIcons[] = {
    {0x10, "wxART_ERROR"},
    {0x20, "wxART_QUESTION"},
    {0x30, "wxART_WARNING"},
    {0x40, "wxART_INFORMATION"},
};

class MessageDialog : public wxDialog {
 public:
  MessageDialog(CQORPMessageBox& box, MessageButtons buttons);
  bool IsChecked() const { return Check != nullptr && Check->GetValue(); }

 private:
  wxSizer* MakeMessage(const CQORPMessageBox& box);
  wxSizer* MakeButtons();
  wxBitmap IconOf(const CQORPMessageBox& box) const;
  void OnKey(wxKeyEvent& event);
  bool PressLetter(int letter);
  void MoveFocus(int by);
  void OnClose(wxCloseEvent& event);

  CQORPMessageBox& Box;
  MessageButtons Shown;
  std::vector<wxButton*> Buttons;
  wxCheckBox* Check = nullptr;
};

long WindowStyle(const MessageButtons& buttons) {
  return buttons.CloseId == 0 ? wxCAPTION : wxCAPTION | wxSYSTEM_MENU | wxCLOSE_BOX;
}

MessageDialog::MessageDialog(CQORPMessageBox& box, MessageButtons buttons) : Box(box), Shown(std::move(buttons)) {
  wxDialog::Create(GetParentForModalDialog(box.Parent, 0), wxID_ANY, box.Caption, wxDefaultPosition, wxDefaultSize,
                   WindowStyle(Shown));
  if ((box.Style & kRightToLeft) != 0) SetLayoutDirection(wxLayout_RightToLeft);
  SetEscapeId(wxID_NONE);
  SetSizer(&MakeChild<wxBoxSizer>(wxVERTICAL));
  GetSizer()->Add(MakeMessage(box), wxSizerFlags(1).Expand().Border(wxALL, kBoxMarginPx));
  if (box.WithCheck) {
    Check = &MakeChild<wxCheckBox>(this, wxID_ANY, box.CheckCaption);
    Check->SetValue(box.Checked);
    GetSizer()->Add(Check, wxSizerFlags().Border(wxLEFT | wxRIGHT | wxBOTTOM, kBoxMarginPx));
  }
  GetSizer()->Add(MakeButtons(), wxSizerFlags().Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, kBoxMarginPx));
  GetSizer()->SetSizeHints(this);
  CentreOnParent();
  Bind(wxEVT_CHAR_HOOK, &MessageDialog::OnKey, this);
  Bind(wxEVT_CLOSE_WINDOW, &MessageDialog::OnClose, this);
  Buttons[Shown.Default]->SetDefault();
  Buttons[Shown.Default]->SetFocus();
}

wxSizer* MessageDialog::MakeMessage(const CQORPMessageBox& box) {
  wxSizer& row = MakeChild<wxBoxSizer>(wxHORIZONTAL);
  if (const wxBitmap icon = IconOf(box); icon.IsOk())
    row.Add(&MakeChild<wxStaticBitmap>(this, wxID_ANY, icon), wxSizerFlags().Border(wxRIGHT, kBoxMarginPx));
  wxStaticText& text = MakeChild<wxStaticText>(this, wxID_ANY, wxString());
  text.SetLabelText(box.Text);
  text.Wrap(FromDIP(kTextWidthPx));
  row.Add(&text, wxSizerFlags(1).Centre());
  return &row;
}

wxSizer* MessageDialog::MakeButtons() {
  wxSizer& row = MakeChild<wxBoxSizer>(wxHORIZONTAL);
  for (const MessageButton& shown : Shown.Buttons) {
    wxButton& button = MakeChild<wxButton>(this, wxID_ANY, shown.Caption);
    button.Bind(wxEVT_BUTTON, [this, id = shown.Id](wxCommandEvent&) { EndModal(id); });
    row.Add(&button, wxSizerFlags().Border(wxLEFT, Buttons.empty() ? 0 : kBoxMarginPx / 2));
    Buttons.push_back(&button);
  }
  return &row;
}

wxBitmap MessageDialog::IconOf(const CQORPMessageBox& box) const {
  const std::uint32_t bits = box.Style & kIconBits;
  for (const IconRow& row : kIcons)
    if (row.Bits == bits) return wxArtProvider::GetBitmap(row.Art, wxART_MESSAGE_BOX);
  if (bits != kFrameIcon) return {};
  const auto* frame = dynamic_cast<wxTopLevelWindow*>(wxGetTopLevelParent(GetParent()));
  if (frame == nullptr || !frame->GetIcons().GetIcon(32).IsOk()) return {};
  return frame->GetIcons().GetIcon(32);
}

void MessageDialog::OnKey(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  if (Box.PreTranslateMessage({kKeyDown, key})) return;
  if (key == WXK_ESCAPE) {
    Close();
  } else if (key == WXK_LEFT || key == WXK_UP) {
    MoveFocus(-1);
  } else if (key == WXK_RIGHT || key == WXK_DOWN) {
    MoveFocus(1);
  } else if (event.ControlDown() || !PressLetter(event.GetUnicodeKey())) {
    event.Skip();
  }
}

// As in the box of Windows, the letter works without Alt.
bool MessageDialog::PressLetter(int letter) {
  for (const MessageButton& shown : Shown.Buttons) {
    const std::size_t mark = shown.Caption.find(L'&');
    if (mark == std::wstring::npos || mark + 1 >= shown.Caption.size() || letter == WXK_NONE) continue;
    if (std::towupper(static_cast<std::wint_t>(letter)) !=
        std::towupper(static_cast<std::wint_t>(shown.Caption[mark + 1])))
      continue;
    EndModal(shown.Id);
    return true;
  }
  return false;
}

void MessageDialog::MoveFocus(int by) {
  const int count = static_cast<int>(Buttons.size());
  for (int i = 0; i < count; ++i)
    if (Buttons[static_cast<std::size_t>(i)]->HasFocus())
      return Buttons[static_cast<std::size_t>((i + by + count) % count)]->SetFocus();
  Buttons[Shown.Default]->SetFocus();
}

void MessageDialog::OnClose(wxCloseEvent& event) {
  if (Shown.CloseId == 0) return event.Veto();
  EndModal(Shown.CloseId);
}

}  // namespace

CQORPMessageBox::~CQORPMessageBox() = default;

bool CQORPMessageBox::PreTranslateMessage(const CQORPMessage& /*message*/) {
  return false;
}

void CQORPMessageBox::CloseWindow() {
  if (Window) Window->Iconize();
}

int CQORPMessageBox::ShowModal() {
  if (!StartToolkit()) return 0;
  MessageDialog dialog(*this, ButtonsOfStyle(Style, ButtonCaptions));
  Window = &dialog;
  const int result = dialog.ShowModal();
  Checked = dialog.IsChecked();
  return result;
}

int QORPMessageBoxIndirect(CQORPMessageBox& box) {
  box.WithCheck = true;
  return box.ShowModal();
}
