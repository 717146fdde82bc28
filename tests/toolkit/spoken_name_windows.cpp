#include "tests/toolkit/gui_test.h"

// The system's own answer for a window without one: its text.
std::wstring SpokenName(wxWindow& window) {
  return window.GetLabel().ToStdWstring();
}
