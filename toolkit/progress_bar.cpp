#include "toolkit/progress_bar.h"

#include <wx/dcbuffer.h>
#include <wx/settings.h>

#include "toolkit/accessible_name.h"

CQORPProgressBar::CQORPProgressBar(wxWindow* parent, const wxRect& rect) {
  Hide();
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Create(parent, wxID_ANY, rect.GetPosition(), rect.GetSize(), wxBORDER_NONE);
  Bind(wxEVT_PAINT, [this](wxPaintEvent&) { OnPaint(); });
}

void CQORPProgressBar::ShowProgress(const std::wstring& text, int percent) {
  if (IsShown() && percent == Percent && text == Text) return;
  Text = text;
  Percent = percent;
  SetAccessibleName(*this, Text);
  if (!IsShown()) {
    Show();
    Raise();
  }
  Refresh();
  Update();
}

void CQORPProgressBar::OnPaint() {
  wxAutoBufferedPaintDC dc(this);
  const wxSize size = GetClientSize();
  dc.SetBackground(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW)));
  dc.Clear();
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT).ChangeLightness(150)));
  dc.DrawRectangle(0, 0, size.x * Percent / 100, size.y);
  dc.SetFont(GetFont());
  dc.SetTextForeground(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT));
  dc.DrawText(Text, FromDIP(6), (size.y - dc.GetTextExtent(Text).y) / 2);
}
