#include "grid_base/message_box_xml.h"

// The number, not the key code, and so it never is Escape, which the toolkit handles: meant so.
bool CQORPMessageBoxXML::PreTranslateMessage(const CQORPMessage& message) {
  if (message.Number == 27) CloseWindow();
  return CQORPMessageBox::PreTranslateMessage(message);
}
