#include "toolkit/progress_overlay.h"

#include <wx/dcclient.h>
#include <wx/settings.h>

namespace {

constexpr int kPaddingPx = 6;

}  // namespace

CQORPProgressOverlay::~CQORPProgressOverlay() {
  if (Shown >= 0) Window.Refresh();
}

// Not as a window of its own: a new one is painted by the event loop only.
void CQORPProgressOverlay::ShowProgress(const std::wstring& text, int percent) {
  if (percent == Shown) return;
  Shown = percent;
  const std::wstring line = text + L" " + std::to_wstring(percent) + L" %";
  {
    wxClientDC dc(&Window);
    dc.SetFont(wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT));
    const int padding = Window.FromDIP(kPaddingPx);
    const int height = dc.GetCharHeight() + 2 * padding;
    const wxSize size = Window.GetClientSize();
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE)));
    dc.DrawRectangle(0, size.y - height, size.x, height);
    dc.SetBrush(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT)));
    dc.DrawRectangle(0, size.y - padding, size.x * percent / 100, padding);
    dc.SetTextForeground(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT));
    dc.DrawText(line, padding, size.y - height + padding / 2);
  }
  Window.Update();
}
