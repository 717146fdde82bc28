// WindowBoxes: shows the message boxes that the plug-in's function table asks for.
#pragma once

#include <string>

#include "host_link/host_functions/function_table.h"
#include "toolkit/dialogs/message_box.h"

class WindowBoxes : public MessageBoxes {
 public:
  // The id of the button, as CQORPMessageBox tells them; 0, with nothing shown, without a display. A parent that is no
  // window of the toolkit counts as none.
  int Show(const Request& request) override;
};

// CQORPMessageBoxXML: the message box as this system shows it.
class CQORPMessageBoxXML : public CQORPMessageBox {
 public:
  using CQORPMessageBox::CQORPMessageBox;
  bool PreTranslateMessage(const CQORPMessage& message) override;
};

// ShowPopupMessage: says one thing in the corner of the screen.

// Text of the system code page. Returns at once; the popup goes by itself. Nothing without a display.
void ShowPopupMessage(std::string text);
