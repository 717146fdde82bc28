#include "toolkit/native_list.h"

#include <dlfcn.h>

namespace {

// wxWidgets has loaded GTK; its headers are not needed for a few functions.
template <typename Function>
Function* LoadedFunction(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, name));
}

}  // namespace

void MoveListCursor(wxListBox& list, int item) {
  static const auto newPath = LoadedFunction<void*(const char*)>("gtk_tree_path_new_from_string");
  static const auto freePath = LoadedFunction<void(void*)>("gtk_tree_path_free");
  static const auto setCursor = LoadedFunction<void(void*, void*, void*, int)>("gtk_tree_view_set_cursor");
  if (newPath == nullptr || freePath == nullptr || setCursor == nullptr) return;
  void* path = newPath(std::to_string(item).c_str());
  setCursor(list.m_treeview, path, nullptr, 0);
  freePath(path);
}

// The widget with the focus lies within the one that wxWidgets calls the list's.
void SetListName(wxListBox& list, const std::wstring& name) {
  static const auto accessibleOf = LoadedFunction<void*(void*)>("gtk_widget_get_accessible");
  static const auto setName = LoadedFunction<void(void*, const char*)>("atk_object_set_name");
  if (accessibleOf == nullptr || setName == nullptr) return;
  if (void* accessible = accessibleOf(list.m_treeview); accessible != nullptr)
    setName(accessible, wxString(name).utf8_str());
}
