// GTK's windows and wxWidgets' own queue are sources of the GLib main context: whatever loop runs that serves them. One
// thing does not fit: with the end of a modal dialog wxWidgets ends the gtk_main around it as well, which it takes for
// a loop of its own that starts again. Around ours there is the process's, and the process would end with the dialog.
#include "toolkit/start/toolkit_start.h"

#include <dlfcn.h>
#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/init.h>
#include <wx/modalhook.h>

#include <memory>
#include <utility>

namespace {

// wxWidgets has loaded GTK; its headers are not needed for three functions.
template <typename Function>
Function* Gtk(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, name));
}

// Puts one more gtk_main between the process's and the dialog's, for the dialog to end.
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
    Gtk<void()>("gtk_main_quit")();  // a dialog of GTK's own ended no loop
    return 0;
  }
  wxDialog* Shielded = nullptr;  // the one that is about to show behind the shield
};

// A plain pointer: at the end of a process that did not stop the toolkit nothing is to be torn down any more.
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
