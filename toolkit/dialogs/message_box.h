// CQORPMessageBox: a modal message box with buttons and icon by a style, and an optional check box. It is the same on
// each platform.
#pragma once

#include <wx/toplevel.h>
#include <wx/weakref.h>

#include <array>
#include <cstdint>
#include <string>
#include <utility>

#include "toolkit/system/toolkit_export.h"

// Style bits are those of the message box of Windows: buttons 0 to 6, icons 0x10 to 0x40, 0x80 the icon of the frame,
// 0x80000 right to left. 0x100 (256) with buttons 0 makes two custom buttons with ids 1000 and 1001; with other
// buttons, 0x100 to 0x300 make the second to the fourth the default button.
struct CQORPMessageBoxParams {
  wxWindow* Parent = nullptr;
  std::wstring Caption{};
  std::wstring Text{};
  std::uint32_t Style = 0;
  std::array<std::wstring, 2> ButtonCaptions{};
  bool WithCheck = false;
  bool Checked = false;  // in and out
  std::wstring CheckCaption{};
};

// A message to the box: its number, and the code of a key. A key press has the number 0x100.
struct CQORPMessage {
  std::uint32_t Number = 0;
  int KeyCode = 0;
};

class TOOLKIT_EXPORT CQORPMessageBox : public CQORPMessageBoxParams {
 public:
  CQORPMessageBox() = default;
  explicit CQORPMessageBox(CQORPMessageBoxParams params) : CQORPMessageBoxParams(std::move(params)) {}
  virtual ~CQORPMessageBox();

  // Returns the id of the button: 1 OK, 2 Cancel, 3 Abort, 4 Retry, 5 Ignore, 6 Yes, 7 No, 10 Try Again, 11 Continue,
  // 1000 and 1001. Closing the box and Escape return Cancel if there is such a button, otherwise the only button; a box
  // of several buttons without Cancel cannot be closed. Returns 0 without a display.
  int ShowModal();

  // Gets each key before the box; true consumes it.
  virtual bool PreTranslateMessage(const CQORPMessage& message);

 protected:
  // Minimises the window of the box, as the function of Windows does. A no-op if the box is not shown.
  virtual void CloseWindow();

 private:
  wxWeakRef<wxTopLevelWindow> Window;
};

// Shows the box with a check box, also if WithCheck is false.
TOOLKIT_EXPORT int QORPMessageBoxIndirect(CQORPMessageBox& box);
