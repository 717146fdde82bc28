#include <dlfcn.h>
#include <wx/listbox.h>

#include "tests/toolkit/gui_test.h"

namespace {

std::wstring TextOf(wxWindow& window, const char* function) {
  const auto accessibleOf = reinterpret_cast<void* (*)(void*)>(dlsym(RTLD_DEFAULT, "gtk_widget_get_accessible"));
  const auto textOf = reinterpret_cast<const char* (*)(void*)>(dlsym(RTLD_DEFAULT, function));
  if (accessibleOf == nullptr || textOf == nullptr) return L"no accessibility";
  void* widget = window.GetHandle();
  if (const auto* list = dynamic_cast<wxListBox*>(&window)) widget = list->m_treeview;  // its part that gets the focus
  const char* text = textOf(accessibleOf(widget));
  return text == nullptr ? std::wstring() : wxString::FromUTF8(text).ToStdWstring();
}

}  // namespace

std::wstring SpokenName(wxWindow& window) {
  return TextOf(window, "atk_object_get_name");
}
std::wstring SpokenDescription(wxWindow& window) {
  return TextOf(window, "atk_object_get_description");
}
