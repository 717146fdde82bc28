// WindowBoxes: shows the message boxes that the plug-in's function table asks for. Used on the terminal's calling
// thread only.
#pragma once

#include "host_link/function_table.h"

class WindowBoxes : public MessageBoxes {
 public:
  // The id of the button, as CQORPMessageBox tells them; 0, with nothing shown, without a display. A parent that is no
  // window of the toolkit counts as none.
  int Show(const Request& request) override;
};
