#include <dlfcn.h>
#include <wx/listbox.h>

#include "tests/toolkit/gui_test.h"

std::wstring SpokenName(wxWindow& window) {
  const auto accessibleOf = reinterpret_cast<void* (*)(void*)>(dlsym(RTLD_DEFAULT, "gtk_widget_get_accessible"));
  const auto nameOf = reinterpret_cast<const char* (*)(void*)>(dlsym(RTLD_DEFAULT, "atk_object_get_name"));
  if (accessibleOf == nullptr || nameOf == nullptr) return L"no accessibility";
  void* widget = window.GetHandle();
  if (const auto* list = dynamic_cast<wxListBox*>(&window)) widget = list->m_treeview;  // its part that gets the focus
  const char* name = nameOf(accessibleOf(widget));
  return name == nullptr ? std::wstring() : wxString::FromUTF8(name).ToStdWstring();
}
