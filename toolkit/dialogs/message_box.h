// CQORPMessageBox: a modal message box with the buttons and icons of a style, and a check box where one is asked for.
// It looks and answers the same on each platform.
#pragma once

#include <wx/toplevel.h>
#include <wx/weakref.h>

#include <array>
#include <cstdint>
#include <string>
#include <utility>

#include "toolkit/system/toolkit_export.h"

// Style bits as those of the system's message box: buttons 0 to 6, icons 0x10 to 0x40, 0x80 the icon of the frame,
// 0x80000 right to left. 0x100 (256) with buttons 0 gives two buttons of one's own with ids 1000 and 1001; with other
// buttons 0x100 to 0x300 make the second to the fourth the one that Enter presses.
struct CQORPMessageBoxParams {
  wxWindow* Parent = nullptr;
  std::wstring Caption{};
  std::wstring Text{};
  std::uint32_t Style = 0;
  std::array<std::wstring, 2> ButtonCaptions{};
  bool WithCheck = false;
  bool Checked = false;  // afterwards as the user left it
  std::wstring CheckCaption{};
};

// A message on its way to the box: its number, and of a key its code. A key that goes down has the number 0x100.
struct CQORPMessage {
  std::uint32_t Number = 0;
  int KeyCode = 0;
};

class TOOLKIT_EXPORT CQORPMessageBox : public CQORPMessageBoxParams {
 public:
  CQORPMessageBox() = default;
  explicit CQORPMessageBox(CQORPMessageBoxParams params) : CQORPMessageBoxParams(std::move(params)) {}
  virtual ~CQORPMessageBox();

  // The id of the button: 1 OK, 2 Cancel, 3 Abort, 4 Retry, 5 Ignore, 6 Yes, 7 No, 10 Try Again, 11 Continue, 1000 and
  // 1001. Closing the box, and Escape, answer as Cancel where there is such a button, else as the only one; a box of
  // several buttons without Cancel cannot be closed. 0, with nothing shown, where there is no display.
  int ShowModal();

  // Sees each key before the box does; true swallows it.
  virtual bool PreTranslateMessage(const CQORPMessage& message);

 protected:
  // Minimises the box's window, as the system's function of that name does. Nothing while the box is not up.
  virtual void CloseWindow();

 private:
  wxWeakRef<wxTopLevelWindow> Window;
};

// Shows the box with its check box, whatever WithCheck says.
TOOLKIT_EXPORT int QORPMessageBoxIndirect(CQORPMessageBox& box);
