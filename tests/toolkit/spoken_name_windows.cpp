#include <wx/access.h>

#include "tests/toolkit/gui_test.h"

namespace {

// What the window answers itself; empty if it leaves the answer to the system.
std::wstring OwnAnswer(wxWindow& window, wxAccStatus (wxAccessible::*question)(int, wxString*)) {
  wxString answer;
  wxAccessible* accessible = window.GetAccessible();
  if (accessible == nullptr || (accessible->*question)(wxACC_SELF, &answer) != wxACC_OK) return {};
  return answer.ToStdWstring();
}

}  // namespace

// The system's own answer is the text of the window.
std::wstring SpokenName(wxWindow& window) {
  const std::wstring own = OwnAnswer(window, &wxAccessible::GetName);
  return own.empty() ? window.GetLabel().ToStdWstring() : own;
}
std::wstring SpokenDescription(wxWindow& window) {
  return OwnAnswer(window, &wxAccessible::GetDescription);
}
