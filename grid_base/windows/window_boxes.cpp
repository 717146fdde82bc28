#include "grid_base/windows/window_boxes.h"

#include <wx/toplevel.h>
#include <wx/utils.h>

#include <utility>

#include "foundations/text_tools.h"
#include "toolkit/dialogs/popups.h"
#include "toolkit/start/toolkit_start.h"

namespace {

// The pointer may be any window of the terminal, so it is compared, but never dereferenced.
wxWindow* FindWithin(const wxWindowList& windows, const void* wanted) {
  for (wxWindow* window : windows) {
    if (window == wanted) return window;
    if (wxWindow* found = FindWithin(window->GetChildren(), wanted)) return found;
  }
  return nullptr;
}

}  // namespace

int WindowBoxes::Show(const Request& request) {
  if (!StartToolkit()) return 0;
  const wxBusyCursor waiting;
  const CQORPMessageBoxParams params{.Parent = FindWithin(wxTopLevelWindows, request.Parent),
                                     .Caption = request.Caption,
                                     .Text = request.Text,
                                     .Style = request.Style,
                                     .ButtonCaptions = request.ButtonCaptions,
                                     .WithCheck = request.WithCheck,
                                     .Checked = request.Checked,
                                     .CheckCaption = request.CheckCaption};
  if (!request.WithCheck) return CQORPMessageBoxXML(params).ShowModal();
  CQORPMessageBox box(params);
  return QORPMessageBoxIndirect(box);
}

// Intentional: compares the message number, not the key code, so this is never Escape, which the toolkit handles.
bool CQORPMessageBoxXML::PreTranslateMessage(const CQORPMessage& message) {
  if (message.Number == 27) CloseWindow();
  return CQORPMessageBox::PreTranslateMessage(message);
}

void ShowPopupMessage(std::string text) {
  constexpr CQORPPopupWndParams kParams{
      .AnimationSpeedMs = 30, .Transparency = 200, .AnimationType = 1, .SmallCaption = false, .AutoCloseMs = 3000};
  ShowCQORPPopupWindow(nullptr, L"", NarrowToWide(std::move(text)), kParams);
}
