#include "terminal/windows/frame/window_tools.h"

#include <wx/defs.h>

std::wstring Wide(const std::string& text) {
  return wxString::FromUTF8(text).ToStdWstring();
}

namespace {

struct CodePair {
  std::uint8_t Code;
  int WxCode;
};
constexpr CodePair kCodes[] = {
    {0x08, WXK_BACK},  {0x09, WXK_TAB},    {0x0D, WXK_RETURN},   {0x1B, WXK_ESCAPE},
    {0x20, WXK_SPACE}, {0x21, WXK_PAGEUP}, {0x22, WXK_PAGEDOWN}, {0x23, WXK_END},
    {0x24, WXK_HOME},  {0x25, WXK_LEFT},   {0x26, WXK_UP},       {0x27, WXK_RIGHT},
    {0x28, WXK_DOWN},  {0x2D, WXK_INSERT}, {0x2E, WXK_DELETE},   {0x5D, WXK_WINDOWS_MENU},
};
constexpr std::uint8_t kFirstFunctionKey = 0x70;
constexpr std::uint8_t kLastFunctionKey = 0x7B;

}  // namespace

int WxKeyCode(const KeyPress& key) {
  if (key.Code >= kFirstFunctionKey && key.Code <= kLastFunctionKey) return WXK_F1 + key.Code - kFirstFunctionKey;
  if ((key.Code >= 'A' && key.Code <= 'Z') || (key.Code >= '0' && key.Code <= '9')) return key.Code;
  for (const CodePair& pair : kCodes)
    if (pair.Code == key.Code) return pair.WxCode;
  return 0;
}

int WxHeldKeys(const KeyPress& key) {
  static_assert(int{wxACCEL_ALT} == wxMOD_ALT && int{wxACCEL_CTRL} == wxMOD_CONTROL &&
                int{wxACCEL_SHIFT} == wxMOD_SHIFT);
  return (key.Ctrl ? wxACCEL_CTRL : 0) | (key.Shift ? wxACCEL_SHIFT : 0) | (key.Alt ? wxACCEL_ALT : 0);
}
