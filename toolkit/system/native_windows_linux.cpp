#include "toolkit/system/native_windows.h"

#include <dlfcn.h>

namespace {

// wxWidgets has loaded GTK; a few functions do not need its headers.
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

// The focused widget is inside the one that wxWidgets returns as the handle of the list.
void SetListName(wxListBox& list, const std::wstring& name) {
  static const auto accessibleOf = LoadedFunction<void*(void*)>("gtk_widget_get_accessible");
  static const auto setName = LoadedFunction<void(void*, const char*)>("atk_object_set_name");
  if (accessibleOf == nullptr || setName == nullptr) return;
  if (void* accessible = accessibleOf(list.m_treeview); accessible != nullptr)
    setName(accessible, wxString(name).utf8_str());
}

void SetAccessibleName(wxWindow& window, const std::wstring& name) {
  static const auto accessibleOf = LoadedFunction<void*(void*)>("gtk_widget_get_accessible");
  static const auto setName = LoadedFunction<void(void*, const char*)>("atk_object_set_name");
  if (accessibleOf == nullptr || setName == nullptr || window.GetHandle() == nullptr) return;
  if (void* accessible = accessibleOf(window.GetHandle()); accessible != nullptr)
    setName(accessible, wxString(name).utf8_str());
}

// Some programs read HTML without a charset as Latin-1. wxGTK 3.2: wxHTMLDataObject writes one byte past the end, so
// this is a custom object with the same format; drop when 3.4 is the floor.
std::unique_ptr<wxDataObjectSimple> HtmlForClipboard(const std::string& html) {
  const std::string told = "<meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\">" + html;
  auto data = std::make_unique<wxCustomDataObject>(wxDataFormat(wxDF_HTML));
  data->SetData(told.size(), told.data());
  return data;
}

// The clipboard manager of the desktop does this, if one runs. Flushing would process events during a copy.
void KeepClipboardAfterEnd() {}
