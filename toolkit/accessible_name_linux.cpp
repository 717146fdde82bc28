#include "toolkit/accessible_name.h"

#include <dlfcn.h>

namespace {

// wxWidgets has loaded GTK; its headers are not needed for two functions.
template <typename Function>
Function* LoadedFunction(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, name));
}

}  // namespace

void SetAccessibleName(wxWindow& window, const std::wstring& name) {
  static const auto accessibleOf = LoadedFunction<void*(void*)>("gtk_widget_get_accessible");
  static const auto setName = LoadedFunction<void(void*, const char*)>("atk_object_set_name");
  if (accessibleOf == nullptr || setName == nullptr || window.GetHandle() == nullptr) return;
  if (void* accessible = accessibleOf(window.GetHandle()); accessible != nullptr)
    setName(accessible, wxString(name).utf8_str());
}
