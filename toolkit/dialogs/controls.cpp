#include "toolkit/dialogs/controls.h"

#include <wx/control.h>
#include <wx/dcbuffer.h>
#include <wx/settings.h>

#include <utility>

#include "toolkit/system/native_windows.h"

CQORPButton::CQORPButton(wxWindow* parent, int id, const std::wstring& caption, std::function<void()> onClick)
    : wxButton(parent, id, caption) {
  Bind(wxEVT_BUTTON, [click = std::move(onClick)](wxCommandEvent&) { click(); });
}

CQORPStatic::CQORPStatic(wxWindow* parent, int id, const std::wstring& text, const wxRect& rect) : Text(text) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  wxWindow::Create(parent, id, rect.GetPosition(), rect.GetSize(), wxBORDER_NONE);
  wxWindow::SetFont(parent->GetFont());
  SetAccessibleName(*this, Text);
  Bind(wxEVT_PAINT, &CQORPStatic::OnPaint, this);
}

void CQORPStatic::SetWindowText(const std::wstring& text) {
  if (text == Text) return;
  Text = text;
  SetAccessibleName(*this, Text);
  Refresh();
}

void CQORPStatic::SetTextColor(std::optional<ColorRef> color) {
  if (color == Color) return;
  Color = color;
  Refresh();
}

bool CQORPStatic::SetFont(const wxFont& font) {
  const bool changed = wxWindow::SetFont(font);
  if (changed) Refresh();
  return changed;
}

void CQORPStatic::ShowWhole(bool fits) {
  if (fits) {
    UnsetToolTip();
  } else if (GetToolTipText() != Text) {
    SetToolTip(Text);
  }
}

void CQORPStatic::OnPaint(wxPaintEvent& /*event*/) {
  ++PaintCount;
  wxAutoBufferedPaintDC dc(this);
  const wxColour background = GetParent()->GetBackgroundColour();
  dc.SetBackground(wxBrush(background));
  dc.Clear();
  dc.SetFont(GetFont());
  dc.SetTextForeground(Color ? wxColour(ReadableText(*Color, background.GetRGB()))
                             : wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT));
  const wxSize size = GetClientSize();
  const wxString shown = wxControl::Ellipsize(Text, dc, wxELLIPSIZE_END, size.x, wxELLIPSIZE_FLAGS_NONE);
  dc.DrawText(shown, 0, (size.y - dc.GetTextExtent(shown).y) / 2);
  if (!ToolTipLeft) ShowWhole(shown == Text);
}
