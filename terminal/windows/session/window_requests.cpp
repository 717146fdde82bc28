#include "terminal/windows/session/window_requests.h"

#include <wx/statusbr.h>
#include <wx/uiaction.h>

#include "terminal/windows/drivers/screen_picture.h"
#include "terminal/windows/frame/window_tools.h"

void PluginRequests::TellSelection(std::uint64_t window, MessageFunction answer) {
  if (Windows.Frame() == nullptr) return;
  for (const CQORPDockingControlBar* bar : Windows.Frame()->GetDockingManager().Bars()) {
    if (reinterpret_cast<std::uint64_t>(bar) != window) continue;
    if (Books.Has(*bar)) return Connection.Plugin->AskSelection(window, answer);
    const auto [exchange, securityId] = SelectionOf(*bar);
    return AnswerSelection(answer, exchange, securityId, Connection.Log);
  }
}

// Exchange and id; empty without a current row. Bars without securities answer for the market watch.
std::pair<std::string, std::string> PluginRequests::SelectionOf(const CQORPDockingControlBar& bar) const {
  if (&bar == &Windows.Positions()) {
    const LedgerSecurity* security = Windows.Positions().Grid().Selected();
    return security == nullptr ? std::pair<std::string, std::string>()
                               : std::pair(security->Exchange, security->SecurityID);
  }
  const WatchRow* row = Windows.Watch().Grid().Selected();
  return row == nullptr ? std::pair<std::string, std::string>() : std::pair(row->Exchange, row->SecurityID);
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

CQORPDockingControlBar* ScriptActions::BarFor(ScriptFocus where) const {
  switch (where) {
    case ScriptFocus::MarketWatch:
      return &Windows.Watch();
    case ScriptFocus::Positions:
      return &Windows.Positions();
    case ScriptFocus::Book:
      return Books.Current();
    case ScriptFocus::Chart:
      return &Windows.Chart();
    case ScriptFocus::None:
      break;
  }
  return nullptr;
}

bool ScriptActions::Focus(ScriptFocus where, const std::string& title) {
  CQORPDockingControlBar* bar = title.empty() ? BarFor(where) : Books.Titled(title);
  if (bar == nullptr && where != ScriptFocus::None) return false;
  if (where == ScriptFocus::Book) Books.MakeCurrent(bar);
  if (bar != nullptr) bar->ShowControlBar(true);
  wxFrame* mini = bar == nullptr ? nullptr : bar->GetParentMiniFrame();
  (mini == nullptr ? Windows.Frame() : mini)->Raise();
  if (bar == nullptr)
    Windows.Frame()->GetStatusBar()->SetFocus();
  else
    bar->SetFocus();
  return true;
}

bool ScriptActions::HasFocus(ScriptFocus where) {
  return Windows.Frame()->GetDockingManager().BarOf(wxWindow::FindFocus()) == BarFor(where);
}

bool ScriptActions::Press(const KeyPress& key) {
  const int code = WxKeyCode(key);
  return code != 0 && wxUIActionSimulator().Char(code, WxHeldKeys(key));
}

void ScriptActions::SavePictureTo(const std::filesystem::path& file) {
  SavePicture(*Windows.Frame(), file);
}
