#include "toolkit/grid/edit_field.h"

#include <string_view>

namespace {
constexpr std::wstring_view kFieldKeys = L"ACVXYZ";
}  // namespace

void KeepInField(wxEvent& event) {
  event.StopPropagation();
  event.Skip();
}

bool IsForField(const wxKeyEvent& event) {
  if (!event.ControlDown()) return true;
  const int key = event.GetKeyCode();
  return key >= WXK_START || key < WXK_SPACE || key == WXK_DELETE ||
         kFieldKeys.find(static_cast<wchar_t>(key)) != std::wstring_view::npos;
}

// Ctrl and Alt type characters on many keyboards.
bool IsForProgram(const wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  return (event.AltDown() && !event.ControlDown()) || (key >= WXK_F1 && key <= WXK_F24);
}
