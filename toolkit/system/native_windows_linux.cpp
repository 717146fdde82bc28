#include "toolkit/system/native_windows.h"

#include <dlfcn.h>
#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/init.h>
#include <wx/modalhook.h>

#include <utility>

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

namespace {

// Calls a function of ATK that gives the widget a text.
void GiveText(void* widget, const char* function, const std::wstring& text) {
  static const auto accessibleOf = LoadedFunction<void*(void*)>("gtk_widget_get_accessible");
  const auto give = LoadedFunction<void(void*, const char*)>(function);
  if (accessibleOf == nullptr || give == nullptr || widget == nullptr) return;
  if (void* accessible = accessibleOf(widget); accessible != nullptr) give(accessible, wxString(text).utf8_str());
}

}  // namespace

// The focused widget is inside the one that wxWidgets returns as the handle of the list.
void SetListName(wxListBox& list, const std::wstring& name) {
  GiveText(list.m_treeview, "atk_object_set_name", name);
}

void SetAccessibleName(wxWindow& window, const std::wstring& name) {
  GiveText(window.GetHandle(), "atk_object_set_name", name);
}

// ATK reports the change.
void SetAccessibleDescription(wxWindow& window, const std::wstring& description) {
  GiveText(window.GetHandle(), "atk_object_set_description", description);
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

namespace {

// Windows of GTK and the event queue of wxWidgets are sources of the GLib main context, so any loop of it serves them.
// One exception: at the end of a modal dialog, wxWidgets also quits the gtk_main around it and expects that its own
// loop restarts. Here that is the loop of the process, and the process would end with the dialog.
//
// Runs another gtk_main between that of the process and that of the dialog, which the dialog may quit.
class LoopShield : public wxModalDialogHook {
 protected:
  int Enter(wxDialog* dialog) override {
    if (std::exchange(Shielded, nullptr) == dialog) return wxID_NONE;
    Call call{this, dialog, wxID_CANCEL};
    LoadedFunction<unsigned(unsigned, int (*)(void*), void*)>("g_timeout_add")(0, ShowShielded, &call);
    LoadedFunction<void()>("gtk_main")();
    return call.Result;
  }

 private:
  struct Call {
    LoopShield* Shield;
    wxDialog* Dialog;
    int Result;
  };
  static int ShowShielded(void* pointer) {
    Call& call = *static_cast<Call*>(pointer);
    call.Shield->Shielded = call.Dialog;
    call.Result = call.Dialog->ShowModal();
    LoadedFunction<void()>("gtk_main_quit")();  // a native dialog of GTK quits no loop
    return 0;
  }
  wxDialog* Shielded = nullptr;  // is about to be shown inside the extra loop
};

// Intentional: leaked if the process ends without StopToolkit, as wxWidgets is no longer usable then.
LoopShield* shield = nullptr;

}  // namespace

bool StartEmbedding() {
  int argumentCount = 0;
  char** noArguments = nullptr;
  if (!wxEntryStart(argumentCount, noArguments)) return false;
  shield = std::make_unique<LoopShield>().release();
  shield->Register();
  return true;
}

void StopEmbedding() {
  std::unique_ptr<LoopShield>(std::exchange(shield, nullptr))->Unregister();
  wxEntryCleanup();
}
