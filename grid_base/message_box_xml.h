// CQORPMessageBoxXML: the message box as this system shows it. Used on the calling thread of the windows only.
#pragma once

#include "toolkit/message_box.h"

class CQORPMessageBoxXML : public CQORPMessageBox {
 public:
  using CQORPMessageBox::CQORPMessageBox;
  bool PreTranslateMessage(const CQORPMessage& message) override;
};
