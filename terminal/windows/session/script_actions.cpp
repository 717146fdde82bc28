#include "terminal/windows/session/script_actions.h"

#include <wx/statusbr.h>
#include <wx/uiaction.h>

#include "terminal/windows/drivers/screen_picture.h"
#include "terminal/windows/frame/window_tools.h"

CQORPDockingControlBar* ScriptActions::BarFor(ScriptFocus where) const {
  switch (where) {
    case ScriptFocus::MarketWatch:
      return &Windows.Watch();
    case ScriptFocus::Book:
      return Books.Current();
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
