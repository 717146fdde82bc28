// WindowBoxes: shows the message boxes of the plug-in's function table.
#pragma once

#include <string>

#include "host_link/host_functions/function_table.h"
#include "toolkit/dialogs/message_box.h"

class WindowBoxes : public MessageBoxes {
 public:
  // Returns the id of the button as CQORPMessageBox does; 0 without a display. A parent that is no window of the
  // toolkit counts as none.
  int Show(const Request& request) override;
};

// CQORPMessageBoxXML: the message box of this system.
class CQORPMessageBoxXML : public CQORPMessageBox {
 public:
  using CQORPMessageBox::CQORPMessageBox;
  bool PreTranslateMessage(const CQORPMessage& message) override;
};

// Shows a text, in the system code page, in the corner of the screen. Returns at once; the popup closes itself. A no-op
// without a display.
void ShowPopupMessage(std::string text);
