#include "toolkit/accessible_name.h"

// The system reads it from the window's own text.
void SetAccessibleName(wxWindow& window, const std::wstring& name) {
  window.SetLabel(name);
}
