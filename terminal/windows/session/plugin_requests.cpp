#include "terminal/windows/session/plugin_requests.h"

void PluginRequests::TellSelection(std::uint64_t window, MessageFunction answer) {
  if (Windows.Frame() == nullptr) return;
  for (const CQORPDockingControlBar* bar : Windows.Frame()->GetDockingManager().Bars()) {
    if (reinterpret_cast<std::uint64_t>(bar) != window) continue;
    if (Books.Has(*bar)) return Connection.Plugin->AskSelection(window, answer);
    const WatchRow* row = Windows.Watch().Grid().Selected();
    return AnswerSelection(answer, row == nullptr ? "" : row->Exchange, row == nullptr ? "" : row->SecurityID,
                           Connection.Log);
  }
}

// Deferred: a bar that closes gives the focus to another window later.
void PluginRequests::FocusMoved(const void* window, bool closed) {
  if (closed) Books.NoteClosed(window);
  if (Windows.Frame() != nullptr) Windows.Frame()->CallAfter(Changed);
  if (closed && Windows.Properties() != nullptr) Windows.Properties()->FollowBook();
}

void PluginRequests::ShowProperties(const PropertyRequest& request) {
  if (Windows.Properties() != nullptr) Windows.Properties()->Fill(request, *Connection.Plugin);
}

void PluginRequests::PropertiesFilled() {
  if (Windows.Properties() == nullptr) return;
  Windows.Properties()->ShowFilled();
  Changed();
}
