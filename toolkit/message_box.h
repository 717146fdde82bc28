// CQORPMessageBox: a modal message box with the buttons and icons of a style, and a check box where one is asked for.
// It looks and answers the same on each platform. Used on the calling thread of the windows only.
#pragma once

#include <wx/window.h>

#include <array>
#include <cstdint>
#include <string>

#include "toolkit/toolkit_export.h"

// Style bits as those of the system's message box: buttons 0 to 6, icons 0x10 to 0x40, 0x80 the icon of the frame,
// 0x80000 right to left. 0x100 (256) with buttons 0 gives two buttons of one's own with ids 1000 and 1001; with other
// buttons 0x100 to 0x300 make the second to the fourth the one that Enter presses.
struct CQORPMessageBox {
  wxWindow* Parent = nullptr;
  std::wstring Caption{};
  std::wstring Text{};
  std::uint32_t Style = 0;
  std::array<std::wstring, 2> ButtonCaptions{};
  bool WithCheck = false;
  bool Checked = false;  // afterwards as the user left it
  std::wstring CheckCaption{};

  // The id of the button: 1 OK, 2 Cancel, 3 Abort, 4 Retry, 5 Ignore, 6 Yes, 7 No, 10 Try Again, 11 Continue, 1000 and
  // 1001. Closing the box, and Escape, answer as Cancel where there is such a button, else as the only one; a box of
  // several buttons without Cancel cannot be closed. 0, with nothing shown, where there is no display.
  TOOLKIT_EXPORT int ShowModal();
};
