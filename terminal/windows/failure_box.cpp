#include "terminal/windows/failure_box.h"

#include <iostream>
#include <utility>

#include "toolkit/message_box.h"

namespace {

constexpr std::uint32_t kIconStop = 0x10;
constexpr std::uint32_t kIconInformation = 0x40;

void Show(wxWindow* parent, const std::wstring& caption, const std::wstring& text, std::uint32_t style) {
  static bool isUp = false;
  if (std::exchange(isUp, true)) return;
  CQORPMessageBox box(
      {.Parent = parent, .Caption = caption, .Text = text, .Style = style, .ButtonCaptions = {}, .CheckCaption = {}});
  box.ShowModal();
  isUp = false;
}

}  // namespace

void ShowFailure(wxWindow* parent, const std::string& sentence) {
  std::cerr << "terminal: " << sentence << std::endl;
  Show(parent, L"Terminal", wxString::FromUTF8(sentence).ToStdWstring(), kIconStop);
}

void ShowMessage(wxWindow* parent, const std::wstring& caption, const std::wstring& text) {
  Show(parent, caption, text, kIconInformation);
}
