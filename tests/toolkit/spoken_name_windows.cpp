// The system's header first.
#include <windows.h>

#include <oleacc.h>

#include "tests/toolkit/gui_test.h"

namespace {

using Getter = HRESULT (STDMETHODCALLTYPE IAccessible::*)(VARIANT, BSTR*);

// As a screen reader asks for it.
std::wstring TextOf(wxWindow& window, Getter getter) {
  IAccessible* accessible = nullptr;
  const HRESULT found =
      AccessibleObjectFromWindow(static_cast<HWND>(window.GetHandle()), static_cast<DWORD>(OBJID_CLIENT),
                                 IID_IAccessible, reinterpret_cast<void**>(&accessible));
  if (FAILED(found) || accessible == nullptr) return L"no accessibility";
  VARIANT self{};
  self.vt = VT_I4;
  self.lVal = CHILDID_SELF;
  BSTR text = nullptr;
  (accessible->*getter)(self, &text);
  accessible->Release();
  const std::wstring copy = text == nullptr ? std::wstring() : std::wstring(text, SysStringLen(text));
  SysFreeString(text);
  return copy;
}

}  // namespace

std::wstring SpokenName(wxWindow& window) {
  return TextOf(window, &IAccessible::get_accName);
}
std::wstring SpokenDescription(wxWindow& window) {
  return TextOf(window, &IAccessible::get_accDescription);
}
