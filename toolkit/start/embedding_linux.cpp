// Windows of GTK and the event queue of wxWidgets are sources of the GLib main context, so any loop of it serves them.
// One exception: at the end of a modal dialog, wxWidgets also quits the gtk_main around it and expects that its own
// loop restarts. Here that is the loop of the process, and the process would end with the dialog.
#include "toolkit/start/toolkit_start.h"

#include <dlfcn.h>
#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/init.h>
#include <wx/modalhook.h>

#include <memory>
#include <utility>

namespace {

// wxWidgets has loaded GTK; three functions do not need its headers.
template <typename Function>
Function* Gtk(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, name));
}

// Runs another gtk_main between that of the process and that of the dialog, which the dialog may quit.
class LoopShield : public wxModalDialogHook {
 protected:
  int Enter(wxDialog* dialog) override {
    if (std::exchange(Shielded, nullptr) == dialog) return wxID_NONE;
    Call call{this, dialog, wxID_CANCEL};
    Gtk<unsigned(unsigned, int (*)(void*), void*)>("g_timeout_add")(0, ShowShielded, &call);
    Gtk<void()>("gtk_main")();
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
    Gtk<void()>("gtk_main_quit")();  // a native dialog of GTK quits no loop
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
