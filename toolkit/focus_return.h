// FocusReturn: gives the focus back to a window when what stood over it has gone. Window managers mostly give it to the
// main window then, and a floating bar would lose it. Used on the calling thread of the windows only.
#pragma once

#include <wx/toplevel.h>
#include <wx/weakref.h>

class FocusReturn {
 public:
  explicit FocusReturn(wxWindow& window) : Window(&window) {}
  ~FocusReturn() {
    if (!Window || !Window->IsShownOnScreen()) return;
    wxGetTopLevelParent(Window)->Raise();
    Window->SetFocus();
  }
  FocusReturn(const FocusReturn&) = delete;
  FocusReturn& operator=(const FocusReturn&) = delete;

 private:
  wxWeakRef<wxWindow> Window;
};
